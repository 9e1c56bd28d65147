#pragma once

#include <memory>
#include <string>

struct SDL_Window;

namespace sdl {

/// What the display system calls an SDL window, in the form in which the popups are told:
/// "x11:NUMBER" or "wayland:HANDLE". The name holds for as long as the object lives, which must go
/// before the window does.
class WindowName {
 public:
  explicit WindowName(SDL_Window* window);
  ~WindowName();
  WindowName(const WindowName&) = delete;
  WindowName& operator=(const WindowName&) = delete;

  /// Empty where the display system has none to give.
  const std::string& text() const { return text_; }

 private:
  struct Exported;
  std::unique_ptr<Exported> exported_;
  std::string text_;
};

}  // namespace sdl
