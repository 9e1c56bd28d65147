#include <memory>

#include "capi/Json.h"
#include "capi/Response.h"
#include "capi/WebWindowHandle.h"
#include "zovkpopup/Bridge.h"

namespace {

using zovk::guarded;
using Bridge = zovk::ZOVKPopupWKWebViewJavascriptBridge;
using Answer = zovk::Callback<const char*>;

/// Returns the bridge of an open window. Throws if the window is closed.
Bridge& openBridge(zovkpopup_web_window* window) {
  zovk::require(window, "window");
  zovk::requireHost();
  Bridge& bridge = window->window->bridge();
  if (!bridge.base().isClosed()) return bridge;
  throw zovk::Fault{ZOVKPOPUP_ERROR_STATE, "the window is closed"};
}

Bridge::ResponseCallback answerCallback(const Answer& answer) {
  if (!answer) return nullptr;
  return [answer](const zovk::JsonValue& data) {
    guarded("A callback", [&] { answer(zovk::JsonText(data).get()); });
  };
}

}  // namespace

zovkpopup_status zovkpopup_response_send(zovkpopup_response* response, const char* json) {
  return guarded(__func__, [&] {
    zovk::require(response, "response");
    const auto value = zovk::valueOf(json);
    if (response->isSent.exchange(true)) {
      throw zovk::Fault{ZOVKPOPUP_ERROR_STATE, "the page has its answer"};
    }
    response->respond(value);
  });
}

void zovkpopup_response_free(zovkpopup_response* response) {
  guarded(__func__, [&] { delete response; });
}

zovkpopup_status zovkpopup_web_window_register_handler(zovkpopup_web_window* window,
                                                       const char* name, zovkpopup_handler handler,
                                                       void* user, zovkpopup_destroy destroy) {
  return guarded(__func__, [&] {
    const auto kept = zovk::userData(user, destroy);
    zovk::require(name, "name");
    zovk::require(handler, "handler");
    openBridge(window).registerHandler(
        name, [handler, kept](const zovk::JsonValue& data, const auto& respond) {
          guarded("A callback", [&] {
            const zovk::JsonText json(data);
            auto response = std::make_unique<zovkpopup_response>(respond);
            handler(json.get(), response.release(), kept.get());
          });
        });
  });
}

zovkpopup_status zovkpopup_web_window_remove_handler(zovkpopup_web_window* window,
                                                     const char* name) {
  return guarded(__func__, [&] {
    zovk::require(name, "name");
    openBridge(window).removeHandler(name);
  });
}

zovkpopup_status zovkpopup_web_window_call_handler(zovkpopup_web_window* window, const char* name,
                                                   const char* json, zovkpopup_answer answer,
                                                   void* user, zovkpopup_destroy destroy) {
  return guarded(__func__, [&] {
    const Answer callback(answer, zovk::userData(user, destroy));
    zovk::require(name, "name");
    openBridge(window).callHandler(name, zovk::valueOf(json), answerCallback(callback));
  });
}

zovkpopup_status zovkpopup_web_window_send(zovkpopup_web_window* window, const char* json,
                                           zovkpopup_answer answer, void* user,
                                           zovkpopup_destroy destroy) {
  return guarded(__func__, [&] {
    const Answer callback(answer, zovk::userData(user, destroy));
    openBridge(window).send(zovk::valueOf(json), answerCallback(callback));
  });
}

zovkpopup_status zovkpopup_web_window_reset_bridge(zovkpopup_web_window* window) {
  return guarded(__func__, [&] { openBridge(window).reset(); });
}

zovkpopup_status zovkpopup_web_window_send_held(zovkpopup_web_window* window) {
  return guarded(__func__, [&] { openBridge(window).setupMessageQueue(); });
}

zovkpopup_status zovkpopup_web_window_disable_alert_box_safety_timeout(
    zovkpopup_web_window* window) {
  return guarded(__func__, [&] { openBridge(window).disableJavscriptAlertBoxSafetyTimeout(); });
}

zovkpopup_status zovkpopup_log_bridges(std::int32_t longest_message) {
  return guarded(__func__, [&] {
    Bridge::Base::setLogMaxLength(longest_message);
    Bridge::enableLogging();
  });
}
