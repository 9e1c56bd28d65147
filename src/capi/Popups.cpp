#include "capi/Callback.h"
#include "engine/ZOVKPopup.h"

namespace {

using zovk::guarded;
using zovk::textOrEmpty;
using zovk::ZOVKPopup;
using Complete = zovk::Callback<std::int32_t, const char*>;

/// Asks for popups with `show`, which is handed the callback; a request that cannot be made is
/// answered at once.
template <class Show>
zovkpopup_status request(const char* function, zovkpopup_complete complete, void* user,
                         zovkpopup_destroy destroy, Show show) noexcept {
  return guarded(function, [&] {
    const Complete callback(complete, zovk::userData(user, destroy));
    const zovkpopup_status status = guarded(function, [&] {
      zovk::requirePopups();
      show([callback](std::int32_t code, const std::string& message) {
        callback(code, message.c_str());
      });
    });
    if (status == ZOVKPOPUP_OK) return;
    callback(-1, zovkpopup_error_message(status));
    throw zovk::Fault{status, {}, true};
  });
}

}  // namespace

zovkpopup_status zovkpopup_start(const char* base_url, const char* game_id, const char* game_key) {
  return guarded(__func__, [&] {
    zovk::requirePopups();
    zovk::require(base_url, "base_url");
    zovk::require(game_id, "game_id");
    zovk::require(game_key, "game_key");
    ZOVKPopup::startPopup(base_url, game_id, game_key);
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
  return request(__func__, complete, user, destroy, [&](const zovk::ZOVKPopupComplete& answer) {
    ZOVKPopup::showPopup(textOrEmpty(scene), scene_type, answer);
  });
}

zovkpopup_status zovkpopup_show_policy(zovkpopup_complete complete, void* user,
                                       zovkpopup_destroy destroy) {
  return request(__func__, complete, user, destroy,
                 [](const zovk::ZOVKPopupComplete& answer) { ZOVKPopup::showPolicy(answer); });
}
