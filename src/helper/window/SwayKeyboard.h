#pragma once

#include <functional>
#include <string>

#include "helper/GObjectPtr.h"

namespace zovk::helper {

bool isSwayRunning();

/// The keyboard of windows on sway, which gives it neither to a window that comes up over a
/// full-screen one, nor to one that asks for it in the usual ways. Does nothing elsewhere.
class SwayKeyboard {
 public:
  /// `cameUp` is called whenever sway has put a window of this process on the screen. What was
  /// asked before was asked in vain.
  explicit SwayKeyboard(std::function<void()> cameUp);
  ~SwayKeyboard();
  SwayKeyboard(const SwayKeyboard&) = delete;
  SwayKeyboard& operator=(const SwayKeyboard&) = delete;

  /// Asks sway to bring this process's windows to the current work space and to give them the
  /// keyboard. They come above all others with it.
  void ask();

 private:
  static int onReadable(int socket, GIOCondition condition, gpointer self);
  void connect();
  void send(unsigned kind, const std::string& text) const;
  /// Returns whether more may come.
  bool read();
  /// Takes whole messages out of what was read. Returns false if one is longer than sway writes.
  bool takeMessages();

  const std::function<void()> cameUp_;
  int socket_ = -1;
  std::string unread_;
  SourceGuard watch_;
};

}  // namespace zovk::helper
