#pragma once

#include <memory>
#include <string>

struct SDL_Window;

namespace sdl {

/// The display system's name for an SDL window, in the form for the popups: "x11:NUMBER" or
/// "wayland:HANDLE". The name is valid as long as the object lives. Destroy it before the window.
class WindowName {
 public:
  explicit WindowName(SDL_Window* window);
  ~WindowName();
  WindowName(const WindowName&) = delete;
  WindowName& operator=(const WindowName&) = delete;

  /// Returns the name; empty if the display system has none.
  const std::string& text() const { return text_; }

 private:
  struct Exported;
  std::unique_ptr<Exported> exported_;
  std::string text_;
};

}  // namespace sdl
