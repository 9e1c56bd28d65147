#include "helper/window/ReceivedPicture.h"

#include <memory>
#include <stdexcept>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>

#include "protocol/PictureBounds.h"

namespace zovk::helper {
namespace {

/// Mapped memory, for as long as a picture is made of it.
struct Mapping {
  void* start;
  std::size_t length;

  static void end(gpointer self) {
    const std::unique_ptr<Mapping> mapping(static_cast<Mapping*>(self));
    munmap(mapping->start, mapping->length);
  }
};

struct BytesUnref {
  void operator()(GBytes* bytes) const { g_bytes_unref(bytes); }
};
using BytesPtr = std::unique_ptr<GBytes, BytesUnref>;

bool isSealed(int file) {
  constexpr int kWanted = F_SEAL_WRITE | F_SEAL_SHRINK;
  const int seals = fcntl(file, F_GET_SEALS);
  return seals >= 0 && (seals & kWanted) == kWanted;
}

bool holds(int file, std::size_t length) {
  struct stat facts {};
  return fstat(file, &facts) == 0 && S_ISREG(facts.st_mode) &&
         static_cast<std::uint64_t>(facts.st_size) >= length;
}

BytesPtr mapped(int file, std::size_t length) {
  void* const start = mmap(nullptr, length, PROT_READ, MAP_PRIVATE, file, 0);
  if (start == MAP_FAILED) throw std::invalid_argument("the picture cannot be read");
  auto mapping = std::make_unique<Mapping>(Mapping{start, length});
  return BytesPtr(g_bytes_new_with_free_func(start, length, Mapping::end, mapping.release()));
}

}  // namespace

GObjectPtr<GdkTexture> pictureIn(int file, std::int64_t width, std::int64_t height) {
  const std::size_t length = pictureBytes(width, height);
  if (length == 0) throw std::invalid_argument("no picture has that size");
  if (file < 0 || !isSealed(file)) throw std::invalid_argument("the picture is not sealed");
  if (!holds(file, length)) throw std::invalid_argument("the picture is too short");
  const BytesPtr bytes = mapped(file, length);
  return GObjectPtr<GdkTexture>::adopt(gdk_memory_texture_new(
      static_cast<int>(width), static_cast<int>(height), GDK_MEMORY_B8G8R8A8_PREMULTIPLIED,
      bytes.get(), static_cast<std::size_t>(width) * kPicturePixelBytes));
}

}  // namespace zovk::helper
