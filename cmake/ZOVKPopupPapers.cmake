# Installs what Debian requires of every package: its licence and its changes.
include(ZOVKPopupInstallPrograms)

set(papers ${PROJECT_BINARY_DIR}/installed)
file(READ ${PROJECT_SOURCE_DIR}/LICENSE LICENSE)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/LICENSE)
configure_file(${PROJECT_SOURCE_DIR}/packaging/copyright.in ${papers}/copyright @ONLY)
configure_file(${PROJECT_SOURCE_DIR}/packaging/changelog.in ${papers}/changelog.Debian @ONLY)
zovkpopup_compressed(${papers}/changelog.Debian ${papers}/changelog.Debian.gz)
zovkpopup_compressed(${PROJECT_SOURCE_DIR}/CHANGELOG.md ${papers}/changelog.gz)

# zovkpopup_install_papers(COMPONENT PACKAGE)
function(zovkpopup_install_papers component package)
  install(FILES ${papers}/copyright ${papers}/changelog.Debian.gz ${papers}/changelog.gz
    DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${package} COMPONENT ${component})
  install(FILES ${PROJECT_SOURCE_DIR}/packaging/lintian-overrides RENAME ${package}
    DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/lintian/overrides COMPONENT ${component})
endfunction()
