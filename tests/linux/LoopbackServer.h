#pragma once

#include <condition_variable>
#include <functional>
#include <future>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include <httplib.h>

#include "ScopedVariable.h"

namespace zovk {

/// A web server on a port that the kernel chooses. "/silent" never answers. Its log of requests may
/// be read at any time; set answers up before they are asked for.
class LoopbackServer {
 public:
  using Handler = std::function<void(const httplib::Request&, httplib::Response&)>;

  LoopbackServer();
  ~LoopbackServer();
  LoopbackServer(const LoopbackServer&) = delete;
  LoopbackServer& operator=(const LoopbackServer&) = delete;

  std::string url(const std::string& path) const;
  /// Answers GET and POST requests to `path`. Returns the address.
  std::string serve(const std::string& path, int status, const std::string& body);
  std::string handle(const std::string& path, Handler handler);
  /// Returns the requests so far.
  std::vector<httplib::Request> requests() const;
  /// Blocks until the server ends.
  void waitForEnd() const { ended_.wait(); }
  /// Returns once `count` requests to "/silent" wait.
  void waitForSilent(int count);

 private:
  void answer(const httplib::Request& request, httplib::Response& response);

  const ScopedVariable noProxy_{"no_proxy", "127.0.0.1"};
  httplib::Server server_;
  int port_ = 0;
  mutable std::mutex mutex_;
  std::condition_variable silentArrived_;
  int silentCount_ = 0;
  std::map<std::string, Handler> handlers_;
  std::vector<httplib::Request> requests_;
  std::promise<void> end_;
  std::shared_future<void> ended_ = end_.get_future().share();
  std::thread thread_;
};

/// Returns the address of a port on which nobody listens.
std::string unusedAddress();

}  // namespace zovk
