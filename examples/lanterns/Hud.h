#pragma once

#include <string>
#include <vector>

#include "MenuItem.h"
#include "Text.h"

namespace lanterns {

/// The layer over the scene: the row of buttons, and lines that report events.
class Hud {
 public:
  Hud(SDL_Renderer* renderer, const std::string& fontPath, const std::vector<MenuItem>& items);

  void resize(int width, int height);
  void addLine(const std::string& line);
  void setScore(const std::string& score) { score_.set(score); }
  void draw() const;
  /// Returns the item whose button is at a place, or null.
  const MenuItem* itemAt(int x, int y) const;
  /// Returns the middle of every button, in the order of the items.
  std::vector<SDL_Point> buttonMiddles() const;

 private:
  struct Button {
    const MenuItem* item;
    Text name;
    Text key;
    SDL_Rect place;
  };

  void drawButton(const Button& button) const;
  void drawLines() const;
  void fillLines();

  SDL_Renderer* renderer_;
  FontPointer large_;
  FontPointer medium_;
  FontPointer small_;
  Text title_;
  Text score_;
  std::vector<Button> buttons_;
  std::vector<std::string> history_;
  std::vector<Text> lines_;
  sdl::TexturePointer buttonShape_;
  sdl::TexturePointer panelShape_;
  SDL_Rect panel_{};
};

}  // namespace lanterns
