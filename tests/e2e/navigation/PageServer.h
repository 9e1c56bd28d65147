#pragma once

#include <future>
#include <string>

#include "LoopbackServer.h"

namespace zovk {

/// A site of pages. A page that asks for its gate gets no answer until the test opens it. In that
/// way a test tells a page that it has seen what it waited for.
class PageServer {
 public:
  PageServer();
  ~PageServer() { openGate(); }
  PageServer(const PageServer&) = delete;
  PageServer& operator=(const PageServer&) = delete;

  std::string url(const std::string& path) const { return server_.url(path); }
  /// Each of these returns the address.
  std::string page(const std::string& path, const std::string& html);
  std::string redirect(const std::string& path, const std::string& target);
  /// Begins a page and breaks off the connection.
  std::string brokenPage(const std::string& path);
  /// Returns the requests to `path` so far, each as "METHOD body".
  std::vector<std::string> requestsTo(const std::string& path) const;
  bool wasAsked() const { return !server_.requests().empty(); }
  std::string gate() const { return url("/gate"); }
  void openGate();

 private:
  LoopbackServer server_;
  std::promise<void> gate_;
  bool gateIsOpen_ = false;
};

}  // namespace zovk
