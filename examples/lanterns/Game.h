#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Firefly.h"
#include "FramePacer.h"
#include "Hud.h"
#include "LastFrame.h"
#include "PopupPad.h"
#include "Popups.h"
#include "Scene.h"
#include "Sound.h"
#include "VirtualPad.h"
#include "WindowName.h"

namespace lanterns {

/// The game: its window, its loop, and the effects of keys, taps and game pads.
class Game {
 public:
  explicit Game(const Options& options);
  void run();

 private:
  void handle(const SDL_Event& event);
  void keyboardMoved(bool here) const;
  void press(SDL_Keycode key);
  void tap(int x, int y);
  void light();
  void cover(bool covered);
  void resize();
  void draw();
  void paint() const;
  zovk::ZOVKPopupPicture lastFrame();
  void tell(const std::string& line);
  void tellButtons() const;

  bool tour_;
  std::optional<VirtualPad> virtualPad_;
  sdl::WindowPointer window_;
  sdl::WindowName windowName_;
  sdl::RendererPointer renderer_;
  Sound sound_;
  Firefly firefly_;
  PopupPad popupPad_;
  sdl::LastFrame lastFrame_;
  Popups popups_;
  std::vector<MenuItem> menu_;
  Hud hud_;
  std::unique_ptr<Scene> scene_;
  FramePacer pacer_;
  int litTonight_ = 0;
  bool covered_ = false;
  bool running_ = true;
};

}  // namespace lanterns
