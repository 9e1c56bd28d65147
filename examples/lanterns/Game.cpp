#include "Game.h"

#include <iostream>

#include "GameWindow.h"

namespace lanterns {

Game::Game(const Options& options)
    : tour_(options.tour),
      window_(openWindow(options)),
      // The drawing is light, and so it is the same everywhere.
      renderer_(SDL_CreateRenderer(window_.get(), -1, SDL_RENDERER_SOFTWARE)),
      popups_(options, nativeWindowOf(window_.get()),
              [this](const std::string& line) { tell(line); }),
      menu_(popups_.menu()),
      hud_(renderer_.get(), options.resourceDirectory + "DejaVuSans.ttf", menu_) {
  resize();
}

void Game::run() {
  while (running_) {
    SDL_Event event;
    while (SDL_PollEvent(&event) != 0) handle(event);
    const auto before = FramePacer::Clock::now();
    popups_.pump();
    pacer_.notePump(FramePacer::Clock::now() - before);
    draw();
    scene_->update(pacer_.nextFrame());
  }
  std::cout << pacer_.summary() << std::endl;
}

void Game::handle(const SDL_Event& event) {
  if (event.type == SDL_QUIT) running_ = false;
  if (event.type == SDL_KEYDOWN) press(event.key.keysym.sym);
  if (event.type == SDL_MOUSEBUTTONDOWN) tap(event.button.x, event.button.y);
  if (event.type == SDL_WINDOWEVENT && event.window.event == SDL_WINDOWEVENT_SIZE_CHANGED) resize();
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
    std::cout << "lit " << scene_->litCount() << " of " << scene_->count() << std::endl;
  }
}

void Game::resize() {
  int width = 0;
  int height = 0;
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
  hud_.setScore("Tap a lantern to light it: " + std::to_string(scene_->litCount()) + " of " +
                std::to_string(scene_->count()) + " are lit");
  scene_->draw();
  hud_.draw();
  SDL_RenderPresent(renderer_.get());
}

void Game::tell(const std::string& line) {
  std::cout << line << std::endl;
  hud_.addLine(line);
}

}  // namespace lanterns
