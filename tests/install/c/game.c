/* The smallest game in C: shows one popup and prints how it was answered.
     game RESOURCE_DIRECTORY DATA_DIRECTORY */
#include <poll.h>
#include <stdio.h>
#include <zovkpopup.h>

static void answered(int32_t code, const char* message, void* user) {
  printf("answer %d %s\n", (int)code, message);
  *(int*)user = 1;
}

int main(int count, char** arguments) {
  zovkpopup_settings settings = {0};
  int done = 0;
  if (count != 3) return 2;
  settings.size = sizeof settings;
  settings.application_id = "com.example.installed";
  settings.resource_directory = arguments[1];
  settings.data_directory = arguments[2];
  if (zovkpopup_set_up(&settings) != ZOVKPOPUP_OK) return 1;
  zovkpopup_show_popup("installed", 0, answered, &done, NULL);
  while (!done) {
    struct pollfd wake = {0};
    wake.fd = zovkpopup_poll_descriptor();
    wake.events = POLLIN;
    poll(&wake, 1, -1);
    zovkpopup_pump(2000);
  }
  return zovkpopup_shut_down() == ZOVKPOPUP_OK ? 0 : 1;
}
