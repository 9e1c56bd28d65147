#include <csignal>
#include <cstdio>
#include <exception>
#include <stdexcept>

#include <pthread.h>

#include "service/Folder.h"
#include "service/Loopback.h"
#include "service/Options.h"
#include "service/Server.h"
#include "service/console/Console.h"
#include "zovkpopup/ExitCode.h"

namespace {

void printLine(const std::string& line) {
  std::fprintf(stdout, "%s\n", line.c_str());
  std::fflush(stdout);
}

// Blocks the signals in every thread, so that the main thread can wait for them as for anything
// else.
sigset_t blockEndingSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGTERM);
  sigaddset(&signals, SIGINT);
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);
  return signals;
}

void warnOfExposure(const std::string& address) {
  if (zovk::service::isLoopback(address)) return;
  std::fprintf(stderr,
               "WARNING: listening on %s, which OTHER MACHINES MAY REACH. This is a development "
               "tool: it is not made to be exposed.\n",
               address.c_str());
}

int serve(const zovk::service::Options& options) {
  const sigset_t ending = blockEndingSignals();
  warnOfExposure(options.listen);
  // These outlive the server, whose threads write into them.
  zovk::service::ReportFeed feed;
  zovk::service::Refusals refusals;
  zovk::service::Server server(
      options,
      [&](const std::string& line) {
        printLine(line);
        feed.publish(line);
      },
      [&](const std::string& path, const zovk::service::Answer& answer) {
        refusals.add(path, answer);
      });
  const zovk::service::Console console(server, options, feed, refusals);
  if (!server.knowsGames()) {
    std::fprintf(stderr, "warning: no games are known (games.json, --game): all are refused\n");
  }
  server.start();
  // Standard output is for programs, and this is for a person.
  std::fprintf(stderr, "console at %s\n", console.address().c_str());
  printLine("listening on " + server.address());
  int signal = 0;
  while (sigwait(&ending, &signal) != 0) {
  }
  feed.close();
  server.stop();
  return 0;
}

int reported(const std::exception& error, zovk::tool::ExitCode code) {
  std::fprintf(stderr, "zovkpopup-service: %s\n", error.what());
  return code;
}

}  // namespace

int main(int argc, char** argv) {
  const auto options = zovk::service::parseOptions(argc, argv);
  if (const int* code = std::get_if<int>(&options)) return *code;
  using namespace zovk;
  try {
    return serve(std::get<service::Options>(options));
  } catch (const service::ListenError& error) {
    return reported(error, tool::kUnavailable);
  } catch (const service::FolderError& error) {
    return reported(error, tool::kBadData);
  } catch (const std::invalid_argument& error) {
    return reported(error, tool::kUsage);
  } catch (const std::runtime_error& error) {
    return reported(error, tool::kInputOutput);
  } catch (const std::exception& error) {
    return reported(error, tool::kFault);
  }
}
