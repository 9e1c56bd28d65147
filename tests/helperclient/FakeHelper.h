#pragma once

#include <array>
#include <cerrno>
#include <cstring>
#include <deque>
#include <stdexcept>
#include <string>
#include <vector>

#include <boost/json.hpp>
#include <sys/socket.h>

#include "platform/linux/helper/HelperLauncher.h"
#include "protocol/FrameCodec.h"
#include "support/UniqueFd.h"

namespace zovk {

/// The helper's end of the socket, played by a test. Neither side waits for the other.
class FakeHelper {
 public:
  explicit FakeHelper(UniqueFd socket) : socket_(std::move(socket)) {}

  /// Returns the commands since the last call, as JSON.
  std::vector<std::string> commands() {
    std::vector<std::string> texts;
    for (const HelperMessage& message : messages()) {
      texts.push_back(boost::json::serialize(message));
    }
    return texts;
  }
  /// Returns the same, of one type only.
  std::vector<HelperMessage> messages(const std::string& type = {}) {
    std::array<char, 65536> bytes{};
    ssize_t length = 0;
    while ((length = read(bytes)) > 0) {
      decoder_.feed({bytes.data(), static_cast<std::size_t>(length)});
    }
    // A game that ends with something unread resets the connection.
    sawEnd_ = sawEnd_ || length == 0 || errno == ECONNRESET;
    std::vector<HelperMessage> found;
    while (const auto message = decoder_.next()) {
      if (type.empty() || message->at("type").as_string() == type) found.push_back(*message);
    }
    return found;
  }
  /// Returns the files that came with the bytes read so far, oldest first.
  std::deque<UniqueFd>& files() { return files_; }
  void send(const std::string& json) {
    sendBytes(*encodeFrame(boost::json::parse(json).as_object()));
  }
  void sendBytes(const std::string& bytes) {
    const ssize_t sent = ::send(socket_.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (sent != static_cast<ssize_t>(bytes.size())) throw std::runtime_error("the game hung up");
  }
  void becomeReady() {
    send(R"({"type":"ready","version":1,"screen":[0,0,1280,800],"schemes":["http","mailto"]})");
  }
  void die() { socket_.reset(); }
  bool sawEnd() {
    messages();
    return sawEnd_;
  }

 private:
  ssize_t read(std::array<char, 65536>& bytes) {
    iovec part{bytes.data(), bytes.size()};
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(int))> control{};
    msghdr message{};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    message.msg_control = control.data();
    message.msg_controllen = control.size();
    const ssize_t length = ::recvmsg(socket_.get(), &message, MSG_DONTWAIT | MSG_CMSG_CLOEXEC);
    const cmsghdr* const given = length > 0 ? CMSG_FIRSTHDR(&message) : nullptr;
    if (given != nullptr && given->cmsg_type == SCM_RIGHTS) {
      int file = -1;
      std::memcpy(&file, CMSG_DATA(given), sizeof file);
      files_.emplace_back(file);
    }
    return length;
  }

  UniqueFd socket_;
  std::deque<UniqueFd> files_;
  FrameDecoder decoder_;
  bool sawEnd_ = false;
};

/// Starts fakes instead of processes.
class FakeHelpers {
 public:
  HelperLauncher launcher() {
    HelperLauncher launcher;
    launcher.start = [this] { return start(); };
    return launcher;
  }
  FakeHelper& first() { return hosts_.front(); }
  FakeHelper& last() { return hosts_.back(); }
  std::size_t count() const { return hosts_.size(); }
  /// From now on no helper can be started.
  void refuse(std::string error) { refusal_ = std::move(error); }
  void accept() { refusal_.clear(); }

 private:
  HelperLauncher::Started start() {
    if (!refusal_.empty()) return {{}, std::nullopt, refusal_};
    std::array<int, 2> ends{};
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) {
      return {{}, std::nullopt, "no socket"};
    }
    hosts_.emplace_back(UniqueFd(ends[1]));
    return {UniqueFd(ends[0]), std::nullopt, {}};
  }

  std::deque<FakeHelper> hosts_;
  std::string refusal_;
};

}  // namespace zovk
