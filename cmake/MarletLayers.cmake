# The layers of the code. Every folder of src/ is one static library that links the libraries of
# the folders below it that it uses; nothing else decides what a folder may include. The include
# check of the tests (tests/TestLayers.cpp) reads, for every folder of code, which folders its
# target reaches through those links, and fails on an include of any other folder.

# A static library made of one folder of src/: `SOURCES` as listed, `USES` the libraries of the
# folders below it. Its users include its headers as "<folder>/<Header>.h".
function(marlet_folder_library name)
    cmake_parse_arguments(arg "" "" "SOURCES;USES;QT" ${ARGN})
    add_library(${name} STATIC ${arg_SOURCES})
    target_include_directories(${name} PUBLIC "${PROJECT_SOURCE_DIR}/src")
    target_link_libraries(${name} PUBLIC marlet_settings ${arg_USES} ${arg_QT})
    file(RELATIVE_PATH folder "${PROJECT_SOURCE_DIR}/src" "${CMAKE_CURRENT_SOURCE_DIR}")
    marlet_layer_folder("src/${folder}" "${folder}" ${name})
endfunction()

# Records that the code in `directory` (relative to the project) belongs to `target`; other code
# includes its headers under `prefix` (empty for a folder whose headers nobody includes).
function(marlet_layer_folder directory prefix target)
    set_property(GLOBAL APPEND PROPERTY MARLET_LAYER_FOLDERS "${directory}|${prefix}|${target}")
endfunction()

# The marlet targets that `target` links, directly or through the targets it links.
function(marlet_linked_targets target out)
    set(found "")
    set(pending ${target})
    while(pending)
        list(POP_FRONT pending current)
        get_target_property(direct ${current} LINK_LIBRARIES)
        if(NOT direct)
            continue()
        endif()
        foreach(item IN LISTS direct)
            string(REGEX REPLACE "^\\$<LINK_ONLY:(.*)>$" "\\1" item "${item}")
            if(item MATCHES "^marlet_" AND TARGET ${item} AND NOT item IN_LIST found)
                list(APPEND found ${item})
                list(APPEND pending ${item})
            endif()
        endforeach()
    endwhile()
    set(${out} ${found} PARENT_SCOPE)
endfunction()

# Writes one line per folder of code: "<directory>|<prefix>|<prefixes it may include>", the last
# separated by blanks.
function(marlet_write_layers file)
    get_property(folders GLOBAL PROPERTY MARLET_LAYER_FOLDERS)
    set(lines "")
    foreach(entry IN LISTS folders)
        string(REPLACE "|" ";" parts "${entry}")
        list(GET parts 0 directory)
        list(GET parts 1 prefix)
        list(GET parts 2 target)
        marlet_linked_targets(${target} linked)
        set(allowed "")
        foreach(other IN LISTS folders)
            string(REPLACE "|" ";" other_parts "${other}")
            list(GET other_parts 1 other_prefix)
            list(GET other_parts 2 other_target)
            if(other_prefix AND (other_target STREQUAL target OR other_target IN_LIST linked))
                list(APPEND allowed ${other_prefix})
            endif()
        endforeach()
        list(JOIN allowed " " allowed_text)
        string(APPEND lines "${directory}|${prefix}|${allowed_text}\n")
    endforeach()
    file(GENERATE OUTPUT "${file}" CONTENT "${lines}")
endfunction()
