#pragma once

#include <string>
#include <variant>
#include <vector>

namespace zovk::service {

/// The options of the command line.
struct Options {
  std::string folder;
  std::string listen = "127.0.0.1";
  int port = 0;  ///< 0: the kernel picks one.
  std::string base;
  bool tls = false;
  std::string certificateOut;
  std::string reports;  ///< Never empty once parsed.
  std::vector<std::string> games;
  std::vector<std::string> faults;
  bool showKeys = false;
  bool verbose = false;
};

/// Returns the options, or the exit code after help or an error has been shown.
std::variant<Options, int> parseOptions(int argc, const char* const* argv);

}  // namespace zovk::service
