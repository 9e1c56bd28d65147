#include "HandServer.h"

#include <array>
#include <stdexcept>
#include <utility>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace zovk {
namespace {

constexpr int kBoundMilliseconds = 20000;

void awaitReadable(int descriptor) {
  pollfd waiting{descriptor, POLLIN, 0};
  if (poll(&waiting, 1, kBoundMilliseconds) != 1) throw std::runtime_error("no request came");
}

/// A page of which fewer bytes are there is not begun yet, since its kind could be another one.
constexpr std::size_t kEnoughToSniff = 1024;

}  // namespace

HandServer::HandServer() : listener_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  if (bind(listener_, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0 ||
      listen(listener_, 8) != 0) {
    throw std::runtime_error("no port on the loopback");
  }
}

HandServer::~HandServer() {
  if (connection_ >= 0) close(connection_);
  close(listener_);
}

std::string HandServer::url() const {
  sockaddr_in address{};
  socklen_t size = sizeof address;
  getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size);
  return "http://127.0.0.1:" + std::to_string(ntohs(address.sin_port)) + "/page.html";
}

void HandServer::awaitRequest() {
  // A connection that was opened ahead of need ends without a request.
  for (ssize_t length = 0; length <= 0;) {
    if (connection_ >= 0) close(std::exchange(connection_, -1));
    awaitReadable(listener_);
    connection_ = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
    awaitReadable(connection_);
    std::array<char, 4096> request;
    length = recv(connection_, request.data(), request.size(), 0);
  }
}

void HandServer::answer(const std::string& title) {
  begin(title);
  end();
}

void HandServer::begin(const std::string& title) {
  const std::string text =
      "HTTP/1.1 200 OK\r\nContent-Type: text/html\r\nConnection: close\r\n\r\n"
      "<!doctype html><title>" +
      title + "</title>" + std::string(kEnoughToSniff, ' ');
  send(connection_, text.data(), text.size(), MSG_NOSIGNAL);
}

void HandServer::end() {
  close(std::exchange(connection_, -1));
}

}  // namespace zovk
