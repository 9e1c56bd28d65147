#include "Sound.h"

#include <array>
#include <cmath>
#include <numbers>

namespace lanterns {
namespace {

constexpr int kRate = 44100;
constexpr std::array<double, 4> kChord = {110.0, 164.81, 220.0, 329.63};  // hertz
constexpr std::array<double, 5> kChimes = {659.26, 739.99, 880.0, 987.77, 1318.51};

double tone(double hertz, double seconds) {
  return std::sin(2 * std::numbers::pi * hertz * seconds);
}

}  // namespace

Sound::Sound() {
  if (SDL_InitSubSystem(SDL_INIT_AUDIO) != 0) return;
  SDL_AudioSpec wanted{};
  wanted.freq = kRate;
  wanted.format = AUDIO_F32SYS;
  wanted.channels = 1;
  wanted.samples = 1024;
  wanted.callback = fill;
  wanted.userdata = this;
  device_ = SDL_OpenAudioDevice(nullptr, 0, &wanted, nullptr, 0);
  pause(false);
}

Sound::~Sound() {
  if (device_ != 0) SDL_CloseAudioDevice(device_);
}

void Sound::pause(bool pause) {
  if (device_ != 0) SDL_PauseAudioDevice(device_, pause ? 1 : 0);
}

void Sound::fill(void* self, Uint8* bytes, int length) {
  auto* const samples = reinterpret_cast<float*>(bytes);
  const std::size_t count = static_cast<std::size_t>(length) / sizeof(float);
  for (std::size_t i = 0; i < count; ++i) samples[i] = static_cast<Sound*>(self)->next();
}

float Sound::next() {
  now_ += 1.0 / kRate;
  if (chimesBegun_ != chimes_.load()) {
    ++chimesBegun_;
    chimeBegan_ = now_;
  }
  double chord = 0;
  for (std::size_t i = 0; i < kChord.size(); ++i) {
    const double swell = 0.6 + 0.4 * tone(0.05 + 0.013 * static_cast<double>(i), now_);
    chord += swell * tone(kChord[i], now_) / static_cast<double>(1 + i);
  }
  const double since = now_ - chimeBegan_;
  const double chime = tone(kChimes[chimesBegun_ % kChimes.size()], since) * std::exp(-3 * since);
  return static_cast<float>(0.03 * chord + 0.12 * chime);
}

}  // namespace lanterns
