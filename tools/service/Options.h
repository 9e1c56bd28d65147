#pragma once

#include <string>
#include <variant>
#include <vector>

namespace zovk::service {

/// What the command line asks for.
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

/// The options, or the code to exit with after help or an error has been shown.
std::variant<Options, int> parseOptions(int argc, const char* const* argv);

}  // namespace zovk::service
