// A game that loads the library by itself and tells what that takes of its main thread; with a
// scene as its last word it shows a popup, too, and tells when to look at its memory.
#define _GNU_SOURCE
#include <dlfcn.h>
#include <poll.h>
#include <stdbool.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>

#include "zovkpopup.h"

static void* library;
static bool pageIsThere;
static bool answered;

static double milliseconds(clockid_t clock) {
  struct timespec now;
  clock_gettime(clock, &now);
  return (double)now.tv_sec * 1e3 + (double)now.tv_nsec / 1e6;
}

static void* named(const char* name) {
  void* found = dlsym(library, name);
  if (found == NULL) exit(3);
  return found;
}

static void hearLog(const char* line, void* user) {
  (void)user;
  if (strstr(line, "Did finish navigation") != NULL) pageIsThere = true;
}

static void hearAnswer(int32_t code, const char* message, void* user) {
  (void)user;
  if (code != 0) fprintf(stderr, "answered %d, %s\n", (int)code, message);
  answered = true;
}

// Lets the program that started this one look at it.
static void tell(const char* what) {
  printf("%s\n", what);
  fflush(stdout);
  if (getchar() == EOF) exit(4);
}

static void pumpUntil(const bool* done) {
  __typeof__(zovkpopup_pump)* pump = (__typeof__(pump))named("zovkpopup_pump");
  __typeof__(zovkpopup_poll_descriptor)* descriptor =
      (__typeof__(descriptor))named("zovkpopup_poll_descriptor");
  while (!*done) {
    struct pollfd events = {descriptor(), POLLIN, 0};
    poll(&events, 1, 1000);
    pump(2000);
  }
}

int main(int count, char** words) {
  if (count < 4) return 2;
  const bool shows = count > 4;
  if (shows) tell("before");
  const double start = milliseconds(CLOCK_MONOTONIC);
  const double work = milliseconds(CLOCK_THREAD_CPUTIME_ID);
  library = dlopen(words[1], RTLD_LAZY);  // as programs load what they are linked with
  if (library == NULL) {
    fprintf(stderr, "%s\n", dlerror());
    return 3;
  }
  const double loaded = milliseconds(CLOCK_MONOTONIC);
  __typeof__(zovkpopup_set_up)* setUp = (__typeof__(setUp))named("zovkpopup_set_up");
  __typeof__(zovkpopup_have_popup)* havePopup =
      (__typeof__(havePopup))named("zovkpopup_have_popup");
  __typeof__(zovkpopup_show_popup)* showPopup =
      (__typeof__(showPopup))named("zovkpopup_show_popup");
  __typeof__(zovkpopup_shut_down)* shutDown = (__typeof__(shutDown))named("zovkpopup_shut_down");
  zovkpopup_settings settings;
  memset(&settings, 0, sizeof settings);
  settings.size = sizeof settings;
  settings.application_id = "zovkpopup-embedding";
  settings.resource_directory = words[2];
  settings.data_directory = words[3];
  settings.log = hearLog;
  if (setUp(&settings) != ZOVKPOPUP_OK) return 3;
  const double isSetUp = milliseconds(CLOCK_MONOTONIC);
  if (!havePopup(1)) return 3;
  const double called = milliseconds(CLOCK_MONOTONIC);
  if (!shows) {
    printf("%f %f %f %f\n", loaded - start, isSetUp - loaded, called - isSetUp,
           milliseconds(CLOCK_THREAD_CPUTIME_ID) - work);
  } else {
    const bool now = true;
    pumpUntil(&now);
    tell("set up");
    showPopup(words[4], 0, hearAnswer, NULL, NULL);
    pumpUntil(&pageIsThere);
    tell("during");
    pumpUntil(&answered);
    tell("after");
  }
  shutDown();
  return 0;
}
