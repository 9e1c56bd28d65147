// The pixels of pictures that the web engine hands over.
#include <array>
#include <cstring>

#include <webkit/webkit.h>

#include "ToolkitFixture.h"
#include "helper/GObjectPtr.h"
#include "helper/page/TexturePixels.h"

namespace zovk::helper {
namespace {

constexpr int kWidth = 3;
constexpr int kHeight = 2;
constexpr int kStride = 16;  // longer than a row
constexpr std::array<guint8, 4> kPixel{10, 20, 30, 40};

class PixelsOfATexture : public ToolkitFixture {
 protected:
  PixelsOfATexture() {
    std::array<guint8, std::size_t{kStride} * kHeight> memory{};
    std::memcpy(&memory[kStride + 4], kPixel.data(), kPixel.size());
    bytes_ = g_bytes_new(memory.data(), memory.size());
  }
  ~PixelsOfATexture() override { g_bytes_unref(bytes_); }
  GObjectPtr<GdkTexture> texture(GdkMemoryFormat format) {
    return GObjectPtr<GdkTexture>::adopt(
        gdk_memory_texture_new(kWidth, kHeight, format, bytes_, kStride));
  }
  /// Of the second pixel in the second row.
  static std::array<guint8, 4> pixel(const CairoSurface& pixels) {
    std::array<guint8, 4> found{};
    const int stride = cairo_image_surface_get_stride(pixels.get());
    std::memcpy(found.data(), cairo_image_surface_get_data(pixels.get()) + stride + 4,
                found.size());
    return found;
  }

  GBytes* bytes_;
};

TEST_F(PixelsOfATexture, AreTheMemoryThatItWasMadeOf) {
  const CairoSurface pixels = pixelsOf(texture(GDK_MEMORY_DEFAULT).get());
  EXPECT_EQ(cairo_image_surface_get_data(pixels.get()), g_bytes_get_data(bytes_, nullptr));
  EXPECT_EQ(cairo_image_surface_get_width(pixels.get()), kWidth);
  EXPECT_EQ(cairo_image_surface_get_height(pixels.get()), kHeight);
  EXPECT_EQ(pixel(pixels), kPixel);
}

TEST_F(PixelsOfATexture, StayWhenItIsGone) {
  const CairoSurface pixels = pixelsOf(texture(GDK_MEMORY_DEFAULT).get());
  const gconstpointer memory = g_bytes_get_data(bytes_, nullptr);
  g_bytes_unref(bytes_);
  bytes_ = g_bytes_new_static("", 1);
  EXPECT_EQ(cairo_image_surface_get_data(pixels.get()), memory);
  EXPECT_EQ(pixel(pixels), kPixel) << "the memory was not given back";
}

TEST_F(PixelsOfATexture, AreConvertedFromAnotherFormat) {
  const CairoSurface pixels = pixelsOf(texture(GDK_MEMORY_R8G8B8A8_PREMULTIPLIED).get());
  EXPECT_NE(cairo_image_surface_get_data(pixels.get()), g_bytes_get_data(bytes_, nullptr));
  EXPECT_EQ(pixel(pixels), (std::array<guint8, 4>{30, 20, 10, 40}));
}

TEST_F(PixelsOfATexture, AreNotCopiedFromThePictureOfAPage) {
  const auto view = GObjectPtr<WebKitWebView>::sink(WEBKIT_WEB_VIEW(webkit_web_view_new()));
  GtkWidget* window = gtk_window_new();
  gtk_window_set_child(GTK_WINDOW(window), GTK_WIDGET(view.get()));
  gtk_window_present(GTK_WINDOW(window));
  webkit_web_view_load_html(view.get(), "<p>Hello", nullptr);
  EXPECT_TRUE(runUntil([&] { return webkit_web_view_is_loading(view.get()) == FALSE; }));
  GObjectPtr<GdkTexture> picture;
  const auto keep = [](GObject* of, GAsyncResult* result, gpointer into) {
    *static_cast<GObjectPtr<GdkTexture>*>(into) = GObjectPtr<GdkTexture>::adopt(
        webkit_web_view_get_snapshot_finish(WEBKIT_WEB_VIEW(of), result, nullptr));
  };
  webkit_web_view_get_snapshot(view.get(), WEBKIT_SNAPSHOT_REGION_VISIBLE,
                               WEBKIT_SNAPSHOT_OPTIONS_NONE, nullptr, keep, &picture);
  ASSERT_TRUE(runUntil([&] { return static_cast<bool>(picture); }));
  const CairoSurface pixels = pixelsOf(picture.get());
  const CairoSurface again = pixelsOf(picture.get());
  EXPECT_EQ(cairo_image_surface_get_data(pixels.get()), cairo_image_surface_get_data(again.get()));
  gtk_window_destroy(GTK_WINDOW(window));
}

}  // namespace
}  // namespace zovk::helper
