#include "helper/window/SwayKeyboard.h"

#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace zovk::helper {
namespace {

constexpr const char* kSocketVariable = "SWAYSOCK";

/// Returns a message for its socket: a sign, then length and kind as the machine writes numbers,
/// then the text.
std::string messageOf(const std::string& command) {
  constexpr std::uint32_t kRunCommand = 0;
  const auto length = static_cast<std::uint32_t>(command.size());
  std::string message = "i3-ipc";
  message.append(reinterpret_cast<const char*>(&length), sizeof length);
  message.append(reinterpret_cast<const char*>(&kRunCommand), sizeof kRunCommand);
  return message + command;
}

/// Stays open: what is left unread by a connection that ends is not carried out.
class Connection {
 public:
  explicit Connection(const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof address.sun_path) return;
    std::memcpy(address.sun_path, path.data(), path.size());
    socket_ = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    static_cast<void>(
        ::connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address));
  }
  ~Connection() { ::close(socket_); }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  /// The answer is not read: the keyboard comes, or it does not.
  void send(const std::string& message) const {
    std::array<char, 4096> answers{};
    while (::recv(socket_, answers.data(), answers.size(), 0) > 0) {
    }
    static_cast<void>(::send(socket_, message.data(), message.size(), MSG_NOSIGNAL));
  }

 private:
  int socket_ = -1;
};

}  // namespace

bool isSwayRunning() {
  return std::getenv(kSocketVariable) != nullptr;
}

void askSwayForKeyboard() {
  const char* const path = std::getenv(kSocketVariable);
  if (path == nullptr) return;
  static const Connection connection(path);
  // The game may have been sent to another work space. It has the keyboard when this is asked, so
  // its work space is the current one.
  connection.send(messageOf("[pid=" + std::to_string(::getpid()) +
                            "] move container to workspace current, focus"));
}

}  // namespace zovk::helper
