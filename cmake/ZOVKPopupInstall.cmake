# Installs the project. Helper and resource bundle stand in a folder beside the library, which looks
# for them there: library and folder can be moved, or shipped with a game, together.
option(ZOVKPOPUP_INSTALL "Install ZOVKPopup with this project" ${PROJECT_IS_TOP_LEVEL})
option(ZOVKPOPUP_INSTALL_STATIC "Install the static library, too" OFF)

# Projects that build ZOVKPopup as a part of their own find the folder as those that find the
# package do.
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
include(ZOVKPopupInstallPrograms)

install(TARGETS zovkpopup EXPORT ZOVKPopupTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT library NAMELINK_COMPONENT development
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
  FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
if(ZOVKPOPUP_INSTALL_STATIC)
  set_target_properties(zovkpopup-static PROPERTIES EXCLUDE_FROM_ALL OFF)
  install(TARGETS zovkpopup-static EXPORT ZOVKPopupStaticTargets
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
    FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
  install(EXPORT ZOVKPopupStaticTargets NAMESPACE ZOVKPopup::
    DESTINATION ${package_directory} COMPONENT development)
endif()
if(TARGET zovkpopup-helper)
  install(TARGETS zovkpopup-helper DESTINATION ${runtime_directory} COMPONENT helper)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/resources/ZOVKPopupResource.bundle
    DESTINATION ${runtime_directory} COMPONENT helper)
endif()

install(EXPORT ZOVKPopupTargets NAMESPACE ZOVKPopup::
  DESTINATION ${package_directory} COMPONENT development)
configure_package_config_file(
  ${CMAKE_CURRENT_LIST_DIR}/ZOVKPopupConfig.cmake.in ${PROJECT_BINARY_DIR}/ZOVKPopupConfig.cmake
  INSTALL_DESTINATION ${package_directory} PATH_VARS runtime_directory)
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
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/zovkpopup-tool COMPONENT tool)
  cmake_path(RELATIVE_PATH CMAKE_INSTALL_FULL_LIBDIR
    BASE_DIRECTORY ${CMAKE_INSTALL_FULL_BINDIR} OUTPUT_VARIABLE bin_to_lib)
  set(link ${PROJECT_BINARY_DIR}/installed/zovkpopup)
  file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/installed)
  file(CREATE_LINK ${bin_to_lib}/zovkpopup-tool/zovkpopup ${link} SYMBOLIC)
  install(FILES ${link} DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tool)
  zovkpopup_install_manual(tool tools/zovkpopup/manual/zovkpopup.1)
  zovkpopup_install_completion(tool tools/zovkpopup/completion zovkpopup)
endif()
if(TARGET zovkpopup-service)
  install(TARGETS zovkpopup-service DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT service)
  zovkpopup_install_manual(service tools/service/manual/zovkpopup-service.1)
  zovkpopup_install_completion(service tools/service/completion zovkpopup-service)
endif()

# The guides and the sources of the examples, in the folders in which they look for each other.
set(guides ${CMAKE_INSTALL_DATAROOTDIR}/doc/zovkpopup-doc)
install(FILES README.md CHANGELOG.md CONTRIBUTING.md SECURITY.md
  DESTINATION ${guides} COMPONENT documentation)
install(DIRECTORY docs examples DESTINATION ${guides} COMPONENT documentation
  PATTERN Doxyfile EXCLUDE PATTERN __pycache__ EXCLUDE
  # Scripts, which begin with "#!".
  REGEX "/(host|make_bundle|make_resources|play|pygame_host|tour)\\.py$" PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

if(PROJECT_IS_TOP_LEVEL)
  include(ZOVKPopupPackages)
endif()
