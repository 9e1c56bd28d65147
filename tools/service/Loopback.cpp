#include "service/Loopback.h"

#include <arpa/inet.h>
#include <netinet/in.h>

namespace zovk::service {
namespace {

constexpr in_addr_t kLoopbackNetwork = 127;

bool isLoopbackV4(in_addr address) {
  return ntohl(address.s_addr) >> 24U == kLoopbackNetwork;
}

bool isLoopbackV6(const in6_addr& address) {
  if (IN6_IS_ADDR_LOOPBACK(&address)) return true;
  return IN6_IS_ADDR_V4MAPPED(&address) && address.s6_addr[12] == kLoopbackNetwork;
}

}  // namespace

bool isLoopback(const std::string& address) {
  if (address == "localhost") return true;
  in_addr v4{};
  if (::inet_pton(AF_INET, address.c_str(), &v4) == 1) return isLoopbackV4(v4);
  in6_addr v6{};
  return ::inet_pton(AF_INET6, address.c_str(), &v6) == 1 && isLoopbackV6(v6);
}

bool isNumericAddress(const std::string& address) {
  in6_addr room{};
  return ::inet_pton(AF_INET, address.c_str(), &room) == 1 ||
         ::inet_pton(AF_INET6, address.c_str(), &room) == 1;
}

std::string baseAddress(bool tls, const std::string& address, int port) {
  const bool isV6 = address.find(':') != std::string::npos;
  const std::string host = isV6 ? "[" + address + "]" : address;
  return (tls ? "https://" : "http://") + host + ":" + std::to_string(port);
}

}  // namespace zovk::service
