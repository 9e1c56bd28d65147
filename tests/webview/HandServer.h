#pragma once

#include <string>

namespace zovk {

/// A server on the loopback that a test plays by hand, without its own thread. Waits that take too
/// long throw std::runtime_error.
class HandServer {
 public:
  HandServer();
  ~HandServer();
  HandServer(const HandServer&) = delete;
  HandServer& operator=(const HandServer&) = delete;

  std::string url() const;
  /// Waits for a request; the connection stays open without an answer.
  void awaitRequest();
  /// Answers the last awaited request with a page of that title.
  void answer(const std::string& title);
  /// Answers so, but for the end, which `end` sends.
  void begin(const std::string& title);
  void end();

 private:
  int listener_ = -1;
  int connection_ = -1;
};

}  // namespace zovk
