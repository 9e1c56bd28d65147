#include "capi/Callback.h"
#include "zovkpopup/ZOVKPopup.h"

namespace {

using zovk::guarded;
using zovk::textOrEmpty;
using zovk::ZOVKPopup;
using zovk::ZOVKPopupComplete;
using Complete = zovk::Callback<std::int32_t, const char*>;

/// A missing callback stays missing for the popups, which treat requests without one in their own
/// way.
ZOVKPopupComplete completeOf(const Complete& callback) {
  if (!callback) return nullptr;
  return [callback](std::int32_t code, const std::string& message) {
    callback(code, message.c_str());
  };
}

/// Asks for popups with `show`, which is handed the callback; a request that cannot be made is
/// answered at once.
template <class Show>
zovkpopup_status request(const char* function, zovkpopup_complete complete, void* user,
                         zovkpopup_destroy destroy, Show show) noexcept {
  return guarded(function, [&] {
    const Complete callback(complete, zovk::userData(user, destroy));
    const zovkpopup_status status = guarded(function, [&] {
      zovk::requirePopups();
      show(completeOf(callback));
    });
    if (status == ZOVKPOPUP_OK) return;
    callback(ZOVKPOPUP_RESULT_ERROR, zovkpopup_error_message(status));
    throw zovk::Fault{status, {}, true};
  });
}

}  // namespace

zovkpopup_status zovkpopup_start(const char* base_url, const char* game_id, const char* game_key) {
  return guarded(__func__, [&] {
    zovk::requirePopups();
    ZOVKPopup::startPopup(textOrEmpty(base_url), textOrEmpty(game_id), textOrEmpty(game_key));
  });
}

zovkpopup_status zovkpopup_set_channel_id(std::int32_t channel_id, const char* open_id,
                                          const char* token, const char* jwt_token) {
  return guarded(__func__, [&] {
    zovk::requirePopups();
    ZOVKPopup::setChannelID(channel_id, textOrEmpty(open_id), textOrEmpty(token),
                            textOrEmpty(jwt_token));
  });
}

bool zovkpopup_have_popup(std::uint64_t scene_type) {
  bool have = false;
  guarded(__func__, [&] {
    zovk::requirePopups();
    have = ZOVKPopup::havePopup(scene_type);
  });
  return have;
}

zovkpopup_status zovkpopup_show_popup(const char* scene, std::uint64_t scene_type,
                                      zovkpopup_complete complete, void* user,
                                      zovkpopup_destroy destroy) {
  return request(__func__, complete, user, destroy, [&](const ZOVKPopupComplete& answer) {
    ZOVKPopup::showPopup(textOrEmpty(scene), scene_type, answer);
  });
}

zovkpopup_status zovkpopup_show_policy(zovkpopup_complete complete, void* user,
                                       zovkpopup_destroy destroy) {
  return request(__func__, complete, user, destroy,
                 [](const ZOVKPopupComplete& answer) { ZOVKPopup::showPolicy(answer); });
}
