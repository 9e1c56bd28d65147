#include "helper/window/SwayKeyboard.h"

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <utility>

#include <boost/json.hpp>
#include <glib-unix.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace zovk::helper {
namespace {

constexpr const char* kSocketVariable = "SWAYSOCK";
constexpr std::string_view kSign = "i3-ipc";
constexpr std::uint32_t kRunCommand = 0;
constexpr std::uint32_t kSubscribe = 2;
constexpr std::uint32_t kWindowEvent = 0x80000003;
constexpr std::size_t kLongestMessage = std::size_t{1} << 20;

/// What stands before a message's text, after the sign: numbers as the machine writes them.
struct Header {
  std::uint32_t length;
  std::uint32_t kind;
};
constexpr std::size_t kHeaderSize = kSign.size() + sizeof(Header);

Header headerOf(const std::string& message) {
  Header header{};
  std::memcpy(&header, message.data() + kSign.size(), sizeof header);
  return header;
}

/// Returns whether an event says that a window of this process is on the screen now.
bool saysThatOwnCameUp(std::string_view text) {
  boost::json::error_code error;
  const boost::json::value event = boost::json::parse(text, error);
  const boost::json::value* change =
      event.is_object() ? event.as_object().if_contains("change") : nullptr;
  const boost::json::value* process = event.find_pointer("/container/pid", error);
  return change != nullptr && *change == "new" && process != nullptr && *process == ::getpid();
}

}  // namespace

bool isSwayRunning() {
  return std::getenv(kSocketVariable) != nullptr;
}

SwayKeyboard::SwayKeyboard(std::function<void()> cameUp) : cameUp_(std::move(cameUp)) {}

SwayKeyboard::~SwayKeyboard() {
  if (socket_ >= 0) ::close(socket_);
}

void SwayKeyboard::connect() {
  const char* const path = std::getenv(kSocketVariable);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path == nullptr || std::strlen(path) >= sizeof address.sun_path) return;
  std::memcpy(address.sun_path, path, std::strlen(path));
  socket_ = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
  static_cast<void>(
      ::connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address));
  watch_ = SourceGuard(g_unix_fd_add(socket_, G_IO_IN, onReadable, this));
  send(kSubscribe, R"(["window"])");
}

void SwayKeyboard::ask() {
  if (socket_ < 0) connect();
  // The game may have been sent to another work space. It has the keyboard when this is asked, so
  // its work space is the current one.
  send(kRunCommand,
       "[pid=" + std::to_string(::getpid()) + "] move container to workspace current, focus");
}

void SwayKeyboard::send(unsigned kind, const std::string& text) const {
  const Header header{static_cast<std::uint32_t>(text.size()), kind};
  std::string message(kSign);
  message.append(reinterpret_cast<const char*>(&header), sizeof header);
  message += text;
  static_cast<void>(::send(socket_, message.data(), message.size(), MSG_NOSIGNAL));
}

int SwayKeyboard::onReadable(int, GIOCondition, gpointer self) {
  auto* own = static_cast<SwayKeyboard*>(self);
  if (own->read()) return G_SOURCE_CONTINUE;
  own->watch_.forget();
  return G_SOURCE_REMOVE;
}

bool SwayKeyboard::read() {
  std::array<char, 4096> part{};
  const ssize_t size = ::recv(socket_, part.data(), part.size(), 0);
  if (size < 0) return errno == EAGAIN || errno == EINTR;
  unread_.append(part.data(), static_cast<std::size_t>(size));
  return size > 0 && takeMessages();
}

bool SwayKeyboard::takeMessages() {
  bool ownCameUp = false;
  while (unread_.size() >= kHeaderSize) {
    const Header header = headerOf(unread_);
    if (header.length > kLongestMessage) return false;
    if (unread_.size() < kHeaderSize + header.length) break;
    const auto text = std::string_view(unread_).substr(kHeaderSize, header.length);
    ownCameUp |= header.kind == kWindowEvent && saysThatOwnCameUp(text);
    unread_.erase(0, kHeaderSize + header.length);
  }
  if (ownCameUp) cameUp_();
  return true;
}

}  // namespace zovk::helper
