#include "Game.h"

#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <utility>

#include <zovkpopup/Host.h>

namespace harbour {
namespace {

constexpr Uint64 kCoinTime = 3000;  // milliseconds
constexpr Uint32 kFrameTime = 1000 / 60;

void tell(const std::string& line) {
  std::cout << line << std::endl;
}

std::string textOf(const std::string& file) {
  std::ifstream stream(file);
  return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace

Host::Host(const Options& options, const std::string& gameWindow,
           zovk::ZOVKPopupBackdrop lastFrame) {
  zovk::ZOVKPopupHostSettings settings;
  settings.applicationId = "com.example.lantern-shop";
  settings.resourceDirectory = options.resourceDirectory;
  settings.dataDirectory = options.dataDirectory;
  settings.gameWindow = gameWindow;
  settings.backdrop = std::move(lastFrame);
  if (!zovk::ZOVKPopupHost::setUp(settings)) {
    throw std::runtime_error("the popups could not be set up");
  }
}

Host::~Host() {
  zovk::ZOVKPopupHost::shutDown();
}

Game::Game(const Options& options)
    : window_(sdl::openWindow("Harbour Lights", options.window, !options.lookFile.empty())),
      windowName_(window_.get()),
      renderer_(sdl::openRenderer(window_.get())),
      host_(options, windowName_.text(), [this] { return lastFrame(); }),
      shop_(options.resourceDirectory + "shop.html", options.player, purse_, tell),
      scene_(renderer_.get()),
      lookScript_(textOf(options.lookFile)) {
  purse_.onChange([this](int coins) { shop_.coinsChanged(coins); });
  resize();
}

void Game::run() {
  nextCoin_ = SDL_GetTicks64() + kCoinTime;
  shop_.open();
  while (running_) {
    SDL_Event event;
    while (SDL_PollEvent(&event) != 0) handle(event);
    zovk::ZOVKPopupHost::pump();
    payCoin();
    lookAtPage();
    scene_.draw(purse_.lanterns());
    SDL_RenderPresent(renderer_.get());
    SDL_Delay(kFrameTime);
  }
}

void Game::handle(const SDL_Event& event) {
  const bool key = event.type == SDL_KEYDOWN;
  if (event.type == SDL_QUIT || (key && event.key.keysym.sym == SDLK_ESCAPE)) running_ = false;
  if (event.type == SDL_MOUSEBUTTONDOWN || (key && event.key.keysym.sym == SDLK_SPACE)) {
    shop_.open();
  }
  if (event.type == SDL_WINDOWEVENT && event.window.event == SDL_WINDOWEVENT_SIZE_CHANGED) resize();
  if (const auto here = sdl::keyboardIn(event)) keyboardMoved(*here);
}

void Game::keyboardMoved(bool here) {
  if (here) {
    zovk::ZOVKPopupHost::gameWindowDidBecomeKey();
  } else {
    zovk::ZOVKPopupHost::gameWindowDidResignKey();
  }
  tell(here ? "has the keyboard" : "lost the keyboard");
}

void Game::resize() {
  int width = 0;
  int height = 0;
  SDL_GetWindowSize(window_.get(), &width, &height);
  zovk::ZOVKPopupHost::gameWindowDidResize(width, height);
  SDL_GetRendererOutputSize(renderer_.get(), &width, &height);
  scene_.resize(width, height);
}

void Game::payCoin() {
  if (SDL_GetTicks64() < nextCoin_) return;
  nextCoin_ += kCoinTime;
  purse_.add(1);
  tell("a coin: " + std::to_string(purse_.coins()));
}

// SDL keeps no frame that it has shown, so the same is painted once more.
zovk::ZOVKPopupPicture Game::lastFrame() {
  scene_.draw(purse_.lanterns());
  if (!lastFrame_.read(renderer_.get())) return {};
  return {
      .pixels = lastFrame_.pixels(), .width = lastFrame_.width(), .height = lastFrame_.height()};
}

void Game::lookAtPage() {
  if (lookScript_.empty() || looking_) return;
  looking_ = true;
  shop_.look(lookScript_, [this](const std::string& found) {
    looking_ = false;
    if (!found.empty() && found != lastLook_) tell("page " + found);
    lastLook_ = found;
  });
}

}  // namespace harbour
