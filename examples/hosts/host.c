// A game in C: it greets the player with a popup and prints what the player chose.
// usage: host RESOURCES SERVICE
#include <poll.h>
#include <stdio.h>
#include <zovkpopup.h>

typedef struct hello_game {
  bool is_paused;
  bool is_answered;
} hello_game;

static void pause_game(void* user) {
  ((hello_game*)user)->is_paused = true;
}

static void resume_game(void* user) {
  ((hello_game*)user)->is_paused = false;
}

static void answered(int32_t code, const char* message, void* user) {
  printf("answer %d %s\n", (int)code, message);
  ((hello_game*)user)->is_answered = true;
}

// A game with a picture draws it here; this one waits for the next event, or for a frame to pass.
static void run_frame(void) {
  struct pollfd events = {zovkpopup_poll_descriptor(), POLLIN, 0};
  poll(&events, 1, 16);
  zovkpopup_pump(2000);
}

int main(int argc, char** argv) {
  if (argc != 3) return fprintf(stderr, "usage: host RESOURCES SERVICE\n"), 2;

  zovkpopup_settings settings = {0};
  settings.size = sizeof settings;
  settings.application_id = "hello-host";
  settings.resource_directory = argv[1];
  const zovkpopup_status status = zovkpopup_set_up(&settings);
  if (status != ZOVKPOPUP_OK) return fprintf(stderr, "%s\n", zovkpopup_error_message(status)), 1;

  hello_game game = {false, false};
  zovkpopup_hooks hooks = {0};
  hooks.size = sizeof hooks;
  hooks.popups_will_appear = pause_game;
  hooks.popups_did_disappear = resume_game;
  hooks.user = &game;
  zovkpopup_set_hooks(&hooks);

  zovkpopup_start(argv[2], "1", "key");
  printf("version %s, a popup: %s\n", zovkpopup_version(), zovkpopup_have_popup(1) ? "yes" : "no");
  fflush(stdout);
  zovkpopup_show_popup("hello", 0, answered, &game, NULL);
  while (!game.is_answered || game.is_paused) run_frame();

  zovkpopup_shut_down();
  return 0;
}
