#pragma once

#include <cstdint>
#include <string>
#include <thread>
#include <vector>

namespace zovk {

struct Place {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;

  bool operator==(const Place&) const = default;
};

/// The window of a game on a screen that the test chooses, and a game's actions on it. Waits throw
/// std::runtime_error after a bound.
class GameStandIn {
 public:
  /// `display` is an X11 display; empty for that of this process.
  explicit GameStandIn(const Place& place, const std::string& display = {});
  ~GameStandIn();
  GameStandIn(const GameStandIn&) = delete;
  GameStandIn& operator=(const GameStandIn&) = delete;

  std::uint64_t id() const { return window_; }
  void setTitle(const std::string& title);
  void move(const Place& place);
  void minimise();
  /// Does by itself what window managers do to a window that is minimised or comes back.
  void setShown(bool shown);
  /// Asks the window manager to make it the active one, which also brings it back.
  void activate();
  void awaitFocus(bool focused);
  /// Returns the place of its content on the screen.
  Place place() const;
  /// Returns the window that is declared to be in front of this one; 0 if there is none.
  std::uint64_t popup() const;
  /// Waits until that window is declared so; 0 for none.
  void awaitPopup(std::uint64_t window) const;
  /// Waits until another window's content is at `wanted`.
  void awaitPlace(std::uint64_t window, const Place& wanted) const;
  void awaitViewable(std::uint64_t window, bool viewable) const;
  /// Waits until another window is above this one.
  void awaitAbove(std::uint64_t window) const;
  bool isOverrideRedirect(std::uint64_t window) const;
  bool isDialog(std::uint64_t window) const;
  std::string title(std::uint64_t window) const;

 private:
  void* display_;
  std::uint64_t window_ = 0;
};

/// An X server without a window manager, as long as the object lives; its pixels cannot be seen.
class BareScreen {
 public:
  explicit BareScreen(const std::string& size = "1280x800");
  ~BareScreen();
  BareScreen(const BareScreen&) = delete;
  BareScreen& operator=(const BareScreen&) = delete;
  const std::string& name() const { return name_; }
  /// Returns the environment for a program on this screen.
  std::vector<std::string> environment() const;

 private:
  int pid_ = -1;
  std::string name_;
};

/// The work spaces of a screen without a window manager: the notes that one keeps on its windows,
/// and the wishes that it gets.
class WorkSpaces {
 public:
  explicit WorkSpaces(const BareScreen& screen);
  ~WorkSpaces();
  WorkSpaces(const WorkSpaces&) = delete;
  WorkSpaces& operator=(const WorkSpaces&) = delete;

  void put(std::uint64_t window, unsigned long workSpace);
  /// Waits for the next wish. Returns the work space in it.
  unsigned long awaitWish(std::uint64_t window);

 private:
  void* display_;
};

/// Makes programs on the display of this process believe that windows are blended there, as on a
/// desktop.
class BlendingManager {
 public:
  BlendingManager();
  ~BlendingManager();
  BlendingManager(const BlendingManager&) = delete;
  BlendingManager& operator=(const BlendingManager&) = delete;

 private:
  void* display_;
};

/// A window manager that never shows anything, like a screen on which popups do not come up.
class IdleManager {
 public:
  explicit IdleManager(const BareScreen& screen);
  ~IdleManager();
  IdleManager(const IdleManager&) = delete;
  IdleManager& operator=(const IdleManager&) = delete;

 private:
  void* display_;
};

/// A window manager with one of the habits of simple compositors with X11 windows.
class SimpleManager {
 public:
  enum class Habit {
    kLowers,  ///< Puts new windows below all others, and never restacks them.
    kShifts,  ///< Puts new windows that are not full screen out of place, and never moves them.
  };
  SimpleManager(const BareScreen& screen, Habit habit);
  ~SimpleManager();
  SimpleManager(const SimpleManager&) = delete;
  SimpleManager& operator=(const SimpleManager&) = delete;

 private:
  void manage();
  void show(std::uint64_t window) const;
  void* display_;
  Habit habit_;
  int stop_ = -1;
  std::thread thread_;
};

}  // namespace zovk
