#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include <boost/json/object.hpp>
#include <boost/json/value.hpp>

#include "logging/ZPLogger.h"
#include "network/ZOVKPopupNetwork.h"
#include "presentation/OwnPage.h"
#include "presentation/PopupScreen.h"
#include "record/LoginStateRecord.h"
#include "record/PlayerRequest.h"
#include "record/ZOVKPopupModel.h"
#include "support/Guarded.h"
#include "zovkpopup/Hooks.h"
#include "zovkpopup/Result.h"
#include "zovkpopup/platform/Platform.h"

namespace zovk {

/// The screen that shows one run of popups, one after another in a single web view.
///
/// Main thread only, except that the answer of `queryConditionPopup` may come on any thread. The
/// window owns the controller. Page, handler, callback, controller and web view own one another,
/// and `tearDown` breaks that cycle. The completion is copied and called at most once. Failures to
/// load are logged. Only a user interface that is lost for good, or a page whose process cannot
/// run, ends the run, with -1 and the reason.
class ZOVKPopupViewController : public ViewController,
                                public WebViewDelegate,
                                public LayoutOwner,
                                public std::enable_shared_from_this<ZOVKPopupViewController> {
 public:
  using Complete = std::function<void(std::int32_t code, const std::string& message)>;
  /// Returns whether a condition's answer wants the popup to be shown, and copies its extra
  /// parameters.
  using ConditionParser =
      std::function<bool(const std::optional<std::string>& data, boost::json::object* extraJson)>;

  ZOVKPopupViewController(std::shared_ptr<Platform> platform, ConditionParser parseCondition);

  /// The name speaks of the login state although the first argument is the game. The record is
  /// shared: every request of the run reads it.
  void setLoginState(const std::string& gameID, const std::string& gameKey,
                     std::shared_ptr<const LoginStateRecord> loginState);
  /// Sets the function that receives what happens to each popup. Call it before `showPopup`. The
  /// function is called on the main thread, and on any thread for the answer of a condition.
  using EventListener = std::function<void(ZOVKPopupEvent event)>;
  void setEventListener(EventListener listener) { eventListener_ = std::move(listener); }
  /// Takes the popups in showing order, and makes this the window's root. An empty list, an empty
  /// callback and a null window each count as missing. Without a window nothing is shown.
  void showPopup(const PopupList& popups, Window* window, const Complete& complete);

  // The steps of a run.
  PopupPointer getPopupModel();
  void showPopup();
  std::string getLoadUri(const std::string& uri, const boost::json::object& extraJsonDic) const;
  void loadPopupUri(const PopupPointer& popup, const std::string& uriFinal);
  void finishShow();
  void queryConditionPopup(const PopupPointer& popup);

  // Actions of the player.
  void handleCallbackMessage(std::int32_t action, const boost::json::value& callbackMessage);
  void handleWebViewJsMessage(std::int32_t action,
                              const std::optional<boost::json::value>& jsMessage);
  void startReportData(const boost::json::object& resultRecord);
  void rejectButtonDidClicked() { handleCallbackMessage(2, ""); }
  void confirmButtonDidClicked() { handleCallbackMessage(ZOVKPopupResultSkip, ""); }
  void returnButtonClicked() { handleCallbackMessage(2, ""); }
  void crossButtonClicked() { handleCallbackMessage(ZOVKPopupResultSkip, ""); }
  void refreshButtonClicked();

  // ViewController
  void loadView(std::shared_ptr<View> view) override;
  void updateViewConstraints() override;
  void viewWillTransitionToSize(const Size& size, TransitionCoordinator& coordinator) override;
  std::uint32_t supportedInterfaceOrientations() const override;
  std::uint32_t preferredScreenEdgesDeferringSystemGestures() const override;
  void tearDown() override;
  void interfaceDidFail(const std::string& reason) override;

  // LayoutOwner
  void performAction(const std::string& action) override;

  // WebViewDelegate
  void decidePolicyForNavigationAction(WebView& webView, const NavigationAction& action,
                                       const NavigationDecision& decide) override;
  void didStartProvisionalNavigation(WebView& webView) override;
  void didFailProvisionalNavigation(WebView& webView, const std::string& error) override;
  void didFailNavigation(WebView& webView, const std::string& error) override;
  void didFinishNavigation(WebView& webView) override;
  void webContentProcessDidTerminate(WebView& webView) override;
  void webContentProcessDidFail(WebView& webView, const std::string& reason) override;
  void webContentProcessResponsivenessDidChange(WebView& webView, bool responsive) override;
  void createWebView(WebView& webView, const NavigationAction& action) override;
  void didResolveAddress(WebView& webView, const std::string& asked,
                         const std::string& address) override;

  // Layout
  void viewDidLoad();
  void loadSubviews();
  std::string getNibFileName() const { return screen_.layoutName(); }

  /// Returns the popup on screen; null before the first and after the end. Any thread.
  PopupPointer currentModel() const { return currentModel_.get(); }
  const std::deque<PopupPointer>& popupArr() const { return popupArr_; }
  /// Returns whether the last allowed navigation led to a popup's own page; shared by all
  /// controllers.
  static bool needRefresh() { return needRefresh_; }
  static void setNeedRefresh(bool needRefresh) { needRefresh_ = needRefresh; }

 private:
  // While one is alive, the end of the run waits until the action that caused it is finished.
  class ActionScope;

  void showNextPopup();
  void loadPage(const ZOVKPopupModel& popup);
  void createPopupWebView();
  void applyButtonRule();
  void offerWayOut();
  void callComplete(std::int32_t code, const std::string& message);
  void notify(ZOVKPopupEvent event) const;
  void notifyAnswered(std::int32_t action, const std::string& resultText);
  void notifyShown();
  void notifyPageFailed(const std::string& error);
  bool accountFor(const PopupPointer& popup);
  void notifyNotShown(const PopupPointer& popup, const std::string& reason,
                      const std::string& sentence);
  void notifyNotWanted(const PopupPointer& asked, const char* reason, const char* sentence);
  void notifySkippedOver();
  void notifyRequestEnded() const;
  void notifyDisplayFailed(const std::string& error);
  void skip(const std::string& resultText);
  void commit(const boost::json::object& resultRecord);
  void leaveForSystem(const std::string& url, const NavigationDecision& decide);
  void decideByPrefix(const std::string& url, const NavigationDecision& decide);
  void allowOwnFile(const std::string& address);
  bool isOwnPage(const std::string& url) const;
  void handleConditionAnswer(const PopupPointer& asked, bool success,
                             const std::optional<std::string>& data);
  void letGo();

  inline static bool needRefresh_ = false;

  std::shared_ptr<Platform> platform_;
  ConditionParser parseCondition_;
  PlayerIdentity player_;
  Complete complete_;
  EventListener eventListener_;
  std::deque<PopupPointer> popupArr_;
  // Also read and set by a condition's answer, which comes on the session's thread.
  Guarded<PopupPointer> currentModel_;
  Guarded<PopupPointer> modelToRefresh_;
  OwnPage ownPage_;
  std::string uriToRefresh_;
  std::shared_ptr<View> view_;
  PopupScreen screen_;
  std::shared_ptr<WebView> webView_;
  Window* window_ = nullptr;
  bool pageHangs_ = false;
  // The popups that the game has heard the end of. Also set by a condition's answer.
  Guarded<std::set<PopupPointer>> accountedFor_;
  // Each of these events is sent once for a popup.
  bool shownIsNotified_ = false;
  bool failureIsNotified_ = false;
  bool answerIsNotified_ = false;
  int runningActions_ = 0;
  bool tornDown_ = false;
};

/// The debug lines of one operation of the controller.
constexpr DebugLog controllerLog(const char* function) {
  return {"ZOVKPopupViewController", function};
}

}  // namespace zovk
