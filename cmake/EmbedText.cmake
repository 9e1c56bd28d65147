# Writes a C++ function that returns the text of a file.
#   cmake -DINPUT=file -DOUTPUT=file.cpp -DFUNCTION=name -DHEADER=header -P EmbedText.cmake
file(READ "${INPUT}" text)
string(FIND "${text}" ")zovk\"" end_mark)
string(LENGTH "${text}" length)
# Longer literals are more than compilers have to take.
if(NOT end_mark EQUAL -1 OR length GREATER 60000)
  message(FATAL_ERROR "${INPUT} does not fit into one raw literal")
endif()
file(WRITE "${OUTPUT}"
"#include \"${HEADER}\"

namespace zovk {

std::string ${FUNCTION}() {
  return R\"zovk(${text})zovk\";
}

}  // namespace zovk
")
