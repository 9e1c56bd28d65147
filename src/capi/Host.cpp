#include "zovkpopup/Host.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <string_view>

#include "capi/Callback.h"
#include "capi/SizedStruct.h"

namespace {

using zovk::guarded;
using zovk::textOrEmpty;
using zovk::ZOVKPopupHost;

/// A number of a picture's; one that is too large stays so.
int sideOf(std::uint64_t side) {
  constexpr std::uint64_t kMost = std::numeric_limits<int>::max();
  return static_cast<int>(std::min(side, kMost));
}

zovk::ZOVKPopupPicture pictureOf(const zovkpopup_picture& given) {
  zovk::ZOVKPopupPicture picture;
  picture.pixels = given.pixels;
  picture.width = sideOf(given.width);
  picture.height = sideOf(given.height);
  picture.stride = static_cast<std::ptrdiff_t>(given.stride);
  constexpr std::uint64_t kMost = std::numeric_limits<std::uint8_t>::max();
  picture.format = static_cast<zovk::ZOVKPopupPixels>(std::min(given.format, kMost));
  return picture;
}

zovk::ZOVKPopupHostSettings hostSettings(const zovkpopup_settings& given) {
  zovk::ZOVKPopupHostSettings settings;
  const zovk::Callback<const char*> log(given.log,
                                        zovk::userData(given.log_user, given.log_destroy));
  if (log) settings.logSink = [log](std::string_view line) { log(std::string(line).c_str()); };
  settings.applicationId = textOrEmpty(given.application_id);
  settings.resourceDirectory = textOrEmpty(given.resource_directory);
  settings.dataDirectory = textOrEmpty(given.data_directory);
  settings.helperPath = textOrEmpty(given.helper_path);
  settings.nativeWindow = given.native_window;
  settings.certificateAuthority = textOrEmpty(given.certificate_authority);
  constexpr std::uint64_t kMost = std::numeric_limits<std::uint32_t>::max();
  const auto pageMemory = static_cast<std::uint32_t>(std::min(given.page_memory, kMost));
  if (pageMemory != 0) settings.pageMemory = pageMemory;
  const auto readySeconds = static_cast<std::uint32_t>(std::min(given.ready_seconds, kMost));
  if (readySeconds != 0) settings.readySeconds = readySeconds;
  settings.drawing = textOrEmpty(given.drawing);
  settings.gameWindow = textOrEmpty(given.game_window);
  settings.popupWindow = textOrEmpty(given.popup_window);
  const zovk::Callback<zovkpopup_picture*> backdrop(
      given.backdrop, zovk::userData(given.backdrop_user, given.backdrop_destroy));
  if (backdrop) {
    settings.backdrop = [backdrop] {
      zovkpopup_picture picture{};
      picture.size = sizeof picture;
      backdrop(&picture);
      return pictureOf(picture);
    };
  }
  return settings;
}

/// Returns an empty function for no listener: the engine then looks for no reasons.
std::function<void(const zovk::ZOVKPopupEvent&)> listenerOf(zovkpopup_popup_listener listener,
                                                            const zovk::UserData& user) {
  if (listener == nullptr) return nullptr;
  const zovk::Callback<const zovkpopup_popup_event*> call(listener, user);
  return [call](const zovk::ZOVKPopupEvent& event) {
    const zovkpopup_popup_event given = {sizeof(zovkpopup_popup_event),
                                         static_cast<std::uint64_t>(event.kind),
                                         event.scene.c_str(),
                                         event.pop_id,
                                         event.result,
                                         event.message.c_str(),
                                         event.reason.c_str(),
                                         event.sentence.c_str()};
    call(&given);
  };
}

/// For calls that have already written to the log why they failed.
void check(bool success) {
  if (!success) throw zovk::Fault{ZOVKPOPUP_ERROR_STATE, {}, true};
}

}  // namespace

zovkpopup_status zovkpopup_set_up(const zovkpopup_settings* settings) {
  return guarded(__func__, [&] {
    check(ZOVKPopupHost::setUp(
        hostSettings(settings == nullptr ? zovkpopup_settings{} : zovk::readSized(*settings))));
    zovk::hostIsSetUp();
  });
}

zovkpopup_status zovkpopup_pump(std::uint32_t budget_microseconds) {
  return guarded(__func__, [&] {
    if (ZOVKPopupHost::pollDescriptor() < 0) check(false);  // without a line for each frame
    zovk::requireMainThread();
    ZOVKPopupHost::pump(std::chrono::microseconds(budget_microseconds));
  });
}

int zovkpopup_poll_descriptor(void) {
  return ZOVKPopupHost::pollDescriptor();
}

zovkpopup_status zovkpopup_set_hooks(const zovkpopup_hooks* hooks) {
  return guarded(__func__, [&] {
    zovk::require(hooks, "hooks");
    const auto given = zovk::readSized(*hooks);
    const auto user = zovk::userData(given.user, given.destroy);
    zovk::requirePopups();
    check(ZOVKPopupHost::setHooks({zovk::Callback<>(given.popups_will_appear, user),
                                   zovk::Callback<>(given.popups_did_disappear, user),
                                   listenerOf(given.popup_event, user)}));
  });
}

zovkpopup_status zovkpopup_hold_popups(void) {
  return guarded(__func__, [] {
    zovk::requirePopups();
    check(ZOVKPopupHost::holdPopups());
  });
}

zovkpopup_status zovkpopup_release_popups(void) {
  return guarded(__func__, [] {
    zovk::requirePopups();
    check(ZOVKPopupHost::releasePopups());
  });
}

zovkpopup_status zovkpopup_game_window_did_become_key(void) {
  return guarded(__func__, [] {
    zovk::requireMainThread();
    ZOVKPopupHost::gameWindowDidBecomeKey();
  });
}

zovkpopup_status zovkpopup_game_window_did_resign_key(void) {
  return guarded(__func__, [] {
    zovk::requireMainThread();
    ZOVKPopupHost::gameWindowDidResignKey();
  });
}

zovkpopup_status zovkpopup_game_pad_did_press(uint32_t press, const char* press_name,
                                              const char* leave_name) {
  return guarded(__func__, [=] {
    zovk::requireMainThread();
    if (press > ZOVKPOPUP_GAME_PAD_LEAVE) {
      throw zovk::Fault{ZOVKPOPUP_ERROR_ARGUMENT, "there is no such press"};
    }
    ZOVKPopupHost::gamePadDidPress(static_cast<zovk::ZOVKPopupGamePad>(press),
                                   press_name == nullptr ? "A" : press_name,
                                   leave_name == nullptr ? "B" : leave_name);
  });
}

zovkpopup_status zovkpopup_game_window_did_resize(std::int32_t width, std::int32_t height) {
  return guarded(__func__, [&] {
    zovk::requireMainThread();
    ZOVKPopupHost::gameWindowDidResize(width, height);
  });
}

zovkpopup_status zovkpopup_shut_down(void) {
  return guarded(__func__, [] {
    if (ZOVKPopupHost::pollDescriptor() < 0) return;
    zovk::requireMainThread();
    ZOVKPopupHost::shutDown();
  });
}
