# Makes every target of the project, with one language level, one set of warnings, and one place for
# sanitizers and the compiler cache.
find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  # Results are shared between build folders, and between builds of precompiled headers.
  set(launcher ${CMAKE_COMMAND} -E env CCACHE_NOHASHDIR=1
      CCACHE_SLOPPINESS=pch_defines,time_macros ${CCACHE_PROGRAM})
  set(CMAKE_C_COMPILER_LAUNCHER ${launcher})
  set(CMAKE_CXX_COMPILER_LAUNCHER ${launcher})
endif()

add_library(zovkpopup_options INTERFACE)
target_compile_features(zovkpopup_options INTERFACE cxx_std_20)
target_compile_options(zovkpopup_options INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow
  $<$<BOOL:${ZOVKPOPUP_WERROR}>:-Werror>
  $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>
  $<$<CXX_COMPILER_ID:Clang>:-Wthread-safety>)
target_include_directories(zovkpopup_options INTERFACE ${PROJECT_SOURCE_DIR}/include ${PROJECT_SOURCE_DIR}/src)
if(ZOVKPOPUP_SANITIZE)
  target_compile_options(zovkpopup_options INTERFACE
    -fsanitize=${ZOVKPOPUP_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(zovkpopup_options INTERFACE -fsanitize=${ZOVKPOPUP_SANITIZE})
else()
  include(ZOVKPopupHardening)
endif()

# Helper and resource bundle are looked for in a folder "zovkpopup" beside the library, or beside a
# program that the library is linked into. In the build tree that folder is a link.
function(zovkpopup_runtime_beside directory)
  file(MAKE_DIRECTORY ${directory})
  file(CREATE_LINK ${PROJECT_BINARY_DIR}/zovkpopup ${directory}/zovkpopup SYMBOLIC)
endfunction()

# zovkpopup_folder(NAME SOURCES... LINK...): the static library of one source folder.
function(zovkpopup_folder name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINK;PRIVATE_LINK" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  set_target_properties(${name} PROPERTIES
    POSITION_INDEPENDENT_CODE ON CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
  target_link_libraries(${name} PUBLIC zovkpopup_options ${ARG_LINK} PRIVATE ${ARG_PRIVATE_LINK})
endfunction()
