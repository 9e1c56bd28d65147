# The Debian packages. The preset "packages" builds what belongs into them.
set(CPACK_GENERATOR DEB TGZ)
set(CPACK_PACKAGE_NAME zovkpopup)
set(CPACK_PACKAGE_VENDOR "ZOVKPopup developers")
set(ZOVKPOPUP_MAINTAINER "ZOVKPopup developers <zovkpopup@example.com>" CACHE STRING
  "Who answers for the packages")
set(CPACK_PACKAGE_CONTACT ${ZOVKPOPUP_MAINTAINER})
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_PROJECT_CONFIG_FILE ${CMAKE_CURRENT_LIST_DIR}/ZOVKPopupStripping.cmake)
set(CPACK_POST_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/ZOVKPopupSymbols.cmake)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_DEBUGINFO_PACKAGE ON)
# Packages that belong together have one version, because library and helper talk in frames of their
# own.
set(same "(= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")

# zovkpopup_package(COMPONENT NAME SECTION SUMMARY TEXT): one package, of one component.
macro(zovkpopup_package component name section summary text)
  list(APPEND CPACK_COMPONENTS_ALL ${component})
  string(TOUPPER ${component} upper)
  set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${name})
  set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${section})
  set(CPACK_COMPONENT_${upper}_DESCRIPTION "in-app popups for games - ${summary}\n${text}")
  zovkpopup_install_papers(${component} ${name})
endmacro()
include(ZOVKPopupPapers)

set(about "ZOVKPopup shows web pages over a game at the moments that the game chooses,
and tells it what the player answered.
")
set(library libzovkpopup${PROJECT_VERSION_MAJOR})
zovkpopup_package(library ${library} libs "shared library" "${about}
This package holds the library that a game is linked with.")
# Says what programs that are linked with it need, and renews the loader's cache.
set(major ${PROJECT_VERSION_MAJOR})
file(WRITE ${papers}/shlibs "libzovkpopup ${major} ${library} (>= ${PROJECT_VERSION})\n")
file(WRITE ${papers}/triggers "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${papers}/shlibs ${papers}/triggers)
# libcurl is loaded at run time, so that nothing else finds out.
set(CPACK_DEBIAN_LIBRARY_PACKAGE_DEPENDS "libcurl4 (>= 7.87), zovkpopup-helper ${same}")

zovkpopup_package(helper zovkpopup-helper games "helper program" "${about}
This package holds the program that shows the pages, in a process beside the
game, and what it draws around them.")

zovkpopup_package(tool zovkpopup-tool devel "command-line tool" "${about}
This package holds zovkpopup, which makes, checks, explains and publishes
pages and configuration documents. To show pages it needs zovkpopup-helper.")
set(CPACK_DEBIAN_TOOL_PACKAGE_RECOMMENDS "zovkpopup-helper ${same}")

zovkpopup_package(service zovkpopup-service devel "development service" "${about}
This package holds zovkpopup-service, which serves a folder to games under
development, with a console for the browser.")
set(CPACK_DEBIAN_SERVICE_PACKAGE_RECOMMENDS "libjs-chart.js")
# It parses the scripts of pages; without it they are published as they are.
set(CPACK_DEBIAN_SERVICE_PACKAGE_SUGGESTS "zovkpopup-helper ${same}")

zovkpopup_package(development libzovkpopup-dev libdevel "development files" "${about}
This package holds headers for C++ and C, the static library, the CMake
package, the pkg-config file, and bindings for Python, LuaJIT and C#.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${library} ${same}")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_RECOMMENDS "libboost-json1.81-dev, zovkpopup-tool ${same}")
# For programs that link the static library.
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS
  "libboost-url1.81-dev, libfmt-dev, libsqlite3-dev, libssl-dev, zovkpopup-doc")

zovkpopup_package(documentation zovkpopup-doc doc "documentation" "${about}
This package holds the guides, and the sources of the example games.")
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_DOCUMENTATION_DEBUGINFO_PACKAGE OFF)

include(CPack)
