#pragma once

#include <vector>

#include <SDL.h>

namespace lanterns {

/// Bells, made as they are played. Silent where there is nothing to play on. Main thread only.
class Sound {
 public:
  Sound();
  ~Sound();
  Sound(const Sound&) = delete;
  Sound& operator=(const Sound&) = delete;

  /// Rings a bell; higher numbers ring higher.
  void ring(int note);
  /// Stops in the middle of a tone; it goes on from there.
  void setPaused(bool paused);

 private:
  struct Bell {
    float pitch;  // turns in one sample
    float turns = 0;
    float loudness = 0.2F;
  };

  static void fill(void* self, Uint8* bytes, int length);
  float nextSample();

  SDL_AudioDeviceID device_ = 0;
  std::vector<Bell> bells_;  // the device's thread rings them; it is locked out for changes
};

}  // namespace lanterns
