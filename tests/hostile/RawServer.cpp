#include "hostile/RawServer.h"

#include <exception>

#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace zovk {
namespace {

bool sendAll(int connection, const std::string& bytes) {
  std::size_t sent = 0;
  while (sent < bytes.size()) {
    const ssize_t count = send(connection, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
    if (count <= 0) return false;
    sent += static_cast<std::size_t>(count);
  }
  return true;
}

}  // namespace

RawServer::RawServer() {
  listener_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  if (bind(listener_, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0 ||
      listen(listener_, 64) != 0 || pipe2(stop_, O_CLOEXEC) != 0) {
    std::terminate();
  }
  thread_ = std::thread([this] { acceptAll(); });
}

RawServer::~RawServer() {
  close(stop_[1]);
  thread_.join();
  for (std::thread& connection : connections_) connection.join();
  close(stop_[0]);
  close(listener_);
}

std::string RawServer::base() const {
  sockaddr_in address{};
  socklen_t length = sizeof address;
  getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &length);
  return "http://127.0.0.1:" + std::to_string(ntohs(address.sin_port));
}

void RawServer::answerWith(RawAnswer answer) {
  const std::lock_guard lock(mutex_);
  answer_ = std::move(answer);
}

void RawServer::acceptAll() {
  while (true) {
    pollfd ready[] = {{listener_, POLLIN, 0}, {stop_[0], POLLIN, 0}};
    poll(ready, 2, -1);
    if (ready[1].revents != 0) return;
    const int connection = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
    if (connection >= 0) connections_.emplace_back([this, connection] { serve(connection); });
  }
}

void RawServer::serve(int connection) {
  const timeval patience{5, 0};
  setsockopt(connection, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
  setsockopt(connection, SOL_SOCKET, SO_SNDTIMEO, &patience, sizeof patience);
  std::string request;
  char bytes[4096];
  while (request.find("\r\n\r\n") == std::string::npos) {
    const ssize_t count = recv(connection, bytes, sizeof bytes, 0);
    if (count <= 0) break;
    request.append(bytes, static_cast<std::size_t>(count));
  }
  RawAnswer answer;
  {
    const std::lock_guard lock(mutex_);
    answer = answer_;
  }
  bool listening = sendAll(connection, answer.bytes);
  if (answer.then == RawAnswer::Then::kReset) {
    const linger now{1, 0};
    setsockopt(connection, SOL_SOCKET, SO_LINGER, &now, sizeof now);
  }
  const bool drips = answer.then == RawAnswer::Then::kDrip;
  while (listening && (drips || answer.then == RawAnswer::Then::kStayOpen)) {
    pollfd ready[] = {{stop_[0], POLLIN, 0}, {connection, POLLRDHUP, 0}};
    poll(ready, 2, drips ? 100 : -1);
    if (ready[0].revents != 0 || ready[1].revents != 0) break;
    listening = sendAll(connection, " ");
  }
  close(connection);
}

}  // namespace zovk
