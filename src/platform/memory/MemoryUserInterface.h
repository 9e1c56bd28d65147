#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/memory/MemoryLayout.h"
#include "platform/memory/MemoryScheduler.h"
#include "platform/memory/MemoryWebView.h"
#include "platform/memory/MemoryWindow.h"
#include "zovkpopup/platform/GamePad.h"
#include "zovkpopup/platform/UserInterface.h"

namespace zovk {

/// A user interface without a screen. Main thread only. It does not own the objects it makes, so
/// that tests can find leaks. A test should release what it asked for here before it looks for
/// leaks. Refers to the scheduler, which must outlive it.
class MemoryUserInterface final : public UserInterface {
 public:
  explicit MemoryUserInterface(MemoryScheduler& scheduler) : scheduler_(scheduler) {}

  void prepare() override { ++preparations_; }
  Rect mainScreenBounds() const override { return bounds_; }
  std::shared_ptr<Window> makeWindow(const Rect& frame) override;
  std::shared_ptr<Layout> loadLayout(const std::string& bundlePath, const std::string& name,
                                     std::weak_ptr<LayoutOwner> owner) override;
  std::shared_ptr<WebView> makeWebView(const WebViewConfiguration& configuration) override;
  bool canOpenUrl(const std::string& url) const override;
  void openUrl(const std::string& url, std::function<void(bool opened)> completion) override;

  void setMainScreenBounds(const Rect& bounds) { bounds_ = bounds; }
  /// Sets the views of a layout. Without it every layout holds the standard outlets.
  void addLayout(const std::string& bundlePath, const std::string& name,
                 std::vector<MemoryOutlet> outlets);
  /// Makes this layout missing from every bundle.
  void missingLayout(const std::string& name) { missing_.insert(name); }
  /// Sets the schemes that some program opens; "http" and "https" at first.
  void setOpenableSchemes(std::set<std::string> schemes) { schemes_ = std::move(schemes); }
  /// Sets the decision whether an address is opened; at first addresses with openable schemes are.
  void setOpenAnswer(std::function<bool(const std::string& url)> answer);
  const std::vector<std::string>& openedUrls() const { return openedUrls_; }
  /// Returns how often `prepare` was called.
  int preparations() const { return preparations_; }

  struct PadPress {
    ZOVKPopupGamePad press;
    std::string pressName;
    std::string leaveName;
  };
  void padPressed(PadPress press) { padPresses_.push_back(std::move(press)); }
  const std::vector<PadPress>& padPresses() const { return padPresses_; }

  /// Returns the newest window that still lives; null if there is none.
  std::shared_ptr<MemoryWindow> frontWindow() const { return windows_.last(); }
  std::shared_ptr<MemoryWebView> frontWebView() const { return webViews_.last(); }
  std::shared_ptr<MemoryLayout> frontLayout() const { return layouts_.last(); }
  std::size_t liveWindows() const { return windows_.live().size(); }
  std::size_t liveWebViews() const { return webViews_.live().size(); }
  std::size_t liveLayouts() const { return layouts_.live().size(); }
  /// Returns how many windows were ever made.
  std::size_t windowsMade() const { return windows_.made; }
  std::size_t webViewsMade() const { return webViews_.made; }
  std::size_t layoutsMade() const { return layouts_.made; }

  /// Plays the game's window, or another one of the game, taking the keyboard.
  void otherWindowTakesKey() { screen_->keyWindow = 0; }
  /// Plays the game's window leaving the keyboard to the window in front, if there is one.
  void otherWindowLosesKey() {
    if (const auto window = frontWindow()) window->becomeKey();
  }
  /// Sets whether a window that asks for the keyboard gets it; yes at first.
  void grantKeyboard(bool grant) { screen_->grantsKeyboard = grant; }
  /// Plays the loss of the interface: the root controller of every window is told at once, and that
  /// of a later window when it is set.
  void failInterface(const std::string& reason);

 private:
  template <class T>
  struct Made {
    std::size_t made = 0;
    std::vector<std::weak_ptr<T>> all;

    void add(const std::shared_ptr<T>& object) {
      std::erase_if(all, [](const auto& other) { return other.expired(); });
      all.push_back(object);
      ++made;
    }
    std::vector<std::shared_ptr<T>> live() const {
      std::vector<std::shared_ptr<T>> found;
      for (const auto& weak : all) {
        if (auto object = weak.lock()) found.push_back(std::move(object));
      }
      return found;
    }
    std::shared_ptr<T> last() const {
      auto found = live();
      return found.empty() ? nullptr : found.back();
    }
  };

  MemoryScheduler& scheduler_;
  Rect bounds_{0, 0, 1080, 1920};
  std::shared_ptr<MemoryScreen> screen_ = std::make_shared<MemoryScreen>();
  std::map<std::pair<std::string, std::string>, std::vector<MemoryOutlet>> known_;
  std::set<std::string> missing_;
  std::set<std::string> schemes_{"http", "https"};
  std::function<bool(const std::string& url)> openAnswer_;
  std::vector<std::string> openedUrls_;
  int preparations_ = 0;
  std::vector<PadPress> padPresses_;
  Made<MemoryWindow> windows_;
  Made<MemoryWebView> webViews_;
  Made<MemoryLayout> layouts_;
};

}  // namespace zovk
