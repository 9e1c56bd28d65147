#include "platform/linux/system/LinuxDevice.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <string_view>
#include <utility>

#include <openssl/evp.h>
#include <openssl/hmac.h>
#include <openssl/rand.h>

namespace zovk {
namespace {

using UuidBytes = std::array<unsigned char, 16>;

std::string firstLine(const std::string& path) {
  std::ifstream file(path);
  std::string line;
  std::getline(file, line);
  return line;
}

std::optional<UuidBytes> keyedHash(const std::string& key, const std::string& text) {
  std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
  const auto* const bytes = reinterpret_cast<const unsigned char*>(text.data());
  if (HMAC(EVP_sha256(), key.data(), static_cast<int>(key.size()), bytes, text.size(),
           digest.data(), nullptr) == nullptr) {
    return std::nullopt;
  }
  UuidBytes result{};
  std::copy_n(digest.begin(), result.size(), result.begin());
  return result;
}

std::optional<UuidBytes> randomBytes() {
  UuidBytes result{};
  if (RAND_bytes(result.data(), static_cast<int>(result.size())) != 1) return std::nullopt;
  return result;
}

std::string uuidText(UuidBytes bytes) {
  bytes[6] = static_cast<unsigned char>((bytes[6] & 0x0FU) | 0x40U);  // marks a random identifier
  bytes[8] = static_cast<unsigned char>((bytes[8] & 0x3FU) | 0x80U);
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string text;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (i == 4 || i == 6 || i == 8 || i == 10) text += '-';
    text += kDigits[bytes[i] >> 4U];
    text += kDigits[bytes[i] & 0xFU];
  }
  return text;
}

}  // namespace

LinuxDevice::LinuxDevice(std::string homeDirectory, std::string applicationId,
                         std::string machineIdPath)
    : homeDirectory_(std::move(homeDirectory)),
      applicationId_(std::move(applicationId)),
      machineIdPath_(std::move(machineIdPath)) {}

std::optional<std::string> LinuxDevice::identifierForVendor() const {
  const std::string machineId = firstLine(machineIdPath_);
  const auto bytes = machineId.empty() ? randomBytes() : keyedHash(machineId, applicationId_);
  return bytes ? std::optional(uuidText(*bytes)) : std::nullopt;
}

void LinuxDevice::setWindowSize(const Size& size) {
  if (size.width <= 0 || size.height <= 0) {
    statusBarOrientation_ = Orientation::kUnknown;
  } else {
    statusBarOrientation_ =
        size.width > size.height ? Orientation::kLandscapeLeft : Orientation::kPortrait;
  }
}

}  // namespace zovk
