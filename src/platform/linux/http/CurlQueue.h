#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/linux/http/CurlTask.h"

namespace zovk {

/// The jobs that wait for their turn. They hold no descriptor, only the request. Session thread
/// only.
class CurlQueue {
 public:
  using Job = std::unique_ptr<CurlJob>;

  void add(Job job);
  /// Removes and returns the jobs that were cancelled while they waited.
  std::vector<Job> takeCancelled();
  /// Removes and returns the request for data that has waited longest; null if none waits.
  Job nextData();
  /// Removes and returns the download that has waited longest for a host with room; null if there
  /// is none.
  Job nextDownload(const std::function<bool(const std::string& host)>& hasRoom);

 private:
  using Line = std::deque<Job>;
  Line data_;
  std::map<std::string, Line> downloads_;  // by host, so that a slow one holds up no other
};

}  // namespace zovk
