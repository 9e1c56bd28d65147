#include "presentation/PopupScreen.h"

#include <utility>

#include "support/Outlets.h"

namespace zovk {
namespace {

constexpr const char* kPortraitLayout = "ZOVKPopupView";
constexpr const char* kLandscapeLayout = "ZOVKPopupViewLandscape";
constexpr Color kDimming = Color::black(0.5);

bool isPortrait(Orientation orientation) {
  return orientation == Orientation::kPortrait || orientation == Orientation::kPortraitUpsideDown;
}

bool isLandscape(Orientation orientation) {
  return orientation == Orientation::kLandscapeLeft || orientation == Orientation::kLandscapeRight;
}

}  // namespace

std::string PopupScreen::layoutName() const {
  const Orientation held = platform_->device.orientation();
  if (isPortrait(held)) return kPortraitLayout;
  if (isLandscape(held)) return kLandscapeLayout;
  return isPortrait(platform_->device.statusBarOrientation()) ? kPortraitLayout : kLandscapeLayout;
}

void PopupScreen::load(View& view, std::weak_ptr<LayoutOwner> owner) {
  const std::string bundlePath = resources_ != nullptr ? resources_->resourcePath() : "";
  layout_ = platform_->userInterface.loadLayout(bundlePath, layoutName(), std::move(owner));
  view.addSubview(*layout_->root());
  layout_->root()->pinEdgesTo(view);
}

void PopupScreen::placePage(WebView& page) const {
  const auto content = outlet(outlets::kContent);
  content->addSubview(page);
  page.pinEdgesTo(*content);
  content->sendSubviewToBack(page);
  content->setClipsToBounds(true);
}

void PopupScreen::setButtonImages() const {
  if (resources_ == nullptr) return;
  const auto setImage = [this](const char* button, const char* file) {
    outlet(button)->setImage(resources_->resourcePath() + "/" + file);
  };
  setImage(outlets::kRefresh, "refresh.png");
  setImage(outlets::kReturn, "returnNew.png");
  setImage(outlets::kCross, "close.png");
}

void PopupScreen::apply(const ButtonChanges& changes) const {
  for (const std::string& name : changes.hide) setHidden(name, true);
  for (const std::string& name : changes.show) setHidden(name, false);
  if (changes.dimContent) outlet(outlets::kContent)->setBackgroundColor(kDimming);
}

void PopupScreen::setHidden(const std::string& button, bool hidden) const {
  outlet(button)->setHidden(hidden);
}

void PopupScreen::undimPage() const {
  if (isLoaded()) outlet(outlets::kContent)->setBackgroundColor(Color::black(0));
}

void PopupScreen::pinCornerButtons(const View& view) const {
  constexpr int kLastVersionWithoutSafeArea = 10;
  constexpr double kStatusBarOffset = 44;
  const bool safeArea = platform_->device.systemMajorVersion() > kLastVersionWithoutSafeArea;
  for (const char* button : {outlets::kCross, outlets::kReturn}) {
    outlet(button)->pinTopTo(view, safeArea, safeArea ? 0 : kStatusBarOffset);
  }
}

void PopupScreen::endPageAboveAnswers(WebView& page) const {
  const auto answers = outlet(outlets::kAnswers);
  const auto loneAnswer = outlet(outlets::kLoneAnswer);
  page.pinBottomToTopOfFirst({answers.get(), loneAnswer.get()});
}

void PopupScreen::beginLeaving() {
  if (!isLoaded()) return;
  outlet(outlets::kContent)->setAlpha(0);
  leaving_ = layout_;
}

void PopupScreen::removeLeaving() {
  if (leaving_ != nullptr) leaving_->root()->removeFromSuperview();
  leaving_ = nullptr;
}

void PopupScreen::letGo() {
  layout_ = nullptr;
  leaving_ = nullptr;
  resources_ = nullptr;
}

}  // namespace zovk
