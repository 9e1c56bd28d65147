#include "service/Connections.h"

#include <array>
#include <charconv>
#include <cstring>
#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>

namespace zovk::service {
namespace {

struct End {
  std::string address;
  int port = 0;
};

std::string textOf(int family, const void* address) {
  std::array<char, INET6_ADDRSTRLEN> text{};
  const char* const written = ::inet_ntop(family, address, text.data(), text.size());
  return written == nullptr ? "" : written;
}

using NameOf = int (*)(int, sockaddr*, socklen_t*);

// Returns one end of a connection, or nothing if the descriptor is not an internet socket.
std::optional<End> endOf(int descriptor, NameOf nameOf) {
  sockaddr_storage storage{};
  socklen_t length = sizeof(storage);
  // The socket interface knows addresses only by their common head.
  if (nameOf(descriptor, reinterpret_cast<sockaddr*>(&storage), &length) != 0) return std::nullopt;
  if (storage.ss_family == AF_INET) {
    sockaddr_in v4{};
    std::memcpy(&v4, &storage, sizeof(v4));
    return End{textOf(AF_INET, &v4.sin_addr), ntohs(v4.sin_port)};
  }
  if (storage.ss_family != AF_INET6) return std::nullopt;
  sockaddr_in6 v6{};
  std::memcpy(&v6, &storage, sizeof(v6));
  return End{textOf(AF_INET6, &v6.sin6_addr), ntohs(v6.sin6_port)};
}

std::vector<int> openDescriptors() {
  std::vector<int> descriptors;
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd", error)) {
    const std::string name = entry.path().filename().string();
    int descriptor = 0;
    const auto read = std::from_chars(name.data(), name.data() + name.size(), descriptor);
    if (read.ec == std::errc()) descriptors.push_back(descriptor);
  }
  return descriptors;
}

void shutDownWhere(const std::function<bool(int)>& isWanted, int how) {
  for (int descriptor : openDescriptors()) {
    if (isWanted(descriptor)) ::shutdown(descriptor, how);
  }
}

}  // namespace

void cutConnection(const std::string& remoteAddress, int remotePort) {
  shutDownWhere(
      [&](int descriptor) {
        const auto peer = endOf(descriptor, &::getpeername);
        return peer && peer->port == remotePort && peer->address == remoteAddress;
      },
      SHUT_RDWR);
}

void stopReading(int localPort) {
  shutDownWhere(
      [&](int descriptor) {
        const auto own = endOf(descriptor, &::getsockname);
        return own && own->port == localPort && endOf(descriptor, &::getpeername);
      },
      SHUT_RD);
}

}  // namespace zovk::service
