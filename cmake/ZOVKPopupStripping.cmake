# Of Debian packages the debug symbols are taken apart, into packages of their own. Nothing else
# would know where to put them.
if(NOT CPACK_GENERATOR STREQUAL "DEB")
  set(CPACK_STRIP_FILES ON)
endif()
