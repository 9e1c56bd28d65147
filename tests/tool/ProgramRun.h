#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include <boost/json/value.hpp>
#include <gtest/gtest.h>

#include "fixtures/LocalBundle.h"

namespace zovk {

/// The results of a program.
struct ProgramRun {
  int code = -1;
  std::string out;
  std::string err;

  /// Returns standard output as JSON. Fails the test if it is not JSON.
  boost::json::value json() const;
};

/// Runs a program to its end. The first argument is its path.
ProgramRun runProgram(const std::vector<std::string>& arguments);
/// Runs the tool.
ProgramRun runTool(std::vector<std::string> arguments);

/// A folder to work in.
class ToolTest : public ::testing::Test {
 protected:
  std::string path(const std::string& name) const { return (folder_.path() / name).string(); }
  /// Writes a file and returns its path.
  std::string write(const std::string& name, const std::string& text) const;
  static std::string read(const std::string& path);

 private:
  ScratchDirectory folder_;
};

}  // namespace zovk
