#include "zovkpopup/WatchedPreview.h"

#include <array>
#include <cstdio>

#include <fmt/format.h>
#include <poll.h>
#include <sys/epoll.h>
#include <termios.h>
#include <unistd.h>

#include "zovkpopup/FileWatch.h"
#include "zovkpopup/Preview.h"
#include "zovkpopup/PreviewAnswerText.h"
#include "zovkpopup/PreviewLook.h"
#include "zovkpopup/TextFile.h"
#include "zovkpopup/ToolError.h"

namespace zovk::tool {
namespace {

/// Standard input gives single keys while this lives, where it is a terminal.
class SingleKeys {
 public:
  SingleKeys() : isTerminal_(::tcgetattr(STDIN_FILENO, &before_) == 0) {
    if (!isTerminal_) return;
    termios single = before_;
    single.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
    ::tcsetattr(STDIN_FILENO, TCSANOW, &single);
  }
  ~SingleKeys() {
    if (isTerminal_) ::tcsetattr(STDIN_FILENO, TCSANOW, &before_);
  }
  SingleKeys(const SingleKeys&) = delete;
  SingleKeys& operator=(const SingleKeys&) = delete;

 private:
  termios before_{};
  const bool isTerminal_;
};

template <std::size_t count>
std::string next(const std::array<const char*, count>& all, const std::string& now) {
  for (std::size_t i = 0; i < count; ++i) {
    if (now == all[i]) return all[(i + 1) % count];
  }
  return all[0];
}

class Watcher {
 public:
  Watcher(PreviewOptions options, const StopSignals& signals)
      : options_(std::move(options)), signals_(signals), file_(options_.target) {
    for (const int source : {file_.descriptor(), signals_.descriptor(), STDIN_FILENO}) add(source);
  }

  void run() {
    while (!isOver_) {
      try {
        show();
      } catch (const ToolError& error) {
        std::fprintf(stderr, "zovkpopup: %s\n", error.what());
        if (!hasShown_) throw;
      }
      // After an answer, or with something that cannot be shown.
      while (!isOver_ && !isDue_) await();
    }
  }

 private:
  void show() {
    isDue_ = false;
    setLook(options_);
    std::fputs(std::exchange(turn_, {}).c_str(), stderr);
    const PreviewBundle bundle(options_);
    Preview preview(bundle, sizeOf(options_.size), signals_);
    hasShown_ = true;
    while (!preview.isStopped() && !preview.answer() && !isDue_ && !isOver_) {
      preview.run(events_.get());
      readKeys();
      if (file_.changed() || wantsReload_) reload(bundle, preview);
    }
    isOver_ = isOver_ || preview.isStopped();
    if (!preview.answer()) return;
    printAnswer(*preview.answer());
    preview.say(options_.target + ": save it to see it again");
  }

  // Also without a popup, for the file, keys and signals.
  void await() {
    std::array<pollfd, 2> ready{{{events_.get(), POLLIN, 0}, {signals_.descriptor(), POLLIN, 0}}};
    ::poll(ready.data(), ready.size(), -1);
    readKeys();
    isDue_ = isDue_ || wantsReload_ || file_.changed();
    wantsReload_ = false;
    isOver_ = isOver_ || ready[1].revents != 0;
  }

  void reload(const PreviewBundle& bundle, Preview& preview) {
    wantsReload_ = false;
    try {
      bundle.update();
      preview.reload();
      preview.say(options_.target + ": loaded again");
    } catch (const ToolError& error) {
      preview.say(std::string("zovkpopup: ") + error.what());
    }
  }

  void readKeys() {
    pollfd input{STDIN_FILENO, POLLIN, 0};
    while (hasInput_ && ::poll(&input, 1, 0) > 0) {
      char key = 0;
      if (::read(STDIN_FILENO, &key, 1) == 1) {
        press(key);
      } else {
        hasInput_ = false;
        ::epoll_ctl(events_.get(), EPOLL_CTL_DEL, STDIN_FILENO, nullptr);
      }
    }
  }

  void press(char key) {
    if (key == 'q') isOver_ = true;
    if (key == 'r') wantsReload_ = true;
    if (key == 't') turnTo(options_.theme, next(kThemes, options_.theme), "theme");
    if (key == 's') turnTo(options_.size, next(kSizes, options_.size), "size");
    if (key == 'k') turnTo(options_.kind, next(kKinds, options_.kind), "kind");
  }

  void turnTo(std::string& what, const std::string& value, const char* name) {
    what = value;
    turn_ = fmt::format("{}: {}\n", name, value.empty() ? "the whole screen" : value);
    isDue_ = true;
  }

  // Regular files are always ready, and cannot be waited for.
  void add(int source) {
    epoll_event event{EPOLLIN, {}};
    const bool added = ::epoll_ctl(events_.get(), EPOLL_CTL_ADD, source, &event) == 0;
    if (source == STDIN_FILENO) hasInput_ = added;
  }

  static constexpr std::array kThemes = {"light", "dark", "high-contrast"};
  static constexpr std::array kSizes = {"", "360x640", "640x360", "768x1024", "1280x720"};
  static constexpr std::array kKinds = {"ordinary", "game", "policy", "permission"};

  PreviewOptions options_;
  const StopSignals& signals_;
  FileWatch file_;
  const SingleKeys keys_;
  UniqueFd events_{::epoll_create1(EPOLL_CLOEXEC)};
  std::string turn_;  ///< The last one, to be said.
  bool hasInput_ = false;
  bool hasShown_ = false;
  bool isDue_ = false;
  bool isOver_ = false;
  bool wantsReload_ = false;
};

}  // namespace

int watchPreview(PreviewOptions options, const StopSignals& signals) {
  if (isAddress(options.target)) throw ToolError("--watch needs a page file, no address");
  if (options.kind.empty()) options.kind = "ordinary";
  Watcher(std::move(options), signals).run();
  return kSuccess;
}

}  // namespace zovk::tool
