#include "service/HttpDate.h"

#include <array>

namespace zovk::service {
namespace {

constexpr const char* kLayout = "%a, %d %b %Y %H:%M:%S GMT";

}  // namespace

std::string httpDate(std::time_t moment) {
  std::tm parts{};
  ::gmtime_r(&moment, &parts);
  std::array<char, 64> text{};
  const std::size_t length = std::strftime(text.data(), text.size(), kLayout, &parts);
  return {text.data(), length};
}

std::optional<std::time_t> parseHttpDate(const std::string& text) {
  std::tm parts{};
  const char* const end = ::strptime(text.c_str(), kLayout, &parts);
  if (end == nullptr || *end != '\0') return std::nullopt;
  return ::timegm(&parts);
}

}  // namespace zovk::service
