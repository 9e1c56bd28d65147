#include "platform/linux/LinuxPlatform.h"

#include <exception>
#include <string>

#include <fmt/format.h>

#include "platform/linux/system/Container.h"
#include "platform/linux/system/PrivateFile.h"

namespace zovk {
namespace {

std::string madeContainer(const ZOVKPopupHostSettings& settings, PlatformLog& log) {
  std::string home = containerDirectory(settings);
  makeContainer(home, log);
  if (settings.dataDirectory.empty()) makePrivateDirectory(home);
  return home;
}

}  // namespace

LinuxPlatform::LinuxPlatform(const ZOVKPopupHostSettings& settings)
    : log_(std::make_shared<StandardErrorLog>(settings.logSink)),
      bundles_(files_, settings.resourceDirectory),
      device_(madeContainer(settings, *log_), applicationId(settings)),
      settings_(device_.homeDirectory() + "/Library/Preferences/settings.db"),
      urlSession_({device_.homeDirectory() + "/Library/Caches/downloads.db",
                   settings.certificateAuthority}),
      userInterface_(settings, queue_, device_),
      interfaces_{*log_,    queue_,    timers_, clock_,      files_,
                  bundles_, settings_, device_, urlSession_, userInterface_} {}

void LinuxPlatform::pump(std::chrono::microseconds budget) {
  queue_.pump(budget);
  settings_.keepQueuedNowAndThen();
}

LinuxPlatform::~LinuxPlatform() {
  shutDown();
}

void LinuxPlatform::shutDown() {
  if (shutDown_) return;
  shutDown_ = true;
  settings_.keepQueued(SqliteSettings::kPatience);
  // First the queue, which lets go of threads that wait for it, then the threads.
  queue_.shutDown();
  userInterface_.shutDown();
  urlSession_.shutDown();
}

std::shared_ptr<HostedPlatform> makeDefaultPlatform(const ZOVKPopupHostSettings& settings) {
  try {
    return std::make_shared<LinuxPlatform>(settings);
  } catch (const std::exception& failure) {
    StandardErrorLog(settings.logSink)
        .writeLine(fmt::format("[Error] The platform cannot be set up: {}", failure.what()));
    return nullptr;
  }
}

}  // namespace zovk
