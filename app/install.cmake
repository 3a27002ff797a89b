# Where a Linux desktop finds Korvane once installed: the program in bin/, its pictures in
# share/korvane (the platform looks there, beside bin/), the menu entry and the icon. CPack makes
# a Debian package of the same tree.
include(GNUInstallDirs)

install(TARGETS korvane RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

# The pictures, with any @2x variants: the platform looks for them in ../share/korvane from the
# program's folder.
file(GLOB korvane_pictures CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/resources/tformula*.png
     ${PROJECT_SOURCE_DIR}/resources/tlarge*.png)
install(FILES ${korvane_pictures} DESTINATION share/korvane)

install(FILES ${PROJECT_SOURCE_DIR}/resources/korvane.desktop
        DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${PROJECT_SOURCE_DIR}/resources/korvane.svg
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(FILES ${PROJECT_SOURCE_DIR}/resources/korvane-256.png
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/256x256/apps RENAME korvane.png)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME korvane)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION}.0)
set(CPACK_PACKAGE_VENDOR "The Korvane developers")
set(CPACK_PACKAGE_CONTACT "The Korvane developers <developers@korvane.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Student's t-test calculator from summary statistics")
set(CPACK_PACKAGE_DESCRIPTION "Korvane computes Student's t-test for independent or related \
means from the means, standard deviations and sizes of two samples, and shows t, the degrees of \
freedom and the two-tailed probability.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_DEPENDS
    "libqt6widgets6 (>= 6.4), libqt6gui6 (>= 6.4), libqt6core6 (>= 6.4), qt6-qpa-plugins, libc6, libstdc++6")
include(CPack)
