#include "service/Options.h"

#include <cstdio>
#include <filesystem>

#include <CLI/CLI.hpp>

#include "support/Version.h"
#include "zovkpopup/ExitCode.h"

namespace zovk::service {
namespace {

constexpr int kLargestPort = 65535;

void describe(CLI::App& app, Options& options) {
  app.set_version_flag("--version", std::string("zovkpopup-service ") + kPopupVersion);
  app.add_option("folder", options.folder, "The folder to serve")->required();
  app.add_option("--port", options.port, "Port; 0 lets the kernel pick one")
      ->check(CLI::Range(0, kLargestPort));
  app.add_option("--listen", options.listen,
                 "Address to listen on; anything but loopback can be reached by others");
  app.add_option("--base", options.base,
                 "What {{base}} stands for, if not the address listened on");
  auto* const tls = app.add_flag("--tls", options.tls, "HTTPS with a throw-away certificate");
  app.add_option("--certificate-out", options.certificateOut,
                 "Writes that certificate as PEM, for clients to trust")
      ->needs(tls);
  app.add_option("--reports", options.reports, "SQLite file; default reports.sqlite in the folder");
  app.add_option("--game", options.games, "ID=KEY of a game, before those in games.json");
  app.add_option("--fault", options.faults, "PATH=KIND[:ARGUMENT], spoils the answers for a path");
  app.add_flag("--show-keys", options.showKeys, "Shows game keys in refusals");
  app.add_flag("--verbose", options.verbose, "One line on standard error for each request");
}

}  // namespace

std::variant<Options, int> parseOptions(int argc, const char* const* argv) {
  CLI::App app{"Development popup service: serves a folder to games with in-app popups",
               "zovkpopup-service"};
  Options options;
  describe(app, options);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? tool::kSuccess : tool::kUsage;
  }
  std::error_code ignored;
  if (!std::filesystem::is_directory(options.folder, ignored)) {
    std::fprintf(stderr, "zovkpopup-service: %s: is no folder\n", options.folder.c_str());
    return tool::kNoInput;
  }
  if (options.reports.empty()) {
    options.reports = (std::filesystem::path(options.folder) / "reports.sqlite").string();
  }
  return options;
}

}  // namespace zovk::service
