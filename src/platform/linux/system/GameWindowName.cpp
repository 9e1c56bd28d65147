#include "platform/linux/system/GameWindowName.h"

#include <charconv>
#include <string_view>

#include "logging/ZPLogger.h"

namespace zovk {
namespace {

constexpr std::string_view kX11 = "x11:";
constexpr std::string_view kWayland = "wayland:";
constexpr std::size_t kLongest = 256;

/// Reads a decimal number, or a hexadecimal one after 0x, as tools of X11 write it. Returns 0 for
/// any other text.
std::uint64_t numberOf(std::string_view text) {
  const bool isHexadecimal = text.starts_with("0x");
  if (isHexadecimal) text.remove_prefix(2);
  std::uint64_t number = 0;
  const char* const end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, number, isHexadecimal ? 16 : 10);
  return error == std::errc() && rest == end ? number : 0;
}

}  // namespace

GameWindowName gameWindowName(const ZOVKPopupHostSettings& settings) {
  const std::string_view text = settings.gameWindow;
  if (text.empty()) return {settings.nativeWindow, {}};
  GameWindowName name;
  if (text.starts_with(kX11)) name.x11 = numberOf(text.substr(kX11.size()));
  if (text.starts_with(kWayland) && text.size() <= kLongest) {
    name.wayland = text.substr(kWayland.size());
  }
  if (name.x11 != 0 || !name.wayland.empty()) return name;
  logError("The game's window is neither x11:NUMBER nor wayland:HANDLE");
  return {settings.nativeWindow, {}};
}

}  // namespace zovk
