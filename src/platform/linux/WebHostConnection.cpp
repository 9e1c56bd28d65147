#include "platform/linux/WebHostConnection.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>

#include <sys/socket.h>

namespace zovk {
namespace {

// What is read in one go is parsed in one go, within the game's frame: some tens of microseconds.
constexpr std::size_t kReadLength = 16384;

}  // namespace

WebHostConnection::WebHostConnection(UniqueFd socket, std::size_t maximumPendingBytes)
    : socket_(std::move(socket)), maximumPendingBytes_(maximumPendingBytes) {}

bool WebHostConnection::send(const WebHostMessage& message) {
  const std::optional<std::string> frame = encodeFrame(message);
  if (!frame) return false;
  const std::size_t written = isPending() ? 0 : write(frame->data(), frame->size());
  keep(std::string_view(*frame).substr(written));
  return true;
}

void WebHostConnection::flush() {
  sent_ += write(pending_.data() + sent_, pending_.size() - sent_);
  if (isPending()) return;
  pending_ = {};
  sent_ = 0;
}

WebHostConnection::Filled WebHostConnection::fill() {
  std::array<char, kReadLength> bytes{};
  ssize_t length = 0;
  do {
    length = ::recv(socket_.get(), bytes.data(), std::min(bytes.size(), decoder_.missing()),
                    MSG_DONTWAIT);
  } while (length < 0 && errno == EINTR);
  if (length > 0) {
    decoder_.feed({bytes.data(), static_cast<std::size_t>(length)});
    return Filled::kSomething;
  }
  const bool empty = length < 0 && (errno == EAGAIN || errno == EWOULDBLOCK);
  return empty ? Filled::kNothing : Filled::kEnd;
}

std::size_t WebHostConnection::write(const char* bytes, std::size_t length) {
  ssize_t written = 0;
  do {
    written = ::send(socket_.get(), bytes, length, MSG_DONTWAIT | MSG_NOSIGNAL);
  } while (written < 0 && errno == EINTR);
  // A closed socket is noticed where it is read, after what the helper said last.
  return written < 0 ? 0 : static_cast<std::size_t>(written);
}

void WebHostConnection::keep(std::string_view bytes) {
  if (bytes.empty() || !error_.empty()) return;
  if (sent_ >= pending_.size() / 2) pending_.erase(0, std::exchange(sent_, 0));
  pending_ += bytes;
  if (pending_.size() - sent_ <= maximumPendingBytes_) return;
  error_ = "too many commands wait";
  pending_ = {};
  sent_ = 0;
  ::shutdown(socket_.get(), SHUT_RDWR);
}

}  // namespace zovk
