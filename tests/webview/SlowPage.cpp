#include "SlowPage.h"

#include <stdexcept>
#include <string_view>
#include <utility>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace zovk {
namespace {

constexpr std::string_view kHead =
    "HTTP/1.1 200 OK\r\nContent-Type: text/html\r\nContent-Length: 4096\r\n\r\n"
    "<!doctype html><title>Slow page</title><body style='margin:0;background:#2e7d32'>";
constexpr std::size_t kBody = 4096;

std::string restOfBody() {
  const std::size_t sent = kHead.size() - (kHead.find("\r\n\r\n") + 4);
  return std::string(kBody - sent, ' ');
}

sockaddr_in loopback() {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

void sendAll(int connection, std::string_view text) {
  while (!text.empty()) {
    const ssize_t sent = send(connection, text.data(), text.size(), MSG_NOSIGNAL);
    if (sent <= 0) return;
    text.remove_prefix(static_cast<std::size_t>(sent));
  }
}

}  // namespace

SlowPage::SlowPage() : listener_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  sockaddr_in address = loopback();
  if (bind(listener_, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0 ||
      listen(listener_, 4) != 0) {
    throw std::runtime_error("no port on the loopback");
  }
  thread_ = std::thread([this, rest = rest_.get_future()]() mutable { serve(std::move(rest)); });
}

SlowPage::~SlowPage() {
  rest_ = {};  // ends a wait for the rest
  shutdown(listener_, SHUT_RDWR);
  thread_.join();
  close(listener_);
}

std::string SlowPage::url() const {
  sockaddr_in address{};
  socklen_t size = sizeof address;
  getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size);
  return "http://127.0.0.1:" + std::to_string(ntohs(address.sin_port)) + "/slow.html";
}

int SlowPage::acceptRequest() const {
  // A connection that was opened ahead of need may end without a request.
  char request[4096];
  while (true) {
    const int connection = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
    if (connection < 0 || recv(connection, request, sizeof request, 0) > 0) return connection;
    close(connection);
  }
}

void SlowPage::serve(std::future<bool> rest) const {
  const int connection = acceptRequest();
  if (connection < 0) return;
  sendAll(connection, kHead);
  rest.wait();
  sendAll(connection, restOfBody());
  char ignored[1024];
  shutdown(connection, SHUT_WR);
  while (recv(connection, ignored, sizeof ignored, 0) > 0) {
  }
  close(connection);
}

}  // namespace zovk
