// The surroundings of the pieces of code in the documents, so that they compile.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include <SDL.h>
#include <glib-unix.h>

#include "zovkpopup/Host.h"
#include "zovkpopup/ZOVKPopup.h"
#include "zovkpopup/platform/HostedPlatform.h"

struct Game {
  void pauseSound();
  void resumeSound();
  void releaseInput();
  void playCutScene(const std::function<void()>& whenOver);
};
extern Game game;
extern SDL_Renderer* renderer;
void drawFrame();
extern const std::string openId;
extern const std::string token;
extern const std::string jwtToken;
void askAgainLater();
void track(const char* what, std::int32_t popId, const std::string& detail);
void showNewsButton();
void show(const std::string& verdict, const std::string& sentence);

namespace zovk {

class NamePlatform final : public HostedPlatform {
 public:
  explicit NamePlatform(const ZOVKPopupHostSettings& settings);
  Platform& interfaces() override;
  std::shared_ptr<PlatformLog> sharedLog() const override;
  void pump(std::chrono::microseconds budget) override;
  int pollDescriptor() const override;
  void gameWindowDidBecomeKey() override;
  void gameWindowDidResignKey() override;
  void shutDown() override;
};

}  // namespace zovk

using zovk::NamePlatform;
