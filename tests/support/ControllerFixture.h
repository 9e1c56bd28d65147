#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "presentation/ZOVKPopupViewController.h"
#include "support/EngineFixture.h"
#include "support/LogMessages.h"

namespace zovk {

/// A page controller in its own window, without the engine's display queue.
class ControllerFixture : public EngineFixture {
 protected:
  ControllerFixture() {
    engine();
    ZOVKPopupViewController::setNeedRefresh(false);
    loginState_->set({7, "open", "token", "jwt"});
    window_ = memory().userInterface.makeWindow({0, 0, 1080, 1920});
    controller_ = makeController();
  }
  ~ControllerFixture() override { window_->setRootViewController(nullptr); }

  std::shared_ptr<ZOVKPopupViewController> makeController() {
    auto controller = std::make_shared<ZOVKPopupViewController>(
        memory().shared(),
        [this](const std::optional<std::string>& data, boost::json::object* extraJson) {
          return engine().parseConditionPopupResp(data, extraJson);
        });
    controller->setLoginState("1001", "key", loginState_);
    return controller;
  }

  ZOVKPopupViewController& controller() { return *controller_; }
  LoginStateRecord& loginState() { return *loginState_; }
  std::shared_ptr<MemoryWindow> window() { return memory().userInterface.frontWindow(); }
  std::shared_ptr<MemoryLayout> layout() { return memory().userInterface.frontLayout(); }

  /// Shows the popups in one run, and runs everything that follows.
  void show(std::vector<ZOVKPopupModel> popups) {
    if (std::exchange(used_, true)) controller_ = makeController();
    controller_->showPopup(listOf(std::move(popups)), window_.get(), recordAnswer());
    settle();
  }
  /// Tears the controller down, as the display queue does when a run has ended.
  void close() { window_->setRootViewController(nullptr); }
  /// The player presses the button that is connected to `action`.
  void press(const std::string& action) {
    layout()->press(action);
    settle();
  }
  std::string sceneOnScreen() const {
    return controller_->currentModel() != nullptr ? controller_->currentModel()->scene : "";
  }

 private:
  const std::shared_ptr<LoginStateRecord> loginState_ = std::make_shared<LoginStateRecord>();
  std::shared_ptr<Window> window_;
  std::shared_ptr<ZOVKPopupViewController> controller_;
  bool used_ = false;  // a controller shows one run
};

}  // namespace zovk
