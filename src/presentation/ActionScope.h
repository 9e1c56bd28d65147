#pragma once

#include "presentation/ZOVKPopupViewController.h"

namespace zovk {

class ZOVKPopupViewController::ActionScope {
 public:
  explicit ActionScope(ZOVKPopupViewController& controller)
      : controller_(controller.shared_from_this()) {
    ++controller_->runningActions_;
  }
  ~ActionScope() {
    if (--controller_->runningActions_ == 0 && controller_->tornDown_) controller_->letGo();
  }
  ActionScope(const ActionScope&) = delete;
  ActionScope& operator=(const ActionScope&) = delete;

 private:
  std::shared_ptr<ZOVKPopupViewController> controller_;
};

}  // namespace zovk
