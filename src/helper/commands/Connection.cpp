#include "helper/commands/Connection.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <optional>
#include <string_view>
#include <utility>

#include <fcntl.h>
#include <glib-unix.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include "protocol/MessageNames.h"

namespace zovk::helper {
namespace {

/// A game that leaves so much unread is late; pages that flood it are not to make it later.
constexpr std::size_t kHighWater = std::size_t{4} * 1024 * 1024;
/// Two of the longest frames; a game that leaves more than that unread is not listening.
constexpr std::size_t kMaximumOutput = 2 * std::size_t{kMaximumFrameLength};
constexpr int kDrainMilliseconds = 500;
/// After so many microseconds of commands, what the web engine and the display have sent is handled
/// first: a page waits for it.
constexpr gint64 kSlice = 2000;
/// Commands that wait while further ones are read.
constexpr std::size_t kMostAhead = 256;
/// Files that wait for their frame; a game sends one at a time.
constexpr std::size_t kMostFiles = 4;

bool wouldBlock() {
  return errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR;
}

using Files = std::deque<UniqueFd>;

/// Takes the files that came with the bytes read. The system has closed those that do not fit.
void takeFiles(msghdr& message, Files& files) {
  for (cmsghdr* part = CMSG_FIRSTHDR(&message); part != nullptr;
       part = CMSG_NXTHDR(&message, part)) {
    if (part->cmsg_level != SOL_SOCKET || part->cmsg_type != SCM_RIGHTS) continue;
    const std::size_t count = (part->cmsg_len - CMSG_LEN(0)) / sizeof(int);
    for (std::size_t i = 0; i < count; ++i) {
      int file = -1;
      std::memcpy(&file, CMSG_DATA(part) + i * sizeof file, sizeof file);
      UniqueFd taken(file);
      if (files.size() < kMostFiles) files.push_back(std::move(taken));
    }
  }
}

/// Events that pages can cause in any number and that games can do without. Every other event is an
/// answer, or changes what the game must know.
bool mayBeLeftOut(const HelperMessage& message) {
  const std::string_view type = message.at(member::kType).as_string();
  return type == event::kWebMessage || type == event::kWebWindow;
}

}  // namespace

Connection::Connection(int descriptor, std::function<void(const HelperMessage&)> receiver,
                       std::function<void()> ended)
    : descriptor_(descriptor), receiver_(std::move(receiver)), ended_(std::move(ended)) {
  // The web processes must not inherit the socket: the game would not see its end.
  fcntl(descriptor_, F_SETFD, FD_CLOEXEC);
  fcntl(descriptor_, F_SETFL, O_NONBLOCK);
  resume();
}

Connection::~Connection() {
  close(descriptor_);
}

void Connection::send(const HelperMessage& message) {
  if (over_) return;
  if (waiting_ > kHighWater && mayBeLeftOut(message)) {
    return sendLine(leftOut_.line("helper: the game is late, a page's message was left out"));
  }
  std::optional<std::string> frame = encodeFrame(message);
  if (!frame) return sendLine("helper: an event was too long");
  keep(std::move(*frame));
  if (!writing_.active()) writeSome();
  if (waiting_ > kMaximumOutput) end();
}

void Connection::sendLine(const std::optional<std::string>& line) {
  if (line) send({{member::kType, event::kLog}, {member::kLine, *line}});
}

void Connection::keep(std::string frame) {
  waiting_ += frame.size();
  output_.push_back(std::move(frame));
}

void Connection::pause() {
  paused_ = true;
  reading_ = {};
  resuming_ = {};
}

void Connection::resume() {
  paused_ = false;
  deliverLater();
}

void Connection::deliverLater() {
  reading_ = {};
  resuming_ = SourceGuard(g_idle_add_full(G_PRIORITY_DEFAULT, onResumed, this, nullptr));
}

void Connection::drain() {
  const gint64 deadline = g_get_monotonic_time() + kDrainMilliseconds * 1000;
  while (!output_.empty() && g_get_monotonic_time() < deadline) {
    pollfd waiting{descriptor_, POLLOUT, 0};
    poll(&waiting, 1, kDrainMilliseconds);
    if (!writeOnce() && !wouldBlock()) return;
  }
}

gboolean Connection::onReadable(int, GIOCondition, gpointer self) {
  static_cast<Connection*>(self)->readSome();
  return G_SOURCE_CONTINUE;
}

gboolean Connection::onWritable(int, GIOCondition, gpointer self) {
  static_cast<Connection*>(self)->writeSome();
  return G_SOURCE_CONTINUE;
}

gboolean Connection::onResumed(gpointer self) {
  auto* connection = static_cast<Connection*>(self);
  connection->resuming_.forget();
  connection->deliver();
  return G_SOURCE_REMOVE;
}

void Connection::readSome() {
  const ssize_t count = receiveBytes();
  if (count < 0 && wouldBlock()) return;
  if (count <= 0) return end();
  deliver();
}

// The game sends what makes a popup one by one, and the page's load comes late among it. The end of
// the socket is noticed once all commands before it are carried out.
void Connection::readMore() {
  if (!paused_ && !over_ && batch_.size() < kMostAhead) receiveBytes();
}

ssize_t Connection::receiveBytes() {
  std::array<char, 65536> bytes;
  iovec part{bytes.data(), bytes.size()};
  alignas(cmsghdr) std::array<char, CMSG_SPACE(kMostFiles * sizeof(int))> control{};
  msghdr message{};
  message.msg_iov = &part;
  message.msg_iovlen = 1;
  message.msg_control = control.data();
  message.msg_controllen = control.size();
  const ssize_t count = recvmsg(descriptor_, &message, MSG_DONTWAIT | MSG_CMSG_CLOEXEC);
  if (count <= 0) return count;
  takeFiles(message, files_);
  decoder_.feed({bytes.data(), static_cast<std::size_t>(count)});
  while (std::optional<HelperMessage> received = decoder_.next()) batch_.add(std::move(*received));
  return count;
}

UniqueFd Connection::takeFile() {
  if (files_.empty()) return {};
  UniqueFd file = std::move(files_.front());
  files_.pop_front();
  return file;
}

void Connection::deliver() {
  const gint64 end = g_get_monotonic_time() + kSlice;
  while (!batch_.empty()) {
    if (paused_ || over_) return;
    if (g_get_monotonic_time() >= end) return deliverLater();
    receiver_(batch_.take());
    readMore();
  }
  if (paused_ || over_) return;
  if (decoder_.failed()) return endWith("helper: " + decoder_.error());
  if (reading_.active()) return;
  reading_ = SourceGuard(g_unix_fd_add(descriptor_, G_IO_IN, onReadable, this));
}

bool Connection::writeOnce() {
  const std::string& frame = output_.front();
  const ssize_t count = ::send(descriptor_, frame.data() + written_, frame.size() - written_,
                               MSG_NOSIGNAL | MSG_DONTWAIT);
  if (count < 0) return false;
  written_ += static_cast<std::size_t>(count);
  waiting_ -= static_cast<std::size_t>(count);
  if (written_ < frame.size()) return true;
  output_.pop_front();
  written_ = 0;
  return true;
}

void Connection::writeSome() {
  while (!output_.empty() && writeOnce()) {
  }
  if (output_.empty()) {
    writing_ = {};
    return sendLine(leftOut_.rest());
  }
  if (!wouldBlock()) return end();
  if (!writing_.active()) {
    writing_ = SourceGuard(g_unix_fd_add(descriptor_, G_IO_OUT, onWritable, this));
  }
}

void Connection::end() {
  if (std::exchange(over_, true)) return;
  reading_ = {};
  writing_ = {};
  ended_();
}

void Connection::endWith(const std::string& line) {
  send({{member::kType, event::kLog}, {member::kLine, line}});
  end();
}

}  // namespace zovk::helper
