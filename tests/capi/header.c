// Read as C99, with every warning an error: what a game in C sees of the header.
#include "capi/header.h"

#include "zovkpopup.h"

#define HEADER_COUNT(array) (sizeof(array) / sizeof((array)[0]))

header_sizes header_sizes_in_c(void) {
  header_sizes sizes = {sizeof(zovkpopup_settings), sizeof(zovkpopup_hooks),
                        sizeof(zovkpopup_popup_event), sizeof(zovkpopup_explained_popup),
                        sizeof(zovkpopup_web_window_settings)};
  return sizes;
}

const char* header_set_up_twice_in_c(const char* data_directory) {
  zovkpopup_settings settings = {0};
  settings.size = sizeof settings;
  settings.application_id = "zovkpopup-test";
  settings.data_directory = data_directory;
  if (zovkpopup_set_up(&settings) != ZOVKPOPUP_OK) return "not set up at all";
  return zovkpopup_error_message(zovkpopup_set_up(&settings));
}

// Every function is there, with these names, for a program in C.
size_t header_functions_in_c(void) {
  typedef void (*function)(void);
  const function all[] = {
      (function)zovkpopup_version,
      (function)zovkpopup_version_number,
      (function)zovkpopup_error_message,
      (function)zovkpopup_set_up,
      (function)zovkpopup_pump,
      (function)zovkpopup_poll_descriptor,
      (function)zovkpopup_set_hooks,
      (function)zovkpopup_hold_popups,
      (function)zovkpopup_release_popups,
      (function)zovkpopup_game_pad_did_press,
      (function)zovkpopup_game_window_did_become_key,
      (function)zovkpopup_game_window_did_resign_key,
      (function)zovkpopup_game_window_did_resize,
      (function)zovkpopup_shut_down,
      (function)zovkpopup_start,
      (function)zovkpopup_set_channel_id,
      (function)zovkpopup_have_popup,
      (function)zovkpopup_show_popup,
      (function)zovkpopup_show_policy,
      (function)zovkpopup_explain,
      (function)zovkpopup_explanation_sentence,
      (function)zovkpopup_explanation_popup_count,
      (function)zovkpopup_explanation_popup,
      (function)zovkpopup_explanation_free,
      (function)zovkpopup_web_window_open,
      (function)zovkpopup_web_window_close,
      (function)zovkpopup_web_window_free,
      (function)zovkpopup_web_window_is_open,
      (function)zovkpopup_web_window_reload,
      (function)zovkpopup_web_window_evaluate,
      (function)zovkpopup_response_send,
      (function)zovkpopup_response_free,
      (function)zovkpopup_web_window_register_handler,
      (function)zovkpopup_web_window_remove_handler,
      (function)zovkpopup_web_window_call_handler,
      (function)zovkpopup_web_window_send,
      (function)zovkpopup_web_window_reset_bridge,
      (function)zovkpopup_web_window_send_held,
      (function)zovkpopup_web_window_disable_alert_box_safety_timeout,
      (function)zovkpopup_log_bridges,
  };
  return HEADER_COUNT(all);
}
