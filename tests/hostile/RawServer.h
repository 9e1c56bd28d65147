#pragma once

#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace zovk {

/// The exact bytes of an answer, and what happens to the connection afterwards.
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

/// Returns an answer in HTTP, with the right length.
std::string httpAnswer(const std::string& body, const std::string& status = "200 OK",
                       const std::string& headers = "");
/// Returns answers that no good service gives, around `good`, the body of a good one.
std::vector<RawAnswer> hostileAnswers(const std::string& good);

}  // namespace zovk
