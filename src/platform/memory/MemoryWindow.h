#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/memory/MemoryScheduler.h"
#include "platform/memory/MemoryView.h"
#include "zovkpopup/platform/Window.h"

namespace zovk {

/// The state that the windows of one user interface share.
struct MemoryScreen {
  int lastWindow = 0;
  int keyWindow = 0;  ///< The number of the key window; 0 if it is not one of ours.
  bool grantsKeyboard = true;
  std::optional<std::string> failure;  ///< Why windows cannot be shown.
};

/// A window without a screen. Main thread only; the holder owns it. Later reports of the user
/// interface (key status, constraints, the end of a transition, a failure) come through the
/// scheduler, which must outlive the window.
class MemoryWindow final : public Window, public std::enable_shared_from_this<MemoryWindow> {
 public:
  MemoryWindow(MemoryScheduler& scheduler, std::shared_ptr<MemoryScreen> screen, const Rect& frame);
  ~MemoryWindow() override;
  MemoryWindow(const MemoryWindow&) = delete;
  MemoryWindow& operator=(const MemoryWindow&) = delete;

  void setBackgroundColor(const Color& color) override { background_ = color; }
  void setRootViewController(std::shared_ptr<ViewController> controller) override;
  void makeKeyAndVisible() override;
  bool isKeyWindow() const override { return screen_->keyWindow == number_; }
  void setNeedsUpdateConstraints() override;

  Rect frame() const { return frame_; }
  std::optional<Color> background() const { return background_; }
  /// Returns how often it was asked to show itself.
  int shownCount() const { return shownCount_; }
  bool isShown() const { return shownCount_ > 0 && !screen_->failure; }
  std::shared_ptr<ViewController> rootViewController() const { return controller_; }
  MemoryViewNode& rootNode() const { return root_->node(); }

  /// Gives the window another size. If that changes its shape between upright and wide, the root
  /// controller is told at once, and the completion of its transition runs from the scheduler.
  void resize(const Size& size);
  /// Plays the user turning to this window.
  void becomeKey() { screen_->keyWindow = number_; }
  /// Tells the root controller, once, that the user interface failed.
  void tellFailure();

 private:
  void later(void (MemoryWindow::*step)());
  void keyboardGranted();
  void updateConstraints();

  MemoryScheduler& scheduler_;
  std::shared_ptr<MemoryScreen> screen_;
  int number_;
  Rect frame_;
  std::optional<Color> background_;
  std::shared_ptr<MemoryView> root_;
  std::shared_ptr<ViewController> controller_;
  int shownCount_ = 0;
  bool needsUpdateConstraints_ = false;
  bool failureTold_ = false;
};

}  // namespace zovk
