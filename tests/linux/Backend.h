#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

#include "LoopbackServer.h"
#include "PollWait.h"
#include "ScratchDirectory.h"
#include "platform/linux/http/CurlUrlSession.h"
#include "platform/linux/settings/SqliteSettings.h"
#include "platform/linux/system/LinuxBundles.h"
#include "platform/linux/system/LinuxMainQueue.h"
#include "platform/linux/system/LinuxTimers.h"
#include "platform/linux/system/PosixFileSystem.h"
#include "platform/linux/system/SystemClock.h"

namespace zovk {

/// Main queue, timers and clock, and a way to move them on.
class LoopBackend {
 public:
  MainQueue& queue() { return queue_; }
  Timers& timers() { return timers_; }
  Clock& clock() { return clock_; }
  /// Runs what is due.
  void run() { queue_.pump(std::chrono::hours(24)); }
  /// Runs tasks as they become due, until `done`.
  void runUntil(const std::function<bool()>& done, const std::string& what) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    for (run(); !done(); run()) {
      if (!waitUntil(end)) throw std::runtime_error("waited in vain for " + what);
    }
  }
  /// Lets time pass, and runs tasks as they become due.
  void advance(std::chrono::milliseconds duration) {
    const auto end = std::chrono::steady_clock::now() + duration;
    do {
      run();
    } while (waitUntil(end));
  }
  /// Lets time pass without running anything.
  void skip(std::chrono::milliseconds duration) { waitReadable(-1, duration); }
  void shutDown() { queue_.shutDown(); }

 private:
  bool waitUntil(std::chrono::steady_clock::time_point end) {
    const auto left = end - std::chrono::steady_clock::now();
    return waitReadable(queue_.pollDescriptor(),
                        std::chrono::ceil<std::chrono::milliseconds>(left));
  }

  LinuxMainQueue queue_;
  LinuxTimers timers_{queue_};
  SystemClock clock_;
};

/// An empty directory.
class FilesBackend {
 public:
  PosixFileSystem& files() { return files_; }
  std::string directory() const { return scratch_.path(); }
  void addLink(const std::string& path, const std::string& target) {
    std::filesystem::create_symlink(target, path);
  }

 private:
  ScratchDirectory scratch_;
  PosixFileSystem files_;
};

/// Bundles with an empty directory as the main bundle.
class BundlesBackend {
 public:
  FileSystem& files() { return files_; }
  Bundles& bundles() { return bundles_; }
  std::string mainDirectory() const { return scratch_.path(); }

 private:
  ScratchDirectory scratch_;
  PosixFileSystem files_;
  LinuxBundles bundles_{files_, scratch_.path()};
};

class SettingsBackend {
 public:
  SettingsStore& settings() { return settings_; }

 private:
  ScratchDirectory scratch_;
  SqliteSettings settings_{scratch_ / "settings.db"};
};

/// A session with a server that answers by path.
class UrlBackend {
 public:
  UrlSession& session() { return session_; }
  FileSystem& files() { return files_; }
  /// Answers requests to `path`. Returns the address.
  std::string serve(const std::string& path, int status, const std::string& body) {
    return server_.serve(path, status, body);
  }
  /// Returns an address whose requests are never answered.
  std::string silentUrl() const { return server_.url("/silent"); }
  /// Returns an address without a server.
  std::string unreachableUrl() const { return unusedAddress() + "/"; }
  void shutDown() { session_.shutDown(); }

 private:
  PosixFileSystem files_;
  LoopbackServer server_;
  CurlUrlSession session_;
};

}  // namespace zovk
