// The way of a game pad among the buttons of a window that shows no page.
#include <string>
#include <vector>

#include "ToolkitFixture.h"
#include "helper/pad/GamePad.h"

namespace zovk::helper {
namespace {

/// A window with a column of buttons, of which the second has the focus. The last two are in a
/// container of their own.
class PadAmongButtons : public ToolkitFixture {
 protected:
  PadAmongButtons() : window_(GTK_WINDOW(gtk_window_new())) {
    GtkWidget* column = gtk_box_new(GTK_ORIENTATION_VERTICAL, 10);
    GtkWidget* lower = gtk_box_new(GTK_ORIENTATION_VERTICAL, 10);
    for (const char* name : {"one", "two", "three", "four"}) {
      GtkWidget* button = gtk_button_new_with_label(name);
      gtk_box_append(GTK_BOX(buttons_.size() < 2 ? column : lower), button);
      buttons_.push_back(button);
    }
    gtk_box_append(GTK_BOX(column), lower);
    gtk_window_set_child(window_, column);
    gtk_widget_set_visible(GTK_WIDGET(window_), TRUE);
    runUntil([this] { return gtk_widget_get_width(buttons_.back()) > 0; });
    gtk_widget_grab_focus(buttons_[1]);
  }
  ~PadAmongButtons() override { gtk_window_destroy(window_); }

  /// Returns the name of the button that has the focus then.
  std::string go(PadDirection direction) {
    movePad(window_, nullptr, direction, [this] { ++done_; });
    GtkWidget* focus = gtk_window_get_focus(window_);
    return GTK_IS_BUTTON(focus) ? gtk_button_get_label(GTK_BUTTON(focus)) : "";
  }

  GtkWindow* window_;
  std::vector<GtkWidget*> buttons_;
  int done_ = 0;
};

TEST_F(PadAmongButtons, BeginsAtTheOneThatHasTheFocus) {
  EXPECT_EQ(go(PadDirection::kDown), "three");
  EXPECT_EQ(go(PadDirection::kUp), "two");
  EXPECT_EQ(go(PadDirection::kUp), "one");
  EXPECT_EQ(done_, 3);
}

TEST_F(PadAmongButtons, BeginsAtTheFirstWhenNoneHasTheFocus) {
  gtk_window_set_focus(window_, nullptr);
  EXPECT_EQ(go(PadDirection::kDown), "one");
}

TEST_F(PadAmongButtons, StaysWhereThereIsNoFurtherOne) {
  go(PadDirection::kUp);
  EXPECT_EQ(go(PadDirection::kUp), "one");
  EXPECT_EQ(go(PadDirection::kRight), "one");
  EXPECT_EQ(done_, 3);
}

TEST_F(PadAmongButtons, PassesOverOneThatCannotBePressed) {
  gtk_widget_set_sensitive(buttons_[2], FALSE);
  EXPECT_EQ(go(PadDirection::kDown), "four");
  EXPECT_EQ(go(PadDirection::kUp), "two");
}

TEST_F(PadAmongButtons, PassesOverOneThatIsHidden) {
  gtk_widget_set_visible(buttons_[2], FALSE);
  EXPECT_EQ(go(PadDirection::kDown), "four");
  // What is hidden has no size, and its place is the corner of its container.
  EXPECT_EQ(go(PadDirection::kUp), "two");
}

TEST_F(PadAmongButtons, PassesOverThoseInAPartThatCannotBeUsed) {
  gtk_widget_set_sensitive(gtk_window_get_child(window_), FALSE);
  gtk_window_set_focus(window_, nullptr);
  EXPECT_EQ(go(PadDirection::kDown), "");
  EXPECT_EQ(done_, 1);
}

}  // namespace
}  // namespace zovk::helper
