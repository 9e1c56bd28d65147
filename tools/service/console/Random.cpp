#include "service/console/Random.h"

#include <array>
#include <stdexcept>

#include <openssl/rand.h>

namespace zovk::service {

std::string unguessable() {
  std::array<unsigned char, 32> bytes{};
  if (RAND_bytes(bytes.data(), static_cast<int>(bytes.size())) != 1) {
    throw std::runtime_error("there are no random numbers for the console's token");
  }
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string text;
  for (const unsigned char byte : bytes) {
    text += kDigits[byte >> 4U];
    text += kDigits[byte & 15U];
  }
  return text;
}

}  // namespace zovk::service
