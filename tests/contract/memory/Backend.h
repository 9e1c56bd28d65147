#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <string>

#include "platform/memory/MemoryBundles.h"
#include "platform/memory/MemoryFileSystem.h"
#include "platform/memory/MemoryScheduler.h"
#include "platform/memory/MemorySettings.h"
#include "platform/memory/MemoryUrlSession.h"

namespace zovk {

/// Main queue, timers and clock, and a way to move them on.
class LoopBackend {
 public:
  MainQueue& queue() { return scheduler_; }
  Timers& timers() { return scheduler_; }
  Clock& clock() { return scheduler_; }
  /// Runs what is due.
  void run() { scheduler_.runReady(); }
  /// Runs tasks as they become due, until `done`.
  void runUntil(const std::function<bool()>& done, const std::string& what) {
    if (!done()) scheduler_.runUntil(done, what);
  }
  /// Lets time pass, and runs tasks as they become due.
  void advance(std::chrono::milliseconds duration) { scheduler_.advance(duration); }
  /// Lets time pass without running anything.
  void skip(std::chrono::milliseconds duration) { scheduler_.skip(duration); }
  void shutDown() { scheduler_.shutDown(); }

 private:
  MemoryScheduler scheduler_;
};

/// An empty directory.
class FilesBackend {
 public:
  FilesBackend() { files_.addDirectory(directory()); }
  MemoryFileSystem& files() { return files_; }
  std::string directory() const { return "/scratch"; }
  void addLink(const std::string& path, const std::string& target) { files_.addLink(path, target); }

 private:
  MemoryFileSystem files_;
};

/// Bundles with an empty directory as the main bundle.
class BundlesBackend {
 public:
  FileSystem& files() { return files_; }
  Bundles& bundles() { return bundles_; }
  std::string mainDirectory() const { return MemoryBundles::kMainPath; }

 private:
  MemoryFileSystem files_;
  MemoryBundles bundles_{files_};
};

class SettingsBackend {
 public:
  SettingsStore& settings() { return settings_; }

 private:
  MemorySettings settings_;
};

/// A session with a server that answers by path.
class UrlBackend {
 public:
  UrlBackend() {
    session_.useThread();
    session_.setHandler([this](const MemoryRequest& request) { return answerTo(request); });
  }
  UrlSession& session() { return session_; }
  FileSystem& files() { return files_; }
  /// Answers requests to `path`. Returns the address.
  std::string serve(const std::string& path, int status, const std::string& body) {
    MemoryAnswer answer;
    answer.status = status;
    answer.body = body;
    answers_[url(path)] = answer;
    return url(path);
  }
  /// Returns an address whose requests are never answered.
  std::string silentUrl() const { return url("/silent"); }
  /// Returns an address without a server.
  std::string unreachableUrl() {
    MemoryAnswer answer;
    answer.error = "connection refused";
    answers_[url("/unreachable")] = answer;
    return url("/unreachable");
  }
  void shutDown() { session_.shutDown(); }

 private:
  static std::string url(const std::string& path) { return "http://server.example" + path; }
  std::optional<MemoryAnswer> answerTo(const MemoryRequest& request) const {
    const auto found = answers_.find(request.url);
    return found == answers_.end() ? std::nullopt : std::optional(found->second);
  }

  std::map<std::string, MemoryAnswer> answers_;
  MemoryFileSystem files_;
  MemoryUrlSession session_{files_};
};

}  // namespace zovk
