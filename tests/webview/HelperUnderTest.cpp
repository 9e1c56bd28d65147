#include "HelperUnderTest.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <utility>

#include <boost/json/serialize.hpp>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zovk {
namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::seconds kBound{20};

int millisecondsUntil(Clock::time_point deadline) {
  const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
  return static_cast<int>(std::max<std::int64_t>(0, left.count()));
}

std::string_view nameOf(std::string_view variable) {
  return variable.substr(0, variable.find('='));
}

std::vector<std::string> changedEnvironment(const std::vector<std::string>& changes) {
  std::vector<std::string> result;
  for (char** variable = environ; *variable != nullptr; ++variable) {
    const bool changed =
        std::any_of(changes.begin(), changes.end(),
                    [&](const std::string& change) { return nameOf(change) == nameOf(*variable); });
    if (!changed) result.emplace_back(*variable);
  }
  for (const std::string& change : changes) {
    if (change.find('=') != std::string::npos) result.push_back(change);
  }
  return result;
}

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  for (std::string& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

bool includes(const HelperMessage& message, const HelperMessage& members) {
  return std::all_of(members.begin(), members.end(), [&](const auto& member) {
    const boost::json::value* value = message.if_contains(member.key());
    return value != nullptr && *value == member.value();
  });
}

int statusOf(int waited) {
  return WIFSIGNALED(waited) ? -WTERMSIG(waited) : WEXITSTATUS(waited);
}

}  // namespace

ScratchDirectory::ScratchDirectory() {
  std::string pattern = (std::filesystem::temp_directory_path() / "helper-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary directory");
  path_ = pattern;
}

ScratchDirectory::~ScratchDirectory() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

pid_t spawnHelper(int socket, const std::vector<std::string>& environment) {
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, socket, kHelperDescriptor);
  std::vector<std::string> arguments{HELPER_PROGRAM};
  std::vector<std::string> variables = changedEnvironment(environment);
  pid_t pid = -1;
  const int error = posix_spawn(&pid, HELPER_PROGRAM, &actions, nullptr,
                                pointersTo(arguments).data(), pointersTo(variables).data());
  posix_spawn_file_actions_destroy(&actions);
  if (error != 0) throw std::runtime_error("the helper cannot be started");
  return pid;
}

int runProgram(const std::vector<std::string>& arguments) {
  std::vector<std::string> texts = arguments;
  pid_t pid = -1;
  if (posix_spawnp(&pid, texts[0].c_str(), nullptr, nullptr, pointersTo(texts).data(), environ) !=
      0) {
    throw std::runtime_error("cannot run " + texts[0]);
  }
  int status = 0;
  waitpid(pid, &status, 0);
  return statusOf(status);
}

bool endsSoon(pid_t pid) {
  const int process = static_cast<int>(syscall(SYS_pidfd_open, pid, 0));
  if (process < 0) return true;
  pollfd waiting{process, POLLIN, 0};
  const int ready = poll(&waiting, 1, millisecondsUntil(Clock::now() + kBound));
  close(process);
  return ready == 1;
}

HelperUnderTest::HelperUnderTest(Start start, const std::vector<std::string>& environment) {
  spawn(environment);
  if (start == Start::kSilent) return;
  send(greeting());
  ready_ = await("ready");
}

HelperUnderTest::~HelperUnderTest() {
  closeSocket();
  if (pid_ < 0) return;
  if (!endsSoon(pid_)) kill(pid_, SIGKILL);
  waitpid(pid_, nullptr, 0);
}

HelperMessage HelperUnderTest::greeting() const {
  return {{"type", "hello"},
          {"version", kHelperProtocolVersion},
          {"application", "org.example.helper-test"},
          {"dataDirectory", directory().string()},
          {"nativeWindow", 0},
          {"developerTools", false},
          {"pageMemory", 1024},
          {"drawing", ""},
          {"drawingFailed", false}};
}

