#pragma once

#include <atomic>
#include <cstddef>

#include <SDL.h>

namespace lanterns {

/// The sounds of the evening, made while they are played: a low chord that never ends, and a chime
/// for every lantern. Without a sound device there is silence. Main thread only.
class Sound {
 public:
  Sound();
  ~Sound();
  Sound(const Sound&) = delete;
  Sound& operator=(const Sound&) = delete;

  void chime() { chimes_.fetch_add(1); }
  void pause(bool pause);

 private:
  static void fill(void* self, Uint8* bytes, int length);  // called on SDL's own thread
  float next();

  SDL_AudioDeviceID device_ = 0;
  std::atomic<unsigned> chimes_{0};
  // Used by the sound thread only.
  unsigned chimesBegun_ = 0;
  double now_ = 0;
  double chimeBegan_ = -60;
};

}  // namespace lanterns
