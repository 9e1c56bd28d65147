// Stands between the edge and the stream: hands on each report that a game has signed, and answers
// when the stream has it on its disk.
#include <csignal>
#include <cstdio>
#include <exception>
#include <memory>
#include <string>

#include <CLI/CLI.hpp>
#include <event2/event.h>
#include <sys/resource.h>

#include "GameKeys.h"
#include "ReportServer.h"
#include "ReportStream.h"

namespace {

using Base = std::unique_ptr<event_base, decltype(&event_base_free)>;
using Signal = std::unique_ptr<event, decltype(&event_free)>;

struct Options {
  std::string listen;
  std::string games;
  zovk::intake::StreamSettings stream{.address = "", .backlog = 1'000'000, .mostWaiting = 5000};
};

void describe(CLI::App& app, Options& options) {
  app.add_option("--listen", options.listen, "The socket that the edge connects to")->required();
  app.add_option("--games", options.games, "The file of the games' keys; SIGHUP has it read again")
      ->required();
  app.add_option("--stream", options.stream.address, "Redis: the path of its socket, or HOST:PORT")
      ->required();
  app.add_option("--backlog", options.stream.backlog, "Reports that the stream may have")
      ->capture_default_str();
  app.add_option("--most-waiting", options.stream.mostWaiting,
                 "Reports that may wait for the stream's answer; each can take 64 KB twice")
      ->capture_default_str();
}

// Each waiting report has a connection.
void allowManyConnections() {
  rlimit files{};
  if (getrlimit(RLIMIT_NOFILE, &files) != 0) return;
  files.rlim_cur = files.rlim_max;
  setrlimit(RLIMIT_NOFILE, &files);
}

// Changes of what is waited for on a connection cost one call for each turn of the loop.
Base makeBase() {
  event_config* config = event_config_new();
  event_config_set_flag(config, EVENT_BASE_FLAG_EPOLL_USE_CHANGELIST);
  Base base(event_base_new_with_config(config), event_base_free);
  event_config_free(config);
  return base;
}

struct Running {
  event_base* base;
  zovk::intake::ReportServer& server;
};

void endRunning(evutil_socket_t, short, void* given) {
  const auto& running = *static_cast<Running*>(given);
  running.server.end([base = running.base] { event_base_loopbreak(base); });
}

void readKeysAgain(evutil_socket_t, short, void* keys) {
  static_cast<zovk::intake::GameKeys*>(keys)->readAgain();
}

void serve(const Options& options) {
  const Base base = makeBase();
  zovk::intake::GameKeys keys(options.games);
  zovk::intake::ReportStream stream(base.get(), options.stream);
  zovk::intake::ReportServer server(base.get(), options.listen, keys, stream);
  Running running{base.get(), server};
  const Signal ending(evsignal_new(base.get(), SIGTERM, endRunning, &running), event_free);
  event_add(ending.get(), nullptr);
  const Signal reading(evsignal_new(base.get(), SIGHUP, readKeysAgain, &keys), event_free);
  event_add(reading.get(), nullptr);
  event_base_dispatch(base.get());
  // The last answers are still to be sent.
  event_base_loop(base.get(), EVLOOP_NONBLOCK);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    CLI::App app{"Hands reports from the edge to the stream", "zovkpopup-receiver"};
    Options options;
    describe(app, options);
    CLI11_PARSE(app, argc, argv);
    std::signal(SIGPIPE, SIG_IGN);
    allowManyConnections();
    serve(options);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "zovkpopup-receiver: %s\n", error.what());
    return 1;
  }
  return 0;
}
