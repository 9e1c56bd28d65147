#pragma once

#include <future>
#include <string>
#include <thread>

namespace zovk {

/// A server on the loopback with one page. The second half of the page comes only when the test
/// releases it.
class SlowPage {
 public:
  SlowPage();
  ~SlowPage();
  SlowPage(const SlowPage&) = delete;
  SlowPage& operator=(const SlowPage&) = delete;

  std::string url() const;
  void letGo() { rest_.set_value(true); }

 private:
  /// Returns a connection with a request; -1 when the server ends.
  int acceptRequest() const;
  void serve(std::future<bool> rest) const;

  int listener_ = -1;
  std::promise<bool> rest_;
  std::thread thread_;
};

}  // namespace zovk
