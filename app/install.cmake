# Where a Linux desktop finds Korvane once installed: the program in bin/ (its pictures are built
# into it), the menu entry and the icon. CPack makes a Debian package of the same tree.
include(GNUInstallDirs)

install(TARGETS korvane RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

install(FILES ${PROJECT_SOURCE_DIR}/resources/korvane.desktop
        DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${PROJECT_SOURCE_DIR}/resources/korvane.svg
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(FILES ${PROJECT_SOURCE_DIR}/resources/korvane-256.png
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/256x256/apps RENAME korvane.png)

# What a distribution asks of a package beside the program: the copyright, the changelog and the
# manual page (the last two compressed without a timestamp, so the package builds the same
# twice), and the AppStream record that software centres list.
set(korvane_packaging ${PROJECT_SOURCE_DIR}/packaging)
foreach(doc changelog korvane.1)
    add_custom_command(OUTPUT ${doc}.gz
                       COMMAND gzip -9nc ${korvane_packaging}/${doc} > ${doc}.gz
                       DEPENDS ${korvane_packaging}/${doc} VERBATIM)
endforeach()
add_custom_target(korvane_package_docs ALL DEPENDS changelog.gz korvane.1.gz)
install(FILES ${korvane_packaging}/copyright ${CMAKE_CURRENT_BINARY_DIR}/changelog.gz
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/korvane)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/korvane.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${korvane_packaging}/invalid.korvane.Korvane.metainfo.xml
        DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME korvane)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION}.0)
set(CPACK_PACKAGE_VENDOR "The Korvane developers")
set(CPACK_PACKAGE_CONTACT "The Korvane developers <developers@korvane.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Student's t-test calculator from summary statistics")
# Lines of the extended description stay within 80 columns in the control file.
set(CPACK_PACKAGE_DESCRIPTION "Korvane computes Student's t-test for independent or related means
from the means, standard deviations and sizes of two samples, and shows t,
the degrees of freedom and the two-tailed probability.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_DEPENDS
    "libqt6widgets6 (>= 6.4), libqt6gui6 (>= 6.4), libqt6dbus6 (>= 6.4), libqt6core6 (>= 6.4), qt6-qpa-plugins, libc6, libstdc++6")
# On a Wayland desktop the program runs as a Wayland client through Qt's plug-in; without it Qt
# falls back to XWayland, a second way of running that the Wayland suite does not cover.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-wayland")
include(CPack)
