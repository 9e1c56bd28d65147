// The memory in which the helper draws is kept from one picture to the next.
#include <fstream>
#include <set>
#include <string>

#include <malloc.h>

#include "ToolkitFixture.h"
#include "helper/GObjectPtr.h"
#include "helper/window/PictureMemory.h"

namespace zovk::helper {
namespace {

constexpr Frame kSize{0, 0, 400, 300};

/// The pieces of memory that this process shares in the way of X servers: inodes.
std::set<std::string> sharedPieces() {
  std::set<std::string> pieces;
  std::ifstream maps("/proc/self/maps");
  for (std::string line; std::getline(maps, line);) {
    const std::size_t name = line.find("/SYSV");
    if (name == std::string::npos) continue;
    pieces.insert(line.substr(0, name).substr(line.find(' ')));
  }
  return pieces;
}

class PicturesOfAWindow : public ToolkitFixture {
 protected:
  PicturesOfAWindow() : window_(GTK_WINDOW(gtk_window_new())) {
    gtk_window_set_default_size(window_, kSize.width, kSize.height);
    gtk_widget_realize(GTK_WIDGET(window_));
  }
  ~PicturesOfAWindow() override {
    gtk_widget_set_visible(GTK_WIDGET(window_), TRUE);
    gtk_window_destroy(window_);
  }
  void paint() {
    gtk_widget_set_visible(GTK_WIDGET(window_), TRUE);
    int painted = 0;
    GdkFrameClock* const clock = gtk_widget_get_frame_clock(GTK_WIDGET(window_));
    const gulong handler = g_signal_connect_swapped(
        clock, "after-paint", G_CALLBACK(+[](int* count) { ++*count; }), &painted);
    for (int i = 1; i <= 3; ++i) {
      gtk_widget_queue_draw(GTK_WIDGET(window_));
      EXPECT_TRUE(runUntil([&] { return painted >= i; }));
    }
    g_signal_handler_disconnect(clock, handler);
  }

  GtkWindow* window_;
};

TEST_F(PicturesOfAWindow, GoThroughTheMemoryThatIsKept) {
  PictureMemory memory;
  memory.keep(GTK_WIDGET(window_), kSize);
  memory.keep(GTK_WIDGET(window_), kSize);
  const std::set<std::string> kept = sharedPieces();
  EXPECT_EQ(kept.size(), 1U);
  paint();
  EXPECT_EQ(sharedPieces(), kept) << "nothing was made anew";
}

TEST(FreedMemory, IsKeptForTheNextPicture) {
  constexpr std::size_t kPicture = std::size_t{1280} * 800 * 4;
  PictureMemory::keepFreed();
  const std::size_t mapped = mallinfo2().hblks;
  const gpointer picture = g_malloc(kPicture);
  const auto held = mallinfo2();
  EXPECT_EQ(held.hblks, mapped) << "not of the system's for this one picture";
  g_free(picture);
  EXPECT_GE(mallinfo2().arena, held.arena) << "not given back";
}

}  // namespace
}  // namespace zovk::helper
