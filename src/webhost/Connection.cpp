#include "webhost/Connection.h"

#include <array>
#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <glib-unix.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace zovk {
namespace {

/// Two of the longest frames; a game that leaves more than that unread is not listening.
constexpr std::size_t kMaximumOutput = 2 * std::size_t{kMaximumFrameLength};
constexpr int kDrainMilliseconds = 500;

bool wouldBlock() {
  return errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR;
}

}  // namespace

Connection::Connection(int descriptor, std::function<void(const WebHostMessage&)> receiver,
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

void Connection::send(const WebHostMessage& message) {
  if (over_) return;
  const std::optional<std::string> frame = encodeFrame(message);
  if (!frame) return send({{"type", "log"}, {"line", "web host: an event was too long"}});
  output_ += *frame;
  if (!writing_.active()) writeSome();
  if (output_.size() - written_ > kMaximumOutput) end();
}

void Connection::pause() {
  paused_ = true;
  reading_ = {};
  resuming_ = {};
}

void Connection::resume() {
  paused_ = false;
  reading_ = SourceGuard(g_unix_fd_add(descriptor_, G_IO_IN, onReadable, this));
  resuming_ = SourceGuard(g_idle_add_full(G_PRIORITY_DEFAULT, onResumed, this, nullptr));
}

void Connection::drain() {
  const gint64 deadline = g_get_monotonic_time() + kDrainMilliseconds * 1000;
  while (written_ < output_.size() && g_get_monotonic_time() < deadline) {
    pollfd waiting{descriptor_, POLLOUT, 0};
    poll(&waiting, 1, kDrainMilliseconds);
    const ssize_t sent = ::send(descriptor_, output_.data() + written_, output_.size() - written_,
                                MSG_NOSIGNAL | MSG_DONTWAIT);
    if (sent < 0 && !wouldBlock()) return;
    if (sent > 0) written_ += static_cast<std::size_t>(sent);
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
  std::array<char, 65536> bytes;
  const ssize_t count = recv(descriptor_, bytes.data(), bytes.size(), MSG_DONTWAIT);
  if (count < 0 && wouldBlock()) return;
  if (count <= 0) return end();
  decoder_.feed({bytes.data(), static_cast<std::size_t>(count)});
  deliver();
}

void Connection::deliver() {
  while (!paused_ && !over_) {
    const std::optional<WebHostMessage> message = decoder_.next();
    if (!message) break;
    receiver_(*message);
  }
  if (decoder_.failed()) endWith("web host: " + decoder_.error());
}

void Connection::writeSome() {
  const ssize_t count = ::send(descriptor_, output_.data() + written_, output_.size() - written_,
                               MSG_NOSIGNAL | MSG_DONTWAIT);
  if (count < 0 && !wouldBlock()) return end();
  if (count > 0) written_ += static_cast<std::size_t>(count);
  if (written_ == output_.size()) {
    output_.clear();
    written_ = 0;
    writing_ = {};
  } else if (!writing_.active()) {
    output_.erase(0, std::exchange(written_, 0));
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
  send({{"type", "log"}, {"line", line}});
  end();
}

}  // namespace zovk
