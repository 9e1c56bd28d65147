#include "capi/WebWindowEvents.h"

namespace zovk {
namespace {

std::int32_t frameOf(TargetFrame frame) {
  if (frame == TargetFrame::kNone) return ZOVKPOPUP_FRAME_NEW_WINDOW;
  return frame == TargetFrame::kMain ? ZOVKPOPUP_FRAME_MAIN : ZOVKPOPUP_FRAME_SUB;
}

}  // namespace

WebWindowEvents::WebWindowEvents(const zovkpopup_web_window_settings& settings)
    : user_(userData(settings.user, settings.destroy)),
      pageChanged_(settings.page_changed, user_),
      failed_(settings.failed, user_),
      allowNavigation_(settings.allow_navigation),
      loadStarted_(settings.load_started, user_),
      loadFinished_(settings.load_finished, user_),
      loadFailed_(settings.load_failed, user_),
      pageProcessEnded_(settings.page_process_ended, user_),
      newWindowAsked_(settings.new_window_asked, user_) {}

bool WebWindowEvents::allows(const NavigationAction& action) const noexcept {
  bool allowed = true;
  const zovkpopup_status status = guarded("A callback", [&] {
    if (allowNavigation_ == nullptr) return;
    allowed = allowNavigation_(action.url.c_str(), frameOf(action.targetFrame), user_.get());
  });
  return allowed && status == ZOVKPOPUP_OK;
}

void WebWindowEvents::decidePolicyForNavigationAction(WebView& /*webView*/,
                                                      const NavigationAction& action,
                                                      const NavigationDecision& decide) {
  decide(allows(action) ? NavigationPolicy::kAllow : NavigationPolicy::kCancel);
}

void WebWindowEvents::didStartProvisionalNavigation(WebView& /*webView*/) {
  loadStarted_();
}

void WebWindowEvents::didFailProvisionalNavigation(WebView& /*webView*/, const std::string& error) {
  loadFailed_(error.c_str());
}

void WebWindowEvents::didFailNavigation(WebView& /*webView*/, const std::string& error) {
  loadFailed_(error.c_str());
}

void WebWindowEvents::didFinishNavigation(WebView& /*webView*/) {
  loadFinished_();
}

void WebWindowEvents::webContentProcessDidTerminate(WebView& /*webView*/) {
  pageProcessEnded_();
}

void WebWindowEvents::createWebView(WebView& /*webView*/, const NavigationAction& action) {
  newWindowAsked_(action.url.c_str());
}

}  // namespace zovk
