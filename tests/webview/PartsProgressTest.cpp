// The line over a page that loads is for pages that take their time.
#include <string>

#include <gtest/gtest.h>

#include "ToolkitFixture.h"
#include "helper/window/ProgressLine.h"

namespace zovk::helper {
namespace {

std::string warnings;

GLogWriterOutput keepWarnings(GLogLevelFlags level, const GLogField* fields, gsize count,
                              gpointer) {
  if ((level & (G_LOG_LEVEL_WARNING | G_LOG_LEVEL_CRITICAL)) != 0) {
    for (const GLogField* field = fields; field != fields + count; ++field) {
      if (std::string("MESSAGE") == field->key) warnings += static_cast<const char*>(field->value);
    }
  }
  return G_LOG_WRITER_HANDLED;
}

class Progress : public ToolkitFixture {};

TEST_F(Progress, IsShownWithoutAWarningBeforeAnyStyleSheetWasLoaded) {
  g_log_set_writer_func(keepWarnings, nullptr, nullptr);
  GtkWidget* page = gtk_label_new(nullptr);
  GtkWidget* content = gtk_box_new(GTK_ORIENTATION_VERTICAL, 0);
  gtk_box_append(GTK_BOX(content), page);
  ProgressLine line(content);
  GtkWidget* window = gtk_window_new();
  gtk_window_set_default_size(GTK_WINDOW(window), 300, 200);
  gtk_window_set_child(GTK_WINDOW(window), line.widget());
  int painted = 0;
  gtk_widget_realize(window);
  g_signal_connect_swapped(gtk_widget_get_frame_clock(window), "after-paint",
                           G_CALLBACK(+[](int* count) { ++*count; }), &painted);
  gtk_widget_set_visible(window, TRUE);
  line.update(page, 0);
  GtkWidget* const bar = gtk_widget_get_last_child(line.widget());
  EXPECT_TRUE(runUntil([&] { return gtk_widget_get_visible(bar) == TRUE; }));
  for (const double loaded : {0.0, 0.01, 0.5, 0.99}) {
    line.update(page, loaded);
    const int before = painted;
    gtk_widget_queue_resize(line.widget());
    EXPECT_TRUE(runUntil([&] { return painted > before; }));
  }
  EXPECT_EQ(warnings, "");
  g_signal_handlers_disconnect_by_data(gtk_widget_get_frame_clock(window), &painted);
  gtk_window_destroy(GTK_WINDOW(window));
}

class LineOverAPage : public ToolkitFixture {
 protected:
  LineOverAPage() {
    gtk_window_set_child(window_, progress_.widget());
    gtk_widget_set_visible(GTK_WIDGET(window_), TRUE);
  }
  ~LineOverAPage() override { gtk_window_destroy(window_); }

  bool isShown() const {
    return gtk_widget_get_visible(gtk_widget_get_last_child(progress_.widget())) == TRUE;
  }
  /// Lets the main loop run, and returns whether the line was shown meanwhile.
  bool isShownWithin(guint milliseconds) const {
    bool over = false;
    bool shown = false;
    g_timeout_add_once(
        milliseconds, [](gpointer flag) { *static_cast<bool*>(flag) = true; }, &over);
    EXPECT_TRUE(runUntil([&] {
      shown = shown || isShown();
      return over;
    }));
    return shown;
  }

  GtkWindow* window_ = GTK_WINDOW(gtk_window_new());
  GtkWidget* page_ = gtk_label_new("page");
  ProgressLine progress_{page_};
};

TEST_F(LineOverAPage, IsNotShownForOneThatLoadsAtOnce) {
  progress_.update(page_, 0.1);
  EXPECT_FALSE(isShown());
  progress_.update(page_, 0.5);
  EXPECT_FALSE(isShown());
  progress_.update(page_, 1);
  EXPECT_FALSE(isShownWithin(500));
}

TEST_F(LineOverAPage, IsShownForOneThatTakesItsTimeAndTellsHowMuchIsThere) {
  progress_.update(page_, 0.1);
  progress_.update(page_, 0.6);
  EXPECT_TRUE(runUntil([this] { return isShown(); }));
  GtkWidget* const line = gtk_widget_get_last_child(progress_.widget());
  EXPECT_DOUBLE_EQ(gtk_progress_bar_get_fraction(GTK_PROGRESS_BAR(line)), 0.6);
  progress_.update(page_, 0.8);
  EXPECT_DOUBLE_EQ(gtk_progress_bar_get_fraction(GTK_PROGRESS_BAR(line)), 0.8);
  progress_.update(page_, 1);
  EXPECT_FALSE(isShown());
}

TEST_F(LineOverAPage, IsForTheLoadThatIsUnderWay) {
  progress_.update(page_, 0.1);
  progress_.update(page_, 1);
  progress_.update(page_, 0.2);
  EXPECT_TRUE(runUntil([this] { return isShown(); }));
}

}  // namespace
}  // namespace zovk::helper
