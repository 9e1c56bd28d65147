#include <utility>

#include "capi/Json.h"
#include "capi/SizedStruct.h"
#include "capi/WebWindowHandle.h"

namespace {

using zovk::Fault;
using zovk::guarded;
using zovk::textOrEmpty;
using zovk::ZOVKPopupWebWindow;

zovk::ZOVKPopupWebWindowSettings windowSettings(
    const zovkpopup_web_window_settings& given,
    const std::shared_ptr<zovk::WebWindowEvents>& events) {
  zovk::ZOVKPopupWebWindowSettings settings;
  settings.address = textOrEmpty(given.address);
  settings.pageFile = textOrEmpty(given.page_file);
  settings.frame = {given.x, given.y, given.width, given.height};
  settings.opaque = given.see_through == 0;
  const std::weak_ptr<zovk::WebWindowEvents> listener = events;
  settings.pageChanged = [listener] {
    if (const auto now = listener.lock()) now->pageChanged();
  };
  settings.failed = [listener](const std::string& reason) {
    if (const auto now = listener.lock()) now->failed(reason);
  };
  settings.navigationDelegate = listener;
  return settings;
}

/// Throws unless the window is open.
ZOVKPopupWebWindow& openWindow(zovkpopup_web_window* window) {
  zovk::require(window, "window");
  zovk::requireMainThread();
  if (!window->window->isOpen()) throw Fault{ZOVKPOPUP_ERROR_STATE, "the window is closed"};
  return *window->window;
}

}  // namespace

zovkpopup_status zovkpopup_web_window_open(const zovkpopup_web_window_settings* settings,
                                           zovkpopup_web_window** window) {
  return guarded(__func__, [&] {
    if (window != nullptr) *window = nullptr;
    zovk::require(settings, "settings");
    const auto given = zovk::readSized(*settings);
    const auto events = std::make_shared<zovk::WebWindowEvents>(given);
    zovk::require(window, "window");
    zovk::requireMainThread();
    auto opened = ZOVKPopupWebWindow::open(windowSettings(given, events));
    if (opened == nullptr) throw Fault{ZOVKPOPUP_ERROR_ARGUMENT, {}, true};
    *window = new zovkpopup_web_window{events, std::move(opened)};
  });
}

zovkpopup_status zovkpopup_web_window_close(zovkpopup_web_window* window) {
  return guarded(__func__, [&] {
    zovk::require(window, "window");
    zovk::requireMainThread();
    window->window->close();
    window->events = nullptr;
  });
}

void zovkpopup_web_window_free(zovkpopup_web_window* window) {
  if (window == nullptr) return;
  guarded(__func__, [&] {
    if (zovk::ZOVKPopupHost::pollDescriptor() >= 0) zovk::requireMainThread();
    delete window;
  });
}

bool zovkpopup_web_window_is_open(const zovkpopup_web_window* window) {
  return window != nullptr && window->window->isOpen();
}

zovkpopup_status zovkpopup_web_window_reload(zovkpopup_web_window* window) {
  return guarded(__func__, [&] { openWindow(window).reload(); });
}

zovkpopup_status zovkpopup_web_window_evaluate(zovkpopup_web_window* window, const char* script,
                                               zovkpopup_script_result result, void* user,
                                               zovkpopup_destroy destroy) {
  return guarded(__func__, [&] {
    const zovk::Callback<const char*, const char*> callback(result, zovk::userData(user, destroy));
    zovk::require(script, "script");
    openWindow(window).evaluate(script, [callback](const zovk::ScriptResult& found) {
      guarded("zovkpopup_web_window_evaluate", [&] {
        callback(zovk::JsonText(found.value).get(), found.error ? found.error->c_str() : nullptr);
      });
    });
  });
}
