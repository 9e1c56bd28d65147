#include "Hud.h"

#include <algorithm>

namespace lanterns {
namespace {

constexpr int kMargin = 16;
constexpr int kGap = 8;
constexpr int kButtonHeight = 54;
constexpr int kNarrowestButton = 126;
constexpr int kLines = 5;
constexpr int kLineHeight = 21;
constexpr int kWidestPanel = 620;

FontPointer openFont(const std::string& path, int size) {
  FontPointer font(TTF_OpenFont(path.c_str(), size));
  sdl::require(font != nullptr, "TTF_OpenFont");
  return font;
}

}  // namespace

Hud::Hud(SDL_Renderer* renderer, const std::string& fontPath, const std::vector<MenuItem>& items)
    : renderer_(renderer),
      large_(openFont(fontPath, 24)),
      medium_(openFont(fontPath, 15)),
      small_(openFont(fontPath, 13)),
      title_(renderer, large_.get(), rgb(0xFFF1DC)),
      score_(renderer, medium_.get(), rgb(0xFFD9A8)) {
  title_.set("Lanterns");
  for (const auto& item : items) {
    Button button{&item,
                  Text(renderer, medium_.get(), rgb(0xFFF6EA)),
                  Text(renderer, small_.get(), rgb(0xFFC98A)),
                  {}};
    button.name.set(item.name);
    button.key.set(std::string(1, item.key));
    buttons_.push_back(std::move(button));
  }
  for (int i = 0; i < kLines; ++i) {
    lines_.emplace_back(renderer, small_.get(), rgb(0xF3E6E4));
  }
}

void Hud::resize(int width, int height) {
  const int count = static_cast<int>(buttons_.size());
  const int inner = width - 2 * kMargin;
  const int fitting = std::max(1, (inner + kGap) / (kNarrowestButton + kGap));
  const int rows = (count + fitting - 1) / fitting;
  const int columns = (count + rows - 1) / rows;
  const int buttonWidth = (inner + kGap) / columns - kGap;
  const int first = height - kMargin - rows * (kButtonHeight + kGap) + kGap;
  for (int i = 0; i < count; ++i) {
    buttons_[static_cast<std::size_t>(i)].place = {kMargin + i % columns * (buttonWidth + kGap),
                                                   first + i / columns * (kButtonHeight + kGap),
                                                   buttonWidth, kButtonHeight};
  }
  panel_ = {kMargin, kMargin + 74, std::min(inner, kWidestPanel), kLines * kLineHeight + 18};
  buttonShape_ = paintPill(renderer_, buttonWidth, kButtonHeight, 16, rgb(0x1B1838, 0.66F));
  panelShape_ = paintPill(renderer_, panel_.w, panel_.h, 14, rgb(0x12122C, 0.55F));
  fillLines();
}

void Hud::addLine(const std::string& line) {
  history_.push_back(line);
  if (history_.size() > kLines) history_.erase(history_.begin());
  fillLines();
}

void Hud::fillLines() {
  for (std::size_t i = 0; i < history_.size(); ++i) {
    lines_[i].set(history_[i], panel_.w - 28);
  }
}

void Hud::draw() const {
  title_.draw(kMargin + 4, kMargin);
  score_.draw(kMargin + 5, kMargin + 34);
  if (!history_.empty()) drawLines();
  for (const auto& button : buttons_) drawButton(button);
}

void Hud::drawLines() const {
  SDL_RenderCopy(renderer_, panelShape_.get(), nullptr, &panel_);
  int y = panel_.y + 9;
  for (const auto& line : lines_) {
    line.draw(panel_.x + 14, y + 2);
    y += kLineHeight;
  }
}

void Hud::drawButton(const Button& button) const {
  const SDL_Rect& place = button.place;
  SDL_RenderCopy(renderer_, buttonShape_.get(), nullptr, &place);
  button.name.draw(place.x + (place.w - button.name.width()) / 2,
                   place.y + 20 + (place.h - 26 - button.name.height()) / 2);
  button.key.draw(place.x + (place.w - button.key.width()) / 2, place.y + 6);
}

const MenuItem* Hud::itemAt(int x, int y) const {
  const SDL_Point point{x, y};
  const auto hit = std::find_if(buttons_.begin(), buttons_.end(), [&](const Button& button) {
    return SDL_PointInRect(&point, &button.place) == SDL_TRUE;
  });
  return hit != buttons_.end() ? hit->item : nullptr;
}

std::vector<SDL_Point> Hud::buttonMiddles() const {
  std::vector<SDL_Point> middles;
  for (const auto& button : buttons_) {
    middles.push_back({button.place.x + button.place.w / 2, button.place.y + button.place.h / 2});
  }
  return middles;
}

}  // namespace lanterns
