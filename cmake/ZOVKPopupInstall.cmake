# What is installed, and where. Helper and resource bundle stand in a folder beside the library,
# which looks for them there: library and folder can be moved, or shipped with a game, together.
option(ZOVKPOPUP_INSTALL "Install ZOVKPopup with this project" ${PROJECT_IS_TOP_LEVEL})

# Projects that build ZOVKPopup with their own find the folder as those that find the package do.
if(NOT PROJECT_IS_TOP_LEVEL)
  set(ZOVKPopup_RUNTIME_DIRECTORY ${PROJECT_BINARY_DIR}/zovkpopup PARENT_SCOPE)
endif()
if(NOT ZOVKPOPUP_INSTALL)
  return()
endif()

include(GNUInstallDirs)
include(CMakePackageConfigHelpers)
set(runtime_directory ${CMAKE_INSTALL_LIBDIR}/zovkpopup)
set(package_directory ${CMAKE_INSTALL_LIBDIR}/cmake/ZOVKPopup)

install(TARGETS zovkpopup EXPORT ZOVKPopupTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
  FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
if(TARGET zovkpopup-helper)
  install(TARGETS zovkpopup-helper DESTINATION ${runtime_directory} COMPONENT runtime)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/resources/ZOVKPopupResource.bundle
    DESTINATION ${runtime_directory} COMPONENT runtime)
endif()

install(EXPORT ZOVKPopupTargets NAMESPACE ZOVKPopup::
  DESTINATION ${package_directory} COMPONENT development)
configure_package_config_file(
  ${CMAKE_CURRENT_LIST_DIR}/ZOVKPopupConfig.cmake.in ${PROJECT_BINARY_DIR}/ZOVKPopupConfig.cmake
  INSTALL_DESTINATION ${package_directory} PATH_VARS runtime_directory
  NO_CHECK_REQUIRED_COMPONENTS_MACRO)
write_basic_package_version_file(
  ${PROJECT_BINARY_DIR}/ZOVKPopupConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/ZOVKPopupConfig.cmake ${PROJECT_BINARY_DIR}/ZOVKPopupConfigVersion.cmake
  DESTINATION ${package_directory} COMPONENT development)

cmake_path(RELATIVE_PATH CMAKE_INSTALL_FULL_LIBDIR
  BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX} OUTPUT_VARIABLE pc_libdir)
cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX
  BASE_DIRECTORY ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig OUTPUT_VARIABLE pc_prefix)
configure_file(${CMAKE_CURRENT_LIST_DIR}/zovkpopup.pc.in ${PROJECT_BINARY_DIR}/zovkpopup.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/zovkpopup.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

install(FILES
  ${PROJECT_SOURCE_DIR}/bindings/zovkpopup.py ${PROJECT_SOURCE_DIR}/bindings/zovkpopup.lua
  ${PROJECT_SOURCE_DIR}/bindings/ZOVKPopup.cs
  DESTINATION ${CMAKE_INSTALL_DATADIR}/zovkpopup/bindings COMPONENT development)

if(TARGET zovkpopup-tool)
  # The tool looks for the helper from where it stands, so it stands beside the helper's folder.
  install(TARGETS zovkpopup-tool
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/zovkpopup-tool COMPONENT development)
  cmake_path(RELATIVE_PATH CMAKE_INSTALL_FULL_LIBDIR
    BASE_DIRECTORY ${CMAKE_INSTALL_FULL_BINDIR} OUTPUT_VARIABLE bin_to_lib)
  set(link ${PROJECT_BINARY_DIR}/installed/zovkpopup)
  file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/installed)
  file(CREATE_LINK ${bin_to_lib}/zovkpopup-tool/zovkpopup ${link} SYMBOLIC)
  install(FILES ${link} DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT development)
  install(FILES ${PROJECT_SOURCE_DIR}/tools/zovkpopup/completion/zovkpopup.bash
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME zovkpopup
    COMPONENT development)
  install(FILES ${PROJECT_BINARY_DIR}/tools/zovkpopup/zovkpopup.1.gz
    DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT development)
endif()
if(TARGET zovkpopup-service)
  install(TARGETS zovkpopup-service COMPONENT development)
endif()

# Debian wants each package to say under what licence it is.
foreach(package IN ITEMS runtime:libzovkpopup${PROJECT_VERSION_MAJOR} development:libzovkpopup-dev)
  string(REPLACE ":" ";" package ${package})
  list(GET package 0 component)
  list(GET package 1 name)
  install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${name} RENAME copyright
    COMPONENT ${component})
endforeach()

if(PROJECT_IS_TOP_LEVEL)
  include(ZOVKPopupPackages)
endif()
