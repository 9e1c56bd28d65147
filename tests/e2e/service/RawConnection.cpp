#include "e2e/service/RawConnection.h"

#include <array>
#include <cstdint>
#include <stdexcept>
#include <string_view>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace zovk {

RawConnection::RawConnection(int port) : socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  if (::connect(socket_, reinterpret_cast<sockaddr*>(&address), sizeof(address)) != 0) {
    ::close(socket_);
    throw std::runtime_error("no connection");
  }
}

RawConnection::~RawConnection() {
  ::close(socket_);
}

void RawConnection::send(const std::string& bytes) const {
  std::size_t sent = 0;
  while (sent < bytes.size()) {
    const ssize_t got = ::send(socket_, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
    if (got <= 0) return;  // the peer may have had enough
    sent += static_cast<std::size_t>(got);
  }
}

void RawConnection::finishSending() const {
  ::shutdown(socket_, SHUT_WR);
}

std::string RawConnection::readSome() const {
  std::array<char, 16384> piece{};
  const ssize_t got = ::recv(socket_, piece.data(), piece.size(), 0);
  return got <= 0 ? std::string() : std::string(piece.data(), static_cast<std::size_t>(got));
}

std::string RawConnection::readAll() const {
  std::string all;
  for (std::string piece = readSome(); !piece.empty(); piece = readSome()) all += piece;
  return all;
}

std::string exchange(int port, const std::string& request) {
  const RawConnection connection(port);
  connection.send(request);
  return connection.readAll();
}

int statusOf(int port, const std::string& request) {
  constexpr std::string_view kVersion = "HTTP/1.1 ";
  const RawConnection connection(port);
  connection.send(request);
  std::string head;
  for (std::string piece = connection.readSome(); !piece.empty(); piece = connection.readSome()) {
    head += piece;
    if (head.find("\r\n\r\n") != std::string::npos) break;
  }
  return head.starts_with(kVersion) ? std::stoi(head.substr(kVersion.size())) : 0;
}

}  // namespace zovk
