# Settings every target of the project shares.
add_library(marlet_settings INTERFACE)
target_compile_features(marlet_settings INTERFACE cxx_std_20)
target_compile_options(marlet_settings INTERFACE
    -Wall -Wextra -Wold-style-cast -Wnon-virtual-dtor -Woverloaded-virtual)
if(MARLET_WERROR)
    target_compile_options(marlet_settings INTERFACE -Werror)
endif()
if(MARLET_SANITIZE)
    target_compile_options(marlet_settings INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(marlet_settings INTERFACE -fsanitize=address,undefined)
    # For programs in C that load the library: the sanitizers' runtime must come first.
    set(marlet_sanitizer_link_flag -fsanitize=address,undefined)
endif()
target_compile_definitions(marlet_settings INTERFACE
    QT_NO_CAST_FROM_ASCII
    QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
    QT_USE_QSTRINGBUILDER
    MARLET_VERSION_MAJOR=${PROJECT_VERSION_MAJOR}
    MARLET_VERSION_MINOR=${PROJECT_VERSION_MINOR}
    MARLET_VERSION_REVISION=${PROJECT_VERSION_PATCH})
