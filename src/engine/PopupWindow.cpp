#include "engine/PopupWindow.h"

namespace zovk {
namespace {

constexpr std::chrono::milliseconds kKeyWindowInterval{100};

}  // namespace

PopupWindow::~PopupWindow() {
  stopChecking();
  close();
}

void PopupWindow::open() {
  window_ = platform_->userInterface.makeWindow(platform_->userInterface.mainScreenBounds());
  window_->setBackgroundColor(Color::clear());
}

void PopupWindow::close() {
  if (window_ == nullptr) return;
  const auto window = std::exchange(window_, nullptr);
  window->setRootViewController(nullptr);
}

void PopupWindow::startChecking(std::function<void()> check) {
  if (timer_ != nullptr) return;
  timer_ = platform_->timers.scheduleRepeating(kKeyWindowInterval, std::move(check));
  timer_->fire();
}

void PopupWindow::stopChecking() {
  if (timer_ != nullptr) timer_->invalidate();
  timer_ = nullptr;
}

}  // namespace zovk
