#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/linux/WebHostView.h"
#include "zovkpopup/platform/Window.h"

namespace zovk {

/// A window in the helper.
class WebHostWindow final : public Window, public std::enable_shared_from_this<WebHostWindow> {
 public:
  /// `assumed` is the size that is taken for granted until the helper tells it; empty when nothing
  /// is known.
  static std::shared_ptr<WebHostWindow> make(const std::shared_ptr<WebHostSession>& session,
                                             const Rect& frame, const Size& assumed);
  WebHostWindow(std::shared_ptr<WebHostSession> session, WebHostId id, const Size& assumed);
  ~WebHostWindow() override;

  void setBackgroundColor(const Color& color) override;
  void setRootViewController(std::shared_ptr<ViewController> controller) override;
  void makeKeyAndVisible() override;
  bool isKeyWindow() const override;
  void setNeedsUpdateConstraints() override;

  WebHostId id() const { return id_; }
  // What the helper tells.
  void sizeChanged(const Size& size);
  void fail(const std::string& reason);

 private:
  void create(const Rect& frame);
  void failLater();
  void turnIfNeeded();
  void updateConstraints();

  const std::shared_ptr<WebHostSession> session_;
  const WebHostId id_;
  const std::shared_ptr<WebHostView> root_;
  std::shared_ptr<ViewController> controller_;
  Size size_;
  Size arranged_;  ///< What the controller was last told to arrange for.
  bool turning_ = false;
  bool constraintsAreDue_ = false;
};

}  // namespace zovk
