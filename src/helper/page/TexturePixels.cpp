#include "helper/page/TexturePixels.h"

#include <bit>
#include <memory>
#include <utility>

#include <dlfcn.h>

namespace zovk::helper {
namespace {

constexpr const char* kMemory = "zovk-memory";

/// The memory that a texture was made of.
struct Memory {
  GBytes* bytes;
  gsize stride;
};

void forget(gpointer memory) {
  g_bytes_unref(static_cast<Memory*>(memory)->bytes);
  delete static_cast<Memory*>(memory);
}

/// The texture keeps the memory, too.
void remember(GdkTexture* texture, GBytes* bytes, gsize stride) {
  auto memory = std::make_unique<Memory>(Memory{g_bytes_ref(bytes), stride});
  g_object_set_data_full(G_OBJECT(texture), kMemory, memory.release(), forget);
}

/// The library that draws only reads what is a source.
CairoSurface inMemory(GdkTexture* texture, const Memory& memory) {
  static const cairo_user_data_key_t kBytes{};
  auto* first =
      static_cast<unsigned char*>(const_cast<gpointer>(g_bytes_get_data(memory.bytes, nullptr)));
  CairoSurface pixels(cairo_image_surface_create_for_data(
      first, CAIRO_FORMAT_ARGB32, gdk_texture_get_width(texture), gdk_texture_get_height(texture),
      static_cast<int>(memory.stride)));
  const auto release = [](void* bytes) { g_bytes_unref(static_cast<GBytes*>(bytes)); };
  const bool kept = cairo_surface_set_user_data(pixels.get(), &kBytes, g_bytes_ref(memory.bytes),
                                                release) == CAIRO_STATUS_SUCCESS;
  if (kept) return pixels;
  g_bytes_unref(memory.bytes);
  return {};
}

CairoSurface copied(GdkTexture* texture) {
  CairoSurface pixels(cairo_image_surface_create(
      CAIRO_FORMAT_ARGB32, gdk_texture_get_width(texture), gdk_texture_get_height(texture)));
  if (cairo_surface_status(pixels.get()) != CAIRO_STATUS_SUCCESS) return {};
  gdk_texture_download(texture, cairo_image_surface_get_data(pixels.get()),
                       static_cast<gsize>(cairo_image_surface_get_stride(pixels.get())));
  cairo_surface_mark_dirty(pixels.get());
  return pixels;
}

}  // namespace

CairoSurface pixelsOf(GdkTexture* texture) {
  const auto* memory = static_cast<Memory*>(g_object_get_data(G_OBJECT(texture), kMemory));
  CairoSurface pixels = memory == nullptr ? CairoSurface() : inMemory(texture, *memory);
  return pixels ? std::move(pixels) : copied(texture);
}

}  // namespace zovk::helper

/// Stands before the toolkit's function of that name, for the web engine, too: the toolkit does not
/// tell what memory a texture is made of, and before 4.10 it takes 9 ms to copy a screen of
/// 1280x800, since it converts each pixel to floating-point numbers and back.
GdkTexture* gdk_memory_texture_new(int width, int height, GdkMemoryFormat format, GBytes* bytes,
                                   gsize stride) {
  static const auto make =
      std::bit_cast<decltype(&gdk_memory_texture_new)>(dlsym(RTLD_NEXT, "gdk_memory_texture_new"));
  GdkTexture* texture = make(width, height, format, bytes, stride);
  if (texture != nullptr && format == GDK_MEMORY_DEFAULT) {
    zovk::helper::remember(texture, bytes, stride);
  }
  return texture;
}
