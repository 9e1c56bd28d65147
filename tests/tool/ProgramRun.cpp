#include "ProgramRun.h"

#include <fstream>
#include <iterator>

#include <boost/json/parse.hpp>

#include "fixtures/ChildProcess.h"

namespace zovk {
namespace {

std::string textOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace

boost::json::value ProgramRun::json() const {
  boost::json::error_code error;
  boost::json::value value = boost::json::parse(out, error);
  EXPECT_FALSE(error) << out << err;
  return value;
}

ProgramRun runProgram(const std::vector<std::string>& arguments) {
  const ScratchDirectory folder;
  const std::string errors = (folder.path() / "errors").string();
  ChildProcess program(arguments, errors);
  ProgramRun run;
  while (const auto line = program.nextLine()) run.out += *line + "\n";
  run.code = program.wait();
  run.err = textOf(errors);
  return run;
}

ProgramRun runTool(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), ZOVKPOPUP_TOOL);
  return runProgram(arguments);
}

std::string ToolTest::write(const std::string& name, const std::string& text) const {
  std::ofstream(path(name), std::ios::binary) << text;
  return path(name);
}

std::string ToolTest::read(const std::string& path) {
  return textOf(path);
}

}  // namespace zovk
