#include "bridge/ZOVKPopupWebviewMessageHandler.h"
#include "presentation/ActionScope.h"
#include "presentation/ButtonRule.h"
#include "presentation/ZOVKPopupViewController.h"
#include "storage/ZOVKPopupFileManager.h"
#include "support/Outlets.h"

namespace zovk {
void ZOVKPopupViewController::loadView(std::shared_ptr<View> view) {
  view_ = std::move(view);
  viewDidLoad();
}

void ZOVKPopupViewController::viewDidLoad() {
  if (auto* const files = ZOVKPopupFileManager::sharedInstance()) {
    screen_.setResources(files->getResourceBundle());
  }
  loadSubviews();
  showPopup();
}

void ZOVKPopupViewController::loadSubviews() {
  screen_.load(*view_, weak_from_this());
  if (webView_ == nullptr) createPopupWebView();
  screen_.placePage(*webView_);
  screen_.setButtonImages();
  const PopupPointer current = currentModel();
  if (current == nullptr) return;
  applyButtonRule();
  if (current->scene == kPolicyScene && window_ != nullptr) {
    window_->setNeedsUpdateConstraints();
  }
}

void ZOVKPopupViewController::createPopupWebView() {
  // The handler holds the controller, and the web view the handler, until the run is torn down.
  auto handler = std::make_shared<ZOVKPopupWebviewMessageHandler>();
  handler->setCallback(
      [self = shared_from_this()](std::int32_t code, const boost::json::value& message) {
        self->handleCallbackMessage(code, message);
      });
  WebViewConfiguration configuration;
  configuration.scriptMessageHandlers = {
      {ZOVKPopupWebviewMessageHandler::kPopupChannel, handler},
      {ZOVKPopupWebviewMessageHandler::kOpenSdkChannel, handler}};
  configuration.allowsInlineMediaPlayback = true;
  configuration.prefersMobileContent = true;
  configuration.bounces = true;
  configuration.showsVerticalScrollIndicator = false;
  configuration.adjustsContentInset = false;
  configuration.opaque = false;
  webView_ = platform_->userInterface.makeWebView(configuration);
  webView_->setNavigationDelegate(weak_from_this());
  webView_->setBackgroundColor(Color::clear());
}

void ZOVKPopupViewController::applyButtonRule() {
  if (!screen_.isLoaded()) return;
  screen_.apply(buttonRule(*currentModel(), needRefresh_));
  offerWayOut();
}

// A page that hangs cannot be asked to close itself. Where answer buttons stand below it they are a
// way out, and the corner's skip would be an answer that the player did not give.
void ZOVKPopupViewController::offerWayOut() {
  if (!pageHangs_ || !screen_.isLoaded() || hasAnswerButtons(*currentModel())) return;
  screen_.setHidden(outlets::kCross, false);
}

void ZOVKPopupViewController::updateViewConstraints() {
  if (view_ == nullptr || !screen_.isLoaded()) return;
  screen_.pinCornerButtons(*view_);
  const PopupPointer current = currentModel();
  if (current == nullptr || !hasAnswerButtons(*current) || webView_ == nullptr) return;
  screen_.endPageAboveAnswers(*webView_);
}

void ZOVKPopupViewController::viewWillTransitionToSize(const Size& /*size*/,
                                                       TransitionCoordinator& coordinator) {
  constexpr DebugLog debug = controllerLog("ZOVKPopupViewController::viewWillTransitionToSize");
  const auto alongside = [this, debug] {
    debug("viewWillTransitionToSize called");
    if (tornDown_ || view_ == nullptr) return;
    screen_.beginLeaving();
    loadSubviews();
    if (window_ != nullptr) window_->setNeedsUpdateConstraints();
  };
  coordinator.animateAlongside(alongside, [self = shared_from_this(), debug] {
    self->screen_.removeLeaving();
    debug("did remove the viewToRemove");
  });
}

std::uint32_t ZOVKPopupViewController::supportedInterfaceOrientations() const {
  return kInterfacePortrait | kInterfacePortraitUpsideDown | kInterfaceLandscapeRight |
         kInterfaceLandscapeLeft;
}

// A swipe that a page asks for must not end in the system's own panels.
std::uint32_t ZOVKPopupViewController::preferredScreenEdgesDeferringSystemGestures() const {
  return kEdgeTop | kEdgeLeft | kEdgeBottom | kEdgeRight;
}

void ZOVKPopupViewController::performAction(const std::string& action) {
  const ActionScope scope(*this);
  if (tornDown_) return;
  if (action == "rejectButtonDidClicked") rejectButtonDidClicked();
  if (action == "confirmButtonDidClicked") confirmButtonDidClicked();
  if (action == "returnButtonClicked") returnButtonClicked();
  if (action == "crossButtonClicked") crossButtonClicked();
  if (action == "refreshButtonClicked") refreshButtonClicked();
}

}  // namespace zovk
