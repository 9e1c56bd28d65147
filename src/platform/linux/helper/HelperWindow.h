#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/linux/helper/HelperView.h"
#include "zovkpopup/platform/Window.h"

namespace zovk {

/// A window in the helper.
class HelperWindow final : public Window, public std::enable_shared_from_this<HelperWindow> {
 public:
  /// `assumed` is the size to use until the helper reports it; empty if nothing is known.
  static std::shared_ptr<HelperWindow> make(const std::shared_ptr<HelperClient>& session,
                                            const Rect& frame, const Size& assumed);
  HelperWindow(std::shared_ptr<HelperClient> session, HelperId id, const Size& assumed);
  ~HelperWindow() override;

  void setBackgroundColor(const Color& color) override;
  void setRootViewController(std::shared_ptr<ViewController> controller) override;
  void makeKeyAndVisible() override;
  bool isKeyWindow() const override;
  void setNeedsUpdateConstraints() override;

  HelperId id() const { return id_; }
  // Events of the helper.
  void sizeChanged(const Size& size);
  void fail(const std::string& reason);

 private:
  void create(const Rect& frame);
  void failLater();
  void turnIfNeeded();
  void updateConstraints();

  const std::shared_ptr<HelperClient> session_;
  const HelperId id_;
  const std::shared_ptr<HelperView> root_;
  std::shared_ptr<ViewController> controller_;
  Size size_;
  Size arranged_;  ///< The size that the controller last arranged for.
  bool turning_ = false;
  bool constraintsAreDue_ = false;
};

}  // namespace zovk
