#pragma once

#include <memory>
#include <string>

#include "presentation/ButtonRule.h"
#include "zovkpopup/platform/Platform.h"

namespace zovk {

/// The views of one controller: the layout that fits how the device is held, its buttons, and where
/// the page stands in it. Main thread only. Without a layout, so before `load` and after `letGo`,
/// only what says so may be called.
class PopupScreen {
 public:
  explicit PopupScreen(std::shared_ptr<Platform> platform) : platform_(std::move(platform)) {}

  /// Where layouts and images are looked for; null when there is no bundle.
  void setResources(std::shared_ptr<const Bundle> bundle) { resources_ = std::move(bundle); }
  /// The layout for how the device is held; for how its status bar stands when it lies flat.
  std::string layoutName() const;
  /// Loads the layout into `view`, also without an earlier one. Its buttons act on `owner`.
  void load(View& view, std::weak_ptr<LayoutOwner> owner);
  bool isLoaded() const { return layout_ != nullptr; }

  /// Puts the page behind the buttons.
  void placePage(WebView& page) const;
  void setButtonImages() const;
  void apply(const ButtonChanges& changes) const;
  void setHidden(const char* button, bool hidden) const;
  /// Takes the darkening off the page area. Does nothing without a layout.
  void undimPage() const;
  /// Keeps the corner buttons clear of the status bar at the top of `view`.
  void pinCornerButtons(const View& view) const;
  /// Ends the page where the answer buttons begin.
  void endPageAboveAnswers(WebView& page) const;

  /// Makes the layout see-through before the next one is loaded; `removeLeaving` takes it away once
  /// that one is in its place. Without a layout both do nothing.
  void beginLeaving();
  void removeLeaving();
  void letGo();

 private:
  std::shared_ptr<View> outlet(const char* name) const { return layout_->outlet(name); }

  std::shared_ptr<Platform> platform_;
  std::shared_ptr<const Bundle> resources_;
  std::shared_ptr<Layout> layout_;
  std::shared_ptr<Layout> leaving_;
};

}  // namespace zovk
