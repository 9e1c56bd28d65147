# Sets the options of released code that make it harder to turn a fault into an attack. The
# sanitizers bring checks of their own, and builds for development stay as they are.
include(CheckCXXCompilerFlag)
include(CheckPIESupported)

# Programs, like libraries, are loaded at an address that the kernel chooses.
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
  # Released files do not say where they were built.
  -ffile-prefix-map=${PROJECT_SOURCE_DIR}/=)
set(released $<CONFIG:Release,MinSizeRel>)
target_compile_options(zovkpopup_options INTERFACE "$<${released}:${hardening_compile}>")
target_link_options(zovkpopup_options INTERFACE "$<${released}:LINKER:-z,relro,-z,now>")
