#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/linux/http/CurlTask.h"

namespace zovk {

/// The jobs that wait for their turn: they hold no descriptor, only what is to be sent. Session
/// thread only.
class CurlQueue {
 public:
  using Job = std::unique_ptr<CurlJob>;

  void add(Job job);
  /// Takes out what was cancelled while it waited.
  std::vector<Job> takeCancelled();
  /// The request for data that has waited longest; null when none waits.
  Job nextData();
  /// The download that has waited longest for a host that has room; null when there is none.
  Job nextDownload(const std::function<bool(const std::string& host)>& hasRoom);

 private:
  using Line = std::deque<Job>;
  Line data_;
  std::map<std::string, Line> downloads_;  // by host, so that a slow one holds up no other
};

}  // namespace zovk
