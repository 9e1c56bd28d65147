#pragma once

#include <future>
#include <string>
#include <thread>

namespace zovk {

/// A server on the loopback with one page, of which the second half comes only when it is let go.
class SlowPage {
 public:
  SlowPage();
  ~SlowPage();
  SlowPage(const SlowPage&) = delete;
  SlowPage& operator=(const SlowPage&) = delete;

  std::string url() const;
  void letGo() { rest_.set_value(true); }

 private:
  /// A connection on which something was asked for; -1 when the server ends.
  int acceptRequest() const;
  void serve(std::future<bool> rest) const;

  int listener_ = -1;
  std::promise<bool> rest_;
  std::thread thread_;
};

}  // namespace zovk
