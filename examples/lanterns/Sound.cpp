#include "Sound.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace lanterns {
namespace {

constexpr int kSamplesASecond = 44'100;
constexpr float kFading = 0.99993F;  // of the loudness, from one sample to the next
constexpr float kSilence = 0.001F;
constexpr float kLowest = 392;  // hertz
// Half tones of a scale on which any two notes sound well together.
constexpr std::array<int, 5> kScale = {0, 2, 4, 7, 9};

float pitchOf(int note) {
  const auto place = static_cast<std::size_t>(note) % (2 * kScale.size());
  const int octave = place < kScale.size() ? 0 : 12;
  const auto halfTones = static_cast<float>(kScale.at(place % kScale.size()) + octave);
  return kLowest * std::exp2(halfTones / 12) / kSamplesASecond;
}

float sine(float turns) {
  return std::sin(2 * std::numbers::pi_v<float> * turns);
}

}  // namespace

Sound::Sound() {
  if (SDL_InitSubSystem(SDL_INIT_AUDIO) != 0) return;
  SDL_AudioSpec wanted{};
  wanted.freq = kSamplesASecond;
  wanted.format = AUDIO_F32SYS;
  wanted.channels = 1;
  wanted.samples = 1024;
  wanted.callback = fill;
  wanted.userdata = this;
  device_ = SDL_OpenAudioDevice(nullptr, 0, &wanted, nullptr, 0);
  setPaused(false);
}

Sound::~Sound() {
  if (device_ != 0) SDL_CloseAudioDevice(device_);
}

void Sound::ring(int note) {
  if (device_ == 0) return;
  SDL_LockAudioDevice(device_);
  bells_.push_back({pitchOf(note)});
  SDL_UnlockAudioDevice(device_);
}

void Sound::setPaused(bool paused) {
  if (device_ != 0) SDL_PauseAudioDevice(device_, paused ? 1 : 0);
}

void Sound::fill(void* self, Uint8* bytes, int length) {
  auto* const sound = static_cast<Sound*>(self);
  auto* const samples = reinterpret_cast<float*>(bytes);
  const auto count = static_cast<std::size_t>(length) / sizeof(float);
  std::generate_n(samples, count, [sound] { return sound->nextSample(); });
  std::erase_if(sound->bells_, [](const Bell& bell) { return bell.loudness < kSilence; });
}

float Sound::nextSample() {
  float sum = 0;
  for (Bell& bell : bells_) {
    // The second tone, a little sharp, is what makes it a bell.
    sum += bell.loudness * (sine(bell.turns) + 0.4F * sine(2.76F * bell.turns));
    bell.turns += bell.pitch;
    bell.loudness *= kFading;
  }
  return std::clamp(sum, -1.0F, 1.0F);
}

}  // namespace lanterns
