#include "webwindow/WebWindowController.h"

#include <utility>

namespace zovk {

WebWindowController::WebWindowController(std::shared_ptr<WebView> page,
                                         std::function<void()> pageChanged, Failed failed)
    : page_(std::move(page)), pageChanged_(std::move(pageChanged)), failed_(std::move(failed)) {}

void WebWindowController::pageDidChange() const {
  if (const auto changed = pageChanged_) changed();  // the call may tear this down
}

void WebWindowController::loadView(std::shared_ptr<View> view) {
  view->addSubview(*page_);
  page_->pinEdgesTo(*view);
}

void WebWindowController::tearDown() {
  if (page_ == nullptr) return;
  page_->setNavigationDelegate({});
  page_->stopLoading();
  page_->removeFromSuperview();
  page_ = nullptr;
  pageChanged_ = nullptr;
  failed_ = nullptr;
}

void WebWindowController::interfaceDidFail(const std::string& reason) {
  const Failed failed = failed_;  // the call tears this down
  if (failed) failed(reason);
}

}  // namespace zovk
