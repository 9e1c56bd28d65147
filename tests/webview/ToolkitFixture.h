#pragma once

#include <cstdlib>
#include <functional>
#include <stdexcept>

#include <gtest/gtest.h>
#include <gtk/gtk.h>

namespace zovk {

/// A test of the helper's parts in this process, with the toolkit on a real display.
class ToolkitFixture : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    setenv("GTK_A11Y", "test", 1);  // lets the test ask for the texts for screen readers
    setenv("GSK_RENDERER", "cairo", 0);
    if (gtk_init_check() == FALSE) throw std::runtime_error("no display");
  }
  /// Runs the main loop until `done`. Returns false if that takes too long.
  static bool runUntil(const std::function<bool()>& done) {
    bool late = false;
    const guint bound = g_timeout_add_seconds(
        30,
        [](gpointer flag) -> gboolean {
          *static_cast<bool*>(flag) = true;
          return G_SOURCE_CONTINUE;
        },
        &late);
    while (!done() && !late) g_main_context_iteration(nullptr, TRUE);
    g_source_remove(bound);
    return !late;
  }
};

}  // namespace zovk
