#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace zovk {

struct Place {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;

  bool operator==(const Place&) const = default;
};

/// The window of a game on a screen of the test's choice, and what a game does with it. Waits throw
/// std::runtime_error after a bound.
class GameStandIn {
 public:
  /// `display` is an X11 display; empty for the one of this process.
  explicit GameStandIn(const Place& place, const std::string& display = {});
  ~GameStandIn();
  GameStandIn(const GameStandIn&) = delete;
  GameStandIn& operator=(const GameStandIn&) = delete;

  std::uint64_t id() const { return window_; }
  void move(const Place& place);
  void minimise();
  /// Asks the window manager to make it the active one, which brings it back, too.
  void activate();
  void awaitFocus(bool focused);
  /// Where its content stands on the screen.
  Place place() const;
  /// The window that says it stands before this one; 0 when there is none.
  std::uint64_t popup() const;
  /// Where some other window's content stands, once it stands there: waits for `wanted`.
  void awaitPlace(std::uint64_t window, const Place& wanted) const;
  void awaitViewable(std::uint64_t window, bool viewable) const;
  bool isOverrideRedirect(std::uint64_t window) const;
  bool isDialog(std::uint64_t window) const;
  std::string title(std::uint64_t window) const;

 private:
  void* display_;
  std::uint64_t window_ = 0;
};

/// An X server with no window manager, for as long as the object lives; without pixels to see.
class BareScreen {
 public:
  explicit BareScreen(const std::string& size = "1280x800");
  ~BareScreen();
  BareScreen(const BareScreen&) = delete;
  BareScreen& operator=(const BareScreen&) = delete;
  const std::string& name() const { return name_; }
  /// What a program on this screen is to find in its environment.
  std::vector<std::string> environment() const;

 private:
  int pid_ = -1;
  std::string name_;
};

/// Tells programs on the display of this process that windows are blended there, as on a desktop.
class BlendingManager {
 public:
  BlendingManager();
  ~BlendingManager();
  BlendingManager(const BlendingManager&) = delete;
  BlendingManager& operator=(const BlendingManager&) = delete;

 private:
  void* display_;
};

/// A window manager that never shows anything, as a screen on which popups do not come up.
class IdleManager {
 public:
  explicit IdleManager(const BareScreen& screen);
  ~IdleManager();
  IdleManager(const IdleManager&) = delete;
  IdleManager& operator=(const IdleManager&) = delete;

 private:
  void* display_;
};

}  // namespace zovk
