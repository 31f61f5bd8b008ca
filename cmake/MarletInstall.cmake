# What `cmake --install` puts where, and the Debian package CPack makes of it:
#   bin/marlet, lib/libmarlet.so.<version> with its soname link, include/marlet/marlet.h,
#   lib/pkgconfig/marlet.pc, the manual page, the desktop entry and its icon.
install(TARGETS marlet RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(TARGETS marlet_host LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(FILES "${PROJECT_SOURCE_DIR}/include/marlet/marlet.h" DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/marlet)

# The pkg-config file finds the prefix from its own place, so the tree can be installed anywhere.
file(RELATIVE_PATH MARLET_PC_PREFIX "/prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/prefix")
string(REGEX REPLACE "/$" "" MARLET_PC_PREFIX "${MARLET_PC_PREFIX}")
configure_file("${PROJECT_SOURCE_DIR}/packaging/marlet.pc.in" "${PROJECT_BINARY_DIR}/marlet.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/marlet.pc" DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

# The manual page is the program's own help, written as roff by the program.
set(manual_page "${PROJECT_BINARY_DIR}/marlet.1")
add_custom_command(OUTPUT "${manual_page}"
    COMMAND sh -c "\"$0\" --manual-page > \"$1\"" $<TARGET_FILE:marlet> "${manual_page}"
    DEPENDS marlet
    COMMENT "Writing the manual page"
    VERBATIM)
add_custom_target(marlet_manual_page ALL DEPENDS "${manual_page}")
install(FILES "${manual_page}" DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)

install(FILES "${PROJECT_SOURCE_DIR}/packaging/marlet.desktop" DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES "${PROJECT_SOURCE_DIR}/packaging/marlet.svg"
    DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME marlet)
set(CPACK_PACKAGE_VENDOR "Marlet")
set(CPACK_PACKAGE_CONTACT "Marlet developers <marlet@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Ticketing and administration for a cybercafe")
set(CPACK_PACKAGE_DESCRIPTION
    "Generates, finds, recharges, prints and deletes the tickets a cybercafe sells computer time with, keeps its members and settings, and offers the same to host programs as libmarlet.so.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_DEPENDS
    "libqt6core6 (>= 6.4), libqt6sql6 (>= 6.4), libqt6sql6-sqlite (>= 6.4), libsqlite3-0, libqrencode4, libstdc++6, libc6")
if(MARLET_DESKTOP)
    string(APPEND CPACK_DEBIAN_PACKAGE_DEPENDS
        ", libqt6gui6 (>= 6.4), libqt6widgets6 (>= 6.4), libqt6printsupport6 (>= 6.4), libqt6serialport6 (>= 6.4)")
endif()
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "libqt6sql6-psql, cups-client")
include(CPack)
