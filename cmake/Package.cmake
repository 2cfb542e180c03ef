# What an install puts where, and the Debian package built from it (scripts/package).
#
#   bin/tavimetra, bin/tavimetra-cli         the program and its command-line companion
#   share/tavimetra/                          the delivered data: the demo readers' captures,
#                                             the report logo, the help pages
#   share/applications/tavimetra.desktop     the desktop entry
#   share/icons/hicolor/scalable/apps/        the icon
#   share/doc/tavimetra/                      README and copyright
#
# The program finds share/tavimetra relative to its own folder (ProgramFolder).

install(TARGETS tavimetra tavimetra-cli RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES data/Results.INI data/Results2.INI data/logo.jpg DESTINATION ${TAVIMETRA_INSTALL_DATADIR})
install(DIRECTORY data/help DESTINATION ${TAVIMETRA_INSTALL_DATADIR})
install(FILES packaging/tavimetra.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES packaging/tavimetra.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(FILES README.md packaging/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/tavimetra)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tavimetra)
set(CPACK_PACKAGE_VENDOR "Qorn")
set(CPACK_PACKAGE_CONTACT "Qorn Tavimetra support <support@qorn.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "ELISA plate workstation for veterinary laboratories")
string(CONCAT CPACK_PACKAGE_DESCRIPTION
    "Tavimetra lays out 96-well ELISA plates, reads them from plate readers on serial lines, "
    "validates them by the rules of each test kit, keeps runs in a database, writes client and "
    "analytical reports, and tracks the laboratory's controls over time.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "https://qorn.invalid/tavimetra")
# The shared libraries come from dpkg-shlibdeps. Qt's SQLite driver is a plugin, not linked,
# so it is named here (the screen plugins come with libqt6gui6).
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libqt6sql6-sqlite")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "xdg-utils")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "libreoffice-calc | gnumeric")
include(CPack)
