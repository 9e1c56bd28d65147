#include "bridge/ZOVKPopupWebviewMessageHandler.h"
#include "presentation/ActionScope.h"
#include "presentation/ButtonRule.h"
#include "presentation/ZOVKPopupViewController.h"
#include "storage/ZOVKPopupFileManager.h"

namespace zovk {
namespace {

constexpr const char* kPortraitLayout = "ZOVKPopupView";
constexpr const char* kLandscapeLayout = "ZOVKPopupViewLandscape";
constexpr Color kDimming = Color::black(0.5);

}  // namespace

void ZOVKPopupViewController::loadView(std::shared_ptr<View> view) {
  view_ = std::move(view);
  viewDidLoad();
}

void ZOVKPopupViewController::viewDidLoad() {
  if (auto* const files = ZOVKPopupFileManager::sharedInstance()) {
    resourceBundle_ = files->getResourceBundle();
  }
  loadSubviews();
  showPopup();
}

void ZOVKPopupViewController::loadSubviews() {
  const std::string bundlePath = resourceBundle_ != nullptr ? resourceBundle_->resourcePath() : "";
  xibView_ = platform_->userInterface.loadLayout(bundlePath, getNibFileName(), weak_from_this());
  view_->addSubview(*xibView_->root());
  addConstraintAnchors(*view_, *xibView_->root());
  if (webView_ == nullptr) createPopupWebView();
  const auto contentView = outlet("contentView");
  contentView->addSubview(*webView_);
  addConstraintAnchors(*contentView, *webView_);
  contentView->sendSubviewToBack(*webView_);
  contentView->setClipsToBounds(true);
  setButtonImage();
  const PopupPointer current = currentModel();
  if (current == nullptr) return;
  applyButtonRule();
  if (current->scene == kPolicyScene && window_ != nullptr) {
    window_->setNeedsUpdateConstraints();
  }
}

std::string ZOVKPopupViewController::getNibFileName() const {
  const auto isPortrait = [](Orientation orientation) {
    return orientation == Orientation::kPortrait || orientation == Orientation::kPortraitUpsideDown;
  };
  const Orientation held = platform_->device.orientation();
  if (isPortrait(held)) return kPortraitLayout;
  if (held == Orientation::kLandscapeLeft || held == Orientation::kLandscapeRight) {
    return kLandscapeLayout;
  }
  return isPortrait(platform_->device.statusBarOrientation()) ? kPortraitLayout : kLandscapeLayout;
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

std::shared_ptr<View> ZOVKPopupViewController::outlet(const std::string& name) const {
  return xibView_->outlet(name);
}

void ZOVKPopupViewController::setButtonImage() {
  const auto setImage = [this](const char* button, const char* file) {
    if (resourceBundle_ == nullptr) return;
    outlet(button)->setImage(resourceBundle_->resourcePath() + "/" + file);
  };
  setImage("refreshBtn", "refresh.png");
  setImage("returnBtn", "returnNew.png");
  setImage("crossBtn", "close.png");
}

void ZOVKPopupViewController::addConstraintAnchors(const View& container, View& subView) {
  subView.pinEdgesTo(container);
}

void ZOVKPopupViewController::applyButtonRule() {
  if (xibView_ == nullptr) return;
  const ButtonChanges changes = buttonRule(*currentModel(), needRefresh_);
  for (const std::string& name : changes.hide) outlet(name)->setHidden(true);
  for (const std::string& name : changes.show) outlet(name)->setHidden(false);
  if (changes.dimContent) outlet("contentView")->setBackgroundColor(kDimming);
  offerWayOut();
}

// A page that hangs cannot be asked to close itself. Where answer buttons stand below it they are a
// way out, and the corner's skip would be an answer that the player did not give.
void ZOVKPopupViewController::offerWayOut() {
  if (!pageHangs_ || xibView_ == nullptr || hasAnswerButtons(*currentModel())) return;
  outlet("crossBtn")->setHidden(false);
}

void ZOVKPopupViewController::updateViewConstraints() {
  constexpr int kLastVersionWithoutSafeArea = 10;
  constexpr double kStatusBarOffset = 44;
  if (view_ == nullptr || xibView_ == nullptr) return;
  const bool safeArea = platform_->device.systemMajorVersion() > kLastVersionWithoutSafeArea;
  for (const char* button : {"crossBtn", "returnBtn"}) {
    outlet(button)->pinTopTo(*view_, safeArea, safeArea ? 0 : kStatusBarOffset);
  }
  const PopupPointer current = currentModel();
  if (current == nullptr || !hasAnswerButtons(*current) || webView_ == nullptr) return;
  const auto answers = outlet("stackView");
  const auto loneAnswer = outlet("aloneConfirmStackView");
  webView_->pinBottomToTopOfFirst({answers.get(), loneAnswer.get()});
}

void ZOVKPopupViewController::viewWillTransitionToSize(const Size& /*size*/,
                                                       TransitionCoordinator& coordinator) {
  constexpr DebugLog debug = controllerLog("ZOVKPopupViewController::viewWillTransitionToSize");
  const auto alongside = [this, debug] {
    debug("viewWillTransitionToSize called");
    if (tornDown_ || view_ == nullptr) return;
    if (xibView_ != nullptr) {
      outlet("contentView")->setAlpha(0);
      viewToRemove_ = xibView_;
    }
    loadSubviews();
    if (window_ != nullptr) window_->setNeedsUpdateConstraints();
  };
  coordinator.animateAlongside(alongside, [self = shared_from_this(), debug] {
    if (self->viewToRemove_ != nullptr) self->viewToRemove_->root()->removeFromSuperview();
    self->viewToRemove_ = nullptr;
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
