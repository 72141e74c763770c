# `cmake --install` and the Debian package. The calendar starts the notifier from its own
# folder and `verdaly` becomes `verdaly-gui` beside it, so the three share bin/; the shared
# files go under share/ where the desktop and the program look for them.
include(GNUInstallDirs)
install(TARGETS verdaly verdaly-gui BalloonNotify RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME halvern-verdaly)
set(CPACK_PACKAGE_VENDOR Halvern)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "month calendar that stays on the desktop (Japanese)")
string(CONCAT CPACK_PACKAGE_DESCRIPTION
    "A small month grid that lives on the desktop, with the selected day's schedules and\n"
    "tasks under it: classes, alarms, Japanese holidays, sticky notes, global hot keys,\n"
    "backup and restore. The user interface is in Japanese.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "Halvern Verdaly <verdaly@halvern.invalid>")
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
# The libraries the programs link come from dpkg-shlibdeps; what Qt only loads at run time
# (the SQLite driver) and the glyphs of every label must be named.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libqt6sql6-sqlite, fonts-ipafont-gothic")
include(CPack)
