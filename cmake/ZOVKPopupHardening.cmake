# What makes it harder to turn a fault into an attack, in everything that is released. The sanitizers
# bring checks of their own, and builds for development are left alone.
include(CheckCXXCompilerFlag)
include(CheckPIESupported)

# Programs are loaded at a place of the kernel's choice, as libraries are.
if(CMAKE_BUILD_TYPE MATCHES "^(Release|MinSizeRel)$")
  check_pie_supported(LANGUAGES C CXX)
  set(CMAKE_POSITION_INDEPENDENT_CODE ON)
endif()

# Not every processor has the last two.
foreach(option IN ITEMS -fstack-protector-strong -fstack-clash-protection -fcf-protection)
  string(MAKE_C_IDENTIFIER "ZOVKPOPUP_HAS${option}" has)
  check_cxx_compiler_flag(${option} ${has})
  if(${has})
    list(APPEND hardening_compile ${option})
  endif()
endforeach()
list(APPEND hardening_compile -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2
  # What is released does not tell where it was built.
  -ffile-prefix-map=${PROJECT_SOURCE_DIR}/=)
set(released $<CONFIG:Release,MinSizeRel>)
target_compile_options(zovkpopup_options INTERFACE "$<${released}:${hardening_compile}>")
target_link_options(zovkpopup_options INTERFACE "$<${released}:LINKER:-z,relro,-z,now>")
