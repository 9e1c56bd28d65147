#pragma once

#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace zovk {

/// What comes back for a request, to the byte, and what happens to the connection then.
struct RawAnswer {
  enum class Then { kClose, kStayOpen, kDrip, kReset };

  std::string name;
  std::string bytes;
  Then then = Then::kClose;  ///< A drip sends one byte more every 100 ms.
};

/// A server on the loopback that answers every request with the same bytes.
class RawServer {
 public:
  RawServer();
  ~RawServer();
  RawServer(const RawServer&) = delete;
  RawServer& operator=(const RawServer&) = delete;

  std::string base() const;
  void answerWith(RawAnswer answer);

 private:
  void acceptAll();
  void serve(int connection);

  int listener_ = -1;
  int stop_[2] = {-1, -1};
  std::mutex mutex_;
  RawAnswer answer_;
  std::vector<std::thread> connections_;
  std::thread thread_;
};

/// An answer that is HTTP, with the right length.
std::string httpAnswer(const std::string& body, const std::string& status = "200 OK",
                       const std::string& headers = "");
/// Answers that no good service gives, around `good`, the body that a good one would give.
std::vector<RawAnswer> hostileAnswers(const std::string& good);

}  // namespace zovk
