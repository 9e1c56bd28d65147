#include "platform/linux/helper/HelperLife.h"

#include <cerrno>
#include <system_error>
#include <utility>

#include <sys/epoll.h>
#include <sys/socket.h>

#include "platform/linux/system/TimerDescriptor.h"

namespace zovk {
namespace {

// How long a process that was killed is waited for where nothing else would take it in.
constexpr std::chrono::milliseconds kKilledPatience{500};

UniqueFd opened(int descriptor, const char* what) {
  if (descriptor < 0) throw std::system_error(errno, std::generic_category(), what);
  return UniqueFd(descriptor);
}

UniqueFd writabilityOf(int socket) {
  UniqueFd writable = opened(::epoll_create1(EPOLL_CLOEXEC), "epoll_create1");
  epoll_event event{};
  event.events = EPOLLOUT;
  ::epoll_ctl(writable.get(), EPOLL_CTL_ADD, socket, &event);
  return writable;
}

}  // namespace

std::shared_ptr<HelperLife> HelperLife::open(const Surroundings& surroundings,
                                             HelperLauncher::Started started, Events events) {
  auto link = std::make_shared<HelperLife>(surroundings, std::move(started), std::move(events));
  try {
    link->timeout_ = openTimer();
    link->watch();
  } catch (const std::system_error&) {
    link->close();
    if (auto process = link->takeProcess()) {
      process->kill();
      process->reapUntil(std::chrono::steady_clock::now() + kKilledPatience);
    }
    throw;
  }
  return link;
}

HelperLife::HelperLife(const Surroundings& surroundings, HelperLauncher::Started started,
                       Events events)
    : queue_(surroundings.queue),
      frames_(surroundings.frames),
      connection_(std::move(started.socket), surroundings.launcher.maximumPendingBytes),
      process_(std::move(started.process)),
      events_(std::move(events)) {}

HelperLife::~HelperLife() = default;

void HelperLife::watch() {
  const std::weak_ptr<HelperLife> weak = weak_from_this();
  queue_.addSource(connection_.descriptor(), [weak] {
    if (const auto link = weak.lock()) link->read();
  });
  if (process_) {
    queue_.addSource(process_->descriptor(), [weak] {
      if (const auto link = weak.lock()) link->processEnded();
    });
  }
  if (!timeout_) return;
  queue_.addSource(timeout_.get(), [weak] {
    if (const auto link = weak.lock()) link->timedOut();
  });
}

void HelperLife::unwatch() {
  queue_.removeSource(connection_.descriptor());
  if (process_) queue_.removeSource(process_->descriptor());
  if (timeout_) queue_.removeSource(timeout_.get());
}

bool HelperLife::send(const HelperMessage& message, UniqueFd file) {
  if (closed_) return true;
  if (!connection_.send(message, std::move(file))) return false;
  if (connection_.isPending() && !writable_) awaitWritable();
  return true;
}

// Commands come from wherever the game is; without a descriptor left it is the pump that fails.
void HelperLife::awaitWritable() {
  try {
    writable_ = writabilityOf(connection_.descriptor());
    queue_.addSource(writable_.get(), [this] { flush(); });
  } catch (const std::system_error& exhausted) {
    writable_.reset();
    error_ = exhausted.what();
    ::shutdown(connection_.descriptor(), SHUT_RDWR);
  }
}

void HelperLife::flush() {
  connection_.flush();
  if (connection_.isPending()) return;
  queue_.removeSource(writable_.get());
  writable_.reset();
}

void HelperLife::expectReady(std::chrono::milliseconds timeout) {
  if (timeout_) setTimer(timeout_, timeout);
}

void HelperLife::stopTimeout() {
  if (!timeout_) return;
  queue_.removeSource(timeout_.get());
  timeout_.reset();
}

bool HelperLife::read() {
  using Filled = HelperSocket::Filled;
  Filled filled = Filled::kSomething;
  std::optional<HelperMessage> message;
  std::optional<MappedBytes> longOne;
  // A length and what follows it, or two pieces of a long content.
  for (int part = 0; part < 2 && filled == Filled::kSomething && !message && !longOne; ++part) {
    filled = connection_.fill();
    message = connection_.next();
    if (connection_.failed()) break;
    longOne = connection_.takeLong();
  }
  if (longOne) parse(std::move(*longOne));
  if (message) events_.message(std::move(*message));
  if (connection_.failed() || filled == Filled::kEnd) {
    lose(error_.empty() ? connection_.error() : error_);
  }
  return filled == Filled::kSomething && !closed_;
}

void HelperLife::parse(MappedBytes text) {
  unwatch();
  try {
    frames_.parse(std::move(text), [weak = weak_from_this()](FrameThread::Parsed result) {
      if (const auto link = weak.lock()) link->parsed(std::move(result));
    });
  } catch (const std::system_error& exhausted) {
    lose(exhausted.what());
  }
}

void HelperLife::parsed(FrameThread::Parsed result) {
  if (closed_) return;
  if (!result.message) return lose(result.error);
  events_.message(std::move(*result.message));
  if (closed_) return;
  try {
    watch();
  } catch (const std::system_error& exhausted) {
    lose(exhausted.what());
  }
}

// The last messages of the process come first, a part in each turn of the pump. This is called
// until all were read.
void HelperLife::processEnded() {
  if (!read()) lose({});
}

// It may be the game that did not look.
void HelperLife::timedOut() {
  if (!read() && timeout_) lose("it did not become ready in time");
}

void HelperLife::lose(const std::string& reason) {
  if (closed_) return;
  const auto lost = events_.lost;
  const std::string said = reason.empty() ? endOfProcess() : reason;
  close();
  lost(said);
}

std::string HelperLife::endOfProcess() {
  const auto end = process_ ? process_->reap() : std::nullopt;
  if (!end) return "it closed its connection";
  queue_.removeSource(process_->descriptor());
  process_.reset();
  return "it " + *end;
}

void HelperLife::close() {
  if (std::exchange(closed_, true)) return;
  unwatch();
  timeout_.reset();
  if (writable_) queue_.removeSource(writable_.get());
  ::shutdown(connection_.descriptor(), SHUT_RDWR);
}

std::optional<HelperProcess> HelperLife::takeProcess() {
  return std::exchange(process_, std::nullopt);
}

}  // namespace zovk
