#include "platform/linux/system/SharedPicture.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string_view>
#include <system_error>
#include <vector>

#include <fcntl.h>
#include <sys/mman.h>

#include "platform/linux/system/WriteAll.h"
#include "protocol/PictureBounds.h"

namespace zovk {
namespace {

using Byte = std::uint8_t;

/// No row of a frame is so long; more would only make the sums overflow.
constexpr std::ptrdiff_t kLongestStride = std::ptrdiff_t{1} << 24;
/// Written at a time.
constexpr std::size_t kChunk = std::size_t{256} * 1024;

/// Where the bytes of a pixel are.
struct Order {
  std::size_t length;
  std::size_t red;
  std::size_t green;
  std::size_t blue;
};

std::optional<Order> orderOf(ZOVKPopupPixels format) {
  switch (format) {
    case ZOVKPopupPixels::kBgrx:
      return Order{4, 2, 1, 0};
    case ZOVKPopupPixels::kRgbx:
      return Order{4, 0, 1, 2};
    case ZOVKPopupPixels::kRgb:
      return Order{3, 0, 1, 2};
  }
  return std::nullopt;
}

/// Converts a row of the game's frame for the helper. The frame's alpha is ignored.
void convertRow(const Byte* from, std::size_t count, const Order& order, Byte* to) {
  for (std::size_t i = 0; i < count; ++i, from += order.length, to += kPicturePixelBytes) {
    to[0] = from[order.blue];
    to[1] = from[order.green];
    to[2] = from[order.red];
    to[3] = 0xFF;
  }
}

std::ptrdiff_t strideOf(const ZOVKPopupPicture& picture, const Order& order) {
  const auto packed = picture.width * static_cast<std::ptrdiff_t>(order.length);
  return picture.stride == 0 ? packed : picture.stride;
}

/// Returns what is wrong with the numbers of a picture; empty if nothing is.
std::string problemOf(const ZOVKPopupPicture& picture, const std::optional<Order>& order) {
  if (!order) return "its format is none";
  if (pictureBytes(picture.width, picture.height) == 0) return "its size is too large, or none";
  const std::ptrdiff_t stride = strideOf(picture, *order);
  const bool fits = stride <= kLongestStride && stride >= -kLongestStride &&
                    std::abs(stride) >= picture.width * static_cast<std::ptrdiff_t>(order->length);
  return fits ? std::string() : "its rows do not fit into its stride";
}

std::error_code writeRows(int file, const ZOVKPopupPicture& picture, const Order& order) {
  const auto width = static_cast<std::size_t>(picture.width);
  const std::size_t rowBytes = width * kPicturePixelBytes;
  const std::ptrdiff_t stride = strideOf(picture, order);
  std::vector<Byte> chunk(std::max(kChunk / rowBytes, std::size_t{1}) * rowBytes);
  std::size_t filled = 0;
  const auto* row = static_cast<const Byte*>(picture.pixels);
  for (int y = 0; y < picture.height; ++y) {
    convertRow(row + y * stride, width, order, chunk.data() + filled);
    filled += rowBytes;
    if (filled < chunk.size() && y + 1 < picture.height) continue;
    const std::string_view bytes(reinterpret_cast<const char*>(chunk.data()), filled);
    if (const std::error_code error = writeAll(file, bytes)) return error;
    filled = 0;
  }
  return {};
}

}  // namespace

SharedPicture sharePicture(const ZOVKPopupPicture& picture) {
  const std::optional<Order> order = orderOf(picture.format);
  if (std::string problem = problemOf(picture, order); !problem.empty()) {
    return {{}, std::move(problem)};
  }
  UniqueFd file(::memfd_create("zovkpopup-backdrop", MFD_CLOEXEC | MFD_ALLOW_SEALING));
  if (!file) return {{}, std::strerror(errno)};
  if (const auto error = writeRows(file.get(), picture, *order)) return {{}, error.message()};
  // The reader's memory must not change or go away.
  constexpr int kSeals = F_SEAL_WRITE | F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_SEAL;
  if (::fcntl(file.get(), F_ADD_SEALS, kSeals) != 0) return {{}, std::strerror(errno)};
  return {std::move(file), {}};
}

}  // namespace zovk
