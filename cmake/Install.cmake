# What `cmake --install` puts where, and the .deb that CPack makes of it.

include(GNUInstallDirs)
string(TIMESTAMP HALVINE_RELEASE_DATE "%Y-%m-%d" UTC)
configure_file(${CMAKE_SOURCE_DIR}/resources/desktop/halvine.metainfo.xml.in
    ${CMAKE_BINARY_DIR}/halvine.metainfo.xml @ONLY)

set(resources ${CMAKE_SOURCE_DIR}/resources)
install(TARGETS hv RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES ${resources}/man/hv.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${resources}/completion/hv DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
install(FILES ${resources}/desktop/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/halvine)
if(TARGET halvine)
    install(TARGETS halvine RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
    install(FILES ${resources}/man/halvine.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
    install(FILES ${resources}/completion/halvine DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
    install(FILES ${resources}/desktop/halvine.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
    install(FILES ${CMAKE_BINARY_DIR}/halvine.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
    install(FILES ${resources}/desktop/halvine-mime.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages
        RENAME halvine.xml)
    install(FILES ${resources}/icons/IDI_HALVINE.svg
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps RENAME halvine.svg)
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME halvine)
set(CPACK_PACKAGE_VENDOR "The Halvine developers")
set(CPACK_PACKAGE_CONTACT "The Halvine developers <halvine@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "browse, adjust, rename and show digital photographs")
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Platform and icon plug-ins are loaded by name, so that no library of the program asks for them.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-qpa-plugins, libqt6svg6, qt6-wayland, shared-mime-info")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "qt6-image-formats-plugins")
include(CPack)
