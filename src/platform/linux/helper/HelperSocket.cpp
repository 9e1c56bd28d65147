#include "platform/linux/helper/HelperSocket.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <utility>

#include <sys/socket.h>

namespace zovk {
namespace {

// Bytes that are read at once are parsed at once, within the game's frame: some tens of
// microseconds.
constexpr std::size_t kReadLength = 16384;

}  // namespace

HelperSocket::HelperSocket(UniqueFd socket, std::size_t maximumPendingBytes)
    : socket_(std::move(socket)), maximumPendingBytes_(maximumPendingBytes) {}

bool HelperSocket::send(const HelperMessage& message, UniqueFd file) {
  const std::optional<std::string> frame = encodeFrame(message);
  if (!frame) return false;
  if (file) files_.push_back({written_ + pending_.size() - sent_, std::move(file)});
  const std::size_t written = isPending() ? 0 : write(frame->data(), frame->size());
  keep(std::string_view(*frame).substr(written));
  return true;
}

void HelperSocket::flush() {
  sent_ += write(pending_.data() + sent_, pending_.size() - sent_);
  if (isPending()) return;
  pending_ = {};
  sent_ = 0;
}

HelperSocket::Filled HelperSocket::fill() {
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

std::size_t HelperSocket::write(const char* bytes, std::size_t length) {
  const bool hasFile = !files_.empty() && files_.front().position == written_;
  const std::size_t next = hasFile ? 1 : 0;
  // No further than to the byte that another file goes with.
  if (files_.size() > next) {
    length =
        static_cast<std::size_t>(std::min<std::uint64_t>(length, files_[next].position - written_));
  }
  const ssize_t count = writeOnce(bytes, length, hasFile ? files_.front().file.get() : -1);
  // A closed socket is noticed where it is read, after what the helper said last.
  if (count <= 0) return 0;
  if (hasFile) files_.pop_front();
  written_ += static_cast<std::uint64_t>(count);
  return static_cast<std::size_t>(count);
}

ssize_t HelperSocket::writeOnce(const char* bytes, std::size_t length, int file) const {
  iovec part{const_cast<char*>(bytes), length};
  alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof file)> control{};
  msghdr message{};
  message.msg_iov = &part;
  message.msg_iovlen = 1;
  if (file >= 0) {
    message.msg_control = control.data();
    message.msg_controllen = control.size();
    cmsghdr* const header = CMSG_FIRSTHDR(&message);
    header->cmsg_level = SOL_SOCKET;
    header->cmsg_type = SCM_RIGHTS;
    header->cmsg_len = CMSG_LEN(sizeof file);
    std::memcpy(CMSG_DATA(header), &file, sizeof file);
  }
  ssize_t count = 0;
  do {
    count = ::sendmsg(socket_.get(), &message, MSG_DONTWAIT | MSG_NOSIGNAL);
  } while (count < 0 && errno == EINTR);
  return count;
}

void HelperSocket::keep(std::string_view bytes) {
  if (bytes.empty() || !error_.empty()) return;
  if (sent_ >= pending_.size() / 2) pending_.erase(0, std::exchange(sent_, 0));
  pending_ += bytes;
  if (pending_.size() - sent_ <= maximumPendingBytes_) return;
  error_ = "too many commands wait";
  pending_ = {};
  files_.clear();
  sent_ = 0;
  ::shutdown(socket_.get(), SHUT_RDWR);
}

}  // namespace zovk
