# Runs after the packages are made. CMake lists a debug symbol package's files under their paths in
# the build folder and marks them as programs, and adds no papers. This corrects all three, as
# Debian's own tools have them: the papers are those of the package that the symbols belong to.
find_program(DPKG_DEB dpkg-deb REQUIRED)

function(zovkpopup_run)
  execute_process(COMMAND ${ARGV} COMMAND_ERROR_IS_FATAL ANY OUTPUT_QUIET)
endfunction()

function(zovkpopup_correct_symbols package)
  set(root ${package}.unpacked)
  file(REMOVE_RECURSE ${root})
  zovkpopup_run(${DPKG_DEB} --raw-extract ${package} ${root})
  file(GLOB_RECURSE files RELATIVE ${root} ${root}/usr/*.debug)
  set(sums "")
  foreach(file IN LISTS files)
    file(CHMOD ${root}/${file} PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
    file(MD5 ${root}/${file} sum)
    string(APPEND sums "${sum}  ${file}\n")
  endforeach()
  file(WRITE ${root}/DEBIAN/md5sums "${sums}")

  file(STRINGS ${root}/DEBIAN/control name REGEX "^Package: ")
  string(REGEX REPLACE "^Package: (.*)-dbgsym$" "\\1" name "${name}")
  file(MAKE_DIRECTORY ${root}/usr/share/doc)
  file(CREATE_LINK ${name} ${root}/usr/share/doc/${name}-dbgsym SYMBOLIC)
  zovkpopup_run(${DPKG_DEB} --root-owner-group --build ${root} ${package})
  file(REMOVE_RECURSE ${root})
endfunction()

foreach(package IN LISTS CPACK_PACKAGE_FILES)
  if(package MATCHES "\\.ddeb$")
    zovkpopup_correct_symbols(${package})
  endif()
endforeach()
