# Two Debian packages: what a game needs to run, and what those need who write one, or its pages.
# For these, configure with -DCMAKE_INSTALL_PREFIX=/usr, as the folder of libraries depends on it.
set(CPACK_GENERATOR DEB TGZ)
set(CPACK_PACKAGE_NAME zovkpopup)
set(CPACK_PACKAGE_VENDOR "ZOVKPopup developers")
set(CPACK_PACKAGE_CONTACT "ZOVKPopup developers")
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_COMPONENTS_ALL runtime development)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libzovkpopup${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
# It is loaded at run time, so that nothing else finds out.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_DEPENDS "libcurl4 (>= 7.87)")
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "in-app popups for games - shared library
The library shows web pages over a game at the moments that the game chooses,
and tells it what the player answered. The pages run in a helper program
beside the game, which is in this package, too.")

set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS runtime)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libzovkpopup-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_RECOMMENDS "libboost-json1.81-dev, libjs-chart.js")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "in-app popups for games - development files and tools
Headers for C++ and C, CMake package and pkg-config file; the command-line
tool for those who write pages and configuration documents; and the
development popup service.")

include(CPack)
