#include "Game.h"

#include <iostream>

#include "Sdl.h"

namespace lanterns {
namespace {

constexpr int kLanternsOfANight = 8;

}  // namespace

Game::Game(const Options& options)
    : tour_(options.tour),
      window_(sdl::openWindow("Lanterns", options.window, options.tour)),
      windowName_(window_.get()),
      renderer_(sdl::openRenderer(window_.get())),
      firefly_(renderer_.get()),
      popups_(
          options, windowName_.text(), [this] { return lastFrame(); },
          [this](const std::string& line) { tell(line); },
          [this](bool covered) { cover(covered); }),
      menu_(popups_.menu()),
      hud_(renderer_.get(), options.resourceDirectory + "DejaVuSans.ttf", menu_) {
  if (options.pad) virtualPad_.emplace();
  resize();
}

void Game::run() {
  if (!tour_) popups_.greet();
  while (running_) {
    if (virtualPad_) virtualPad_->update();
    SDL_Event event;
    while (SDL_PollEvent(&event) != 0) handle(event);
    const auto before = FramePacer::Clock::now();
    popups_.pump();
    pacer_.notePump(FramePacer::Clock::now() - before);
    draw();
    const double seconds = pacer_.nextFrame();
    scene_->update(seconds);
    int width = 0;
    int height = 0;
    SDL_GetRendererOutputSize(renderer_.get(), &width, &height);
    firefly_.update(seconds, width, height);
  }
  std::cout << pacer_.summary() << std::endl;
}

void Game::handle(const SDL_Event& event) {
  if (event.type == SDL_QUIT) running_ = false;
  const bool resized =
      event.type == SDL_WINDOWEVENT && event.window.event == SDL_WINDOWEVENT_SIZE_CHANGED;
  if (resized) resize();
  if (const auto here = sdl::keyboardIn(event)) keyboardMoved(*here);
  if (firefly_.handle(event) && !covered_) tap(firefly_.place().x, firefly_.place().y);
  if (covered_) popupPad_.handle(event);
  if (covered_) return;  // what is pressed now is meant for the popup
  if (event.type == SDL_KEYDOWN) press(event.key.keysym.sym);
  if (event.type == SDL_MOUSEBUTTONDOWN) tap(event.button.x, event.button.y);
}

void Game::keyboardMoved(bool here) const {
  Popups::keyboardMoved(here);
  if (tour_) std::cout << (here ? "has the keyboard" : "lost the keyboard") << std::endl;
}

void Game::press(SDL_Keycode key) {
  if (key == SDLK_ESCAPE) running_ = false;
  for (const auto& item : menu_) {
    if (key == item.key) item.run();
  }
}

void Game::tap(int x, int y) {
  if (const auto* const item = hud_.itemAt(x, y)) {
    item->run();
  } else if (scene_->tap(x, y)) {
    light();
  }
}

void Game::light() {
  sound_.chime();
  std::cout << "lit " << scene_->litCount() << " of " << scene_->count() << std::endl;
  if (++litTonight_ < kLanternsOfANight) return;
  litTonight_ = 0;
  popups_.endNight();
}

// While a popup is up the game is silent and hears nothing.
void Game::cover(bool covered) {
  covered_ = covered;
  sound_.pause(covered);
  firefly_.rest();
  if (tour_) std::cout << (covered ? "paused" : "goes on") << std::endl;
}

void Game::resize() {
  int width = 0;
  int height = 0;
  SDL_GetWindowSize(window_.get(), &width, &height);
  Popups::windowResized(width, height);
  SDL_GetRendererOutputSize(renderer_.get(), &width, &height);
  scene_ = std::make_unique<Scene>(renderer_.get(), width, height);
  hud_.resize(width, height);
  if (tour_) tellButtons();
}

void Game::tellButtons() const {
  const auto middles = hud_.buttonMiddles();
  for (std::size_t i = 0; i < menu_.size(); ++i) {
    std::cout << "button " << menu_[i].key << " at " << middles[i].x << ' ' << middles[i].y << '\n';
  }
  std::cout.flush();
}

void Game::draw() {
  hud_.setScore(std::to_string(kLanternsOfANight - litTonight_) +
                " more lanterns to light tonight (mouse, arrow keys or game pad)");
  paint();
  SDL_RenderPresent(renderer_.get());
}

void Game::paint() const {
  scene_->draw();
  hud_.draw();
  firefly_.draw();
}

// SDL keeps no frame that it has shown, so the same is painted once more.
zovk::ZOVKPopupPicture Game::lastFrame() {
  paint();
  if (!lastFrame_.read(renderer_.get())) return {};
  return {
      .pixels = lastFrame_.pixels(), .width = lastFrame_.width(), .height = lastFrame_.height()};
}

void Game::tell(const std::string& line) {
  std::cout << line << std::endl;
  hud_.addLine(line);
}

}  // namespace lanterns
