# Defines zovkpopup_xdg_foreign: the code that wayland-scanner generates for the protocol by which
# one program's window stands in front of another's, in both of its versions.
include_guard(GLOBAL)
find_package(PkgConfig REQUIRED)
pkg_check_modules(ZOVKPOPUP_WAYLAND REQUIRED IMPORTED_TARGET wayland-client)
pkg_get_variable(zovkpopup_protocols wayland-protocols pkgdatadir)
pkg_get_variable(zovkpopup_scanner wayland-scanner wayland_scanner)

set(directory ${PROJECT_BINARY_DIR}/wayland)
set(generated)
foreach(version 1 2)
  set(name xdg-foreign-unstable-v${version})
  set(description ${zovkpopup_protocols}/unstable/xdg-foreign/${name}.xml)
  add_custom_command(
    OUTPUT ${directory}/${name}.h ${directory}/${name}.c
    COMMAND ${CMAKE_COMMAND} -E make_directory ${directory}
    COMMAND ${zovkpopup_scanner} client-header ${description} ${directory}/${name}.h
    COMMAND ${zovkpopup_scanner} private-code ${description} ${directory}/${name}.c
    DEPENDS ${description}
    VERBATIM)
  list(APPEND generated ${directory}/${name}.h ${directory}/${name}.c)
endforeach()
add_library(zovkpopup_xdg_foreign STATIC ${generated})
target_include_directories(zovkpopup_xdg_foreign SYSTEM PUBLIC ${directory})
target_link_libraries(zovkpopup_xdg_foreign PUBLIC PkgConfig::ZOVKPOPUP_WAYLAND)
