# Takes the debug symbols out of the Debian packages and puts them into packages of their own. Only
# those have a place for them.
if(NOT CPACK_GENERATOR STREQUAL "DEB")
  set(CPACK_STRIP_FILES ON)
endif()
