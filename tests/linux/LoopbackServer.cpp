#include "LoopbackServer.h"

#include <stdexcept>
#include <utility>

#include <netinet/in.h>
#include <sys/socket.h>

#include "support/UniqueFd.h"

namespace zovk {
namespace {

constexpr const char* kHost = "127.0.0.1";

std::string address(int port) {
  return "http://" + std::string(kHost) + ":" + std::to_string(port);
}

}  // namespace

LoopbackServer::LoopbackServer() : port_(server_.bind_to_any_port(kHost)) {
  server_.set_tcp_nodelay(true);
  server_.new_task_queue = [] { return new httplib::ThreadPool(64); };
  const auto handler = [this](const httplib::Request& request, httplib::Response& response) {
    answer(request, response);
  };
  server_.Get(".*", handler);
  server_.Post(".*", handler);
  thread_ = std::thread([this] { server_.listen_after_bind(); });
  while (!server_.is_running()) std::this_thread::yield();
}

LoopbackServer::~LoopbackServer() {
  end_.set_value();
  server_.stop();
  thread_.join();
}

std::string LoopbackServer::url(const std::string& path) const {
  return address(port_) + path;
}

std::string LoopbackServer::serve(const std::string& path, int status, const std::string& body) {
  return handle(path, [status, body](const httplib::Request&, httplib::Response& response) {
    response.status = status;
    response.set_content(body, "text/plain");
  });
}

std::string LoopbackServer::handle(const std::string& path, Handler handler) {
  const std::lock_guard lock(mutex_);
  handlers_[path] = std::move(handler);
  return url(path);
}

std::vector<httplib::Request> LoopbackServer::requests() const {
  const std::lock_guard lock(mutex_);
  return requests_;
}

void LoopbackServer::waitForSilent(int count) {
  std::unique_lock lock(mutex_);
  silentArrived_.wait(lock, [&] { return silentCount_ >= count; });
}

void LoopbackServer::answer(const httplib::Request& request, httplib::Response& response) {
  Handler handler;
  {
    const std::lock_guard lock(mutex_);
    requests_.push_back(request);
    const auto found = handlers_.find(request.path);
    if (found != handlers_.end()) handler = found->second;
    if (request.path == "/silent") ++silentCount_;
  }
  silentArrived_.notify_all();
  if (request.path == "/silent") {
    waitForEnd();
  } else if (handler) {
    handler(request, response);
  } else {
    response.status = 404;
  }
}

std::string unusedAddress() {
  const UniqueFd socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
  sockaddr_in own{};
  own.sin_family = AF_INET;
  own.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t length = sizeof own;
  auto* const raw = reinterpret_cast<sockaddr*>(&own);
  if (::bind(socket.get(), raw, length) != 0 || ::getsockname(socket.get(), raw, &length) != 0) {
    throw std::runtime_error("no port");
  }
  return address(ntohs(own.sin_port));
}

}  // namespace zovk
