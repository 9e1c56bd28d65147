#pragma once

#include <memory>
#include <string>

#include "presentation/ButtonRule.h"
#include "zovkpopup/platform/Platform.h"

namespace zovk {

/// The views of one controller: the layout for the way the device is held, its buttons, and the
/// place of the page. Main thread only. Before `load` and after `letGo` there is no layout; then
/// call only the functions whose comments allow it.
class PopupScreen {
 public:
  explicit PopupScreen(std::shared_ptr<Platform> platform) : platform_(std::move(platform)) {}

  /// Sets the bundle with layouts and images; null if there is none.
  void setResources(std::shared_ptr<const Bundle> bundle) { resources_ = std::move(bundle); }
  /// Returns the name of the layout for the way the device is held or, if it lies flat, for the
  /// orientation of its status bar.
  std::string layoutName() const;
  /// Loads the layout into `view`, with or without an earlier one. Its buttons act on `owner`.
  void load(View& view, std::weak_ptr<LayoutOwner> owner);
  bool isLoaded() const { return layout_ != nullptr; }

  /// Puts the page behind the buttons.
  void placePage(WebView& page) const;
  void setButtonImages() const;
  void apply(const ButtonChanges& changes) const;
  void setHidden(const std::string& button, bool hidden) const;
  /// Ends the darkening of the page area. Has no effect without a layout.
  void undimPage() const;
  /// Keeps the corner buttons clear of the status bar at the top of `view`.
  void pinCornerButtons(const View& view) const;
  /// Ends the page where the answer buttons begin.
  void endPageAboveAnswers(WebView& page) const;

  /// Makes the layout see-through before the next one is loaded; `removeLeaving` removes it once
  /// the next one is in its place. Without a layout both have no effect.
  void beginLeaving();
  void removeLeaving();
  void letGo();

 private:
  std::shared_ptr<View> outlet(const std::string& name) const { return layout_->outlet(name); }

  std::shared_ptr<Platform> platform_;
  std::shared_ptr<const Bundle> resources_;
  std::shared_ptr<Layout> layout_;
  std::shared_ptr<Layout> leaving_;
};

}  // namespace zovk