void HelperUnderTest::spawn(const std::vector<std::string>& environment) {
  std::array<int, 2> ends{};
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) {
    throw std::runtime_error("no socket pair");
  }
  socket_ = ends[0];
  pid_ = spawnHelper(ends[1], environment);
  close(ends[1]);
}

void HelperUnderTest::send(const HelperMessage& message) {
  sendBytes(encodeFrame(message).value());
}

void HelperUnderTest::sendWithFiles(const HelperMessage& message, const std::vector<int>& files) {
  std::string frame = encodeFrame(message).value();
  const std::size_t length = files.size() * sizeof(int);
  std::vector<char> control(CMSG_SPACE(length));
  iovec part{frame.data(), frame.size()};
  msghdr sent{};
  sent.msg_iov = &part;
  sent.msg_iovlen = 1;
  sent.msg_control = control.data();
  sent.msg_controllen = control.size();
  cmsghdr* const header = CMSG_FIRSTHDR(&sent);
  header->cmsg_level = SOL_SOCKET;
  header->cmsg_type = SCM_RIGHTS;
  header->cmsg_len = CMSG_LEN(length);
  std::memcpy(CMSG_DATA(header), files.data(), length);
  if (sendmsg(socket_, &sent, MSG_NOSIGNAL) != static_cast<ssize_t>(frame.size())) {
    throw std::runtime_error("the helper takes nothing more");
  }
}

void HelperUnderTest::sendBytes(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (count <= 0) throw std::runtime_error("the helper takes nothing more");
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
}

void HelperUnderTest::receive(int milliseconds, std::string_view awaited) {
  pollfd waiting{socket_, POLLIN, 0};
  if (poll(&waiting, 1, milliseconds) <= 0) {
    std::string seen;
    for (const HelperMessage& event : events_) seen += "\n  " + boost::json::serialize(event);
    throw std::runtime_error("waited in vain for " + std::string(awaited) + "; came:" + seen);
  }
  std::array<char, 65536> bytes;
  const ssize_t count = recv(socket_, bytes.data(), bytes.size(), 0);
  if (count <= 0) throw std::runtime_error("the helper ended before " + std::string(awaited));
  decoder_.feed({bytes.data(), static_cast<std::size_t>(count)});
  while (auto event = decoder_.next()) events_.push_back(std::move(*event));
  if (decoder_.failed()) throw std::runtime_error("the helper sent nonsense: " + decoder_.error());
}

bool HelperUnderTest::take(std::string_view type, const HelperMessage& members,
                           HelperMessage& result) {
  const auto found = std::find_if(events_.begin(), events_.end(), [&](const HelperMessage& event) {
    return event.at("type").as_string() == type && includes(event, members);
  });
  if (found == events_.end()) return false;
  result = std::move(*found);
  events_.erase(found);
  return true;
}

HelperMessage HelperUnderTest::await(std::string_view type, const HelperMessage& members) {
  const Clock::time_point deadline = Clock::now() + kBound;
  HelperMessage result;
  const std::string awaited = std::string(type) + " " + boost::json::serialize(members);
  while (!take(type, members, result)) receive(millisecondsUntil(deadline), awaited);
  return result;
}

bool HelperUnderTest::came(std::string_view type, const HelperMessage& members) {
  sync(0x7FFFFFFF);  // no such window: answered at once, after all that was sent before
  HelperMessage ignored;
  return take(type, members, ignored);
}

void HelperUnderTest::sync(int window) {
  send({{"type", "sync"}, {"id", ++lastSync_}, {"window", window}});
  await("synced", {{"id", lastSync_}});
}

void HelperUnderTest::closeSocket() {
  if (socket_ >= 0) close(std::exchange(socket_, -1));
}

int HelperUnderTest::awaitEnd() {
  if (!endsSoon(pid_)) throw std::runtime_error("the helper does not end");
  int status = 0;
  waitpid(std::exchange(pid_, -1), &status, 0);
  return statusOf(status);
}

}  // namespace zovk
