#pragma once

#include <string>

#include <zovkpopup/platform/GamePicture.h>

#include "LastFrame.h"
#include "Options.h"
#include "Purse.h"
#include "Scene.h"
#include "Sdl.h"
#include "Shop.h"
#include "WindowName.h"

namespace harbour {

/// Sets the popups' host up for as long as the object lives.
class Host {
 public:
  /// `lastFrame` gives the last frame, for displays on which the shop would hide the harbour.
  Host(const Options& options, const std::string& gameWindow, zovk::ZOVKPopupBackdrop lastFrame);
  ~Host();
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;
};

/// The game: its window and its loop. A ferry pays the player a coin every few seconds. Space or a
/// tap opens the shop; bought lanterns hang over the harbour.
class Game {
 public:
  explicit Game(const Options& options);
  void run();

 private:
  void handle(const SDL_Event& event);
  static void keyboardMoved(bool here);
  void resize();
  void payCoin();
  void lookAtPage();
  zovk::ZOVKPopupPicture lastFrame();

  sdl::WindowPointer window_;
  sdl::WindowName windowName_;
  sdl::RendererPointer renderer_;
  sdl::LastFrame lastFrame_;
  Host host_;
  Purse purse_;
  Shop shop_;
  Scene scene_;
  std::string lookScript_;
  std::string lastLook_;
  bool looking_ = false;
  Uint64 nextCoin_ = 0;
  bool running_ = true;
};

}  // namespace harbour
