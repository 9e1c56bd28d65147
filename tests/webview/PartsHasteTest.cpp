// A page's load goes before what else the main loop has to do, for a moment.
#include <string_view>

#include <webkit/webkit.h>

#include "ToolkitFixture.h"
#include "helper/page/LoadHaste.h"

namespace zovk::helper {
namespace {

class Haste : public ToolkitFixture {
 protected:
  Haste() { g_object_unref(g_object_ref_sink(webkit_web_view_new())); }

  static int priority() {
    for (guint id = 1; id < 500; ++id) {
      GSource* const source = g_main_context_find_source_by_id(nullptr, id);
      const char* const name = source == nullptr ? nullptr : g_source_get_name(source);
      if (name != nullptr && std::string_view(name) == "[WebKit] RunLoop work") {
        return g_source_get_priority(source);
      }
    }
    ADD_FAILURE() << "the web engine has no such source any more";
    return 0;
  }
};

TEST_F(Haste, PutsTheWebEnginesMessagesBeforeTheDisplaysEventsUntilItIsOver) {
  const int usual = priority();
  EXPECT_GT(usual, G_PRIORITY_DEFAULT) << "else there is nothing to hasten";
  LoadHaste haste;
  haste.begin();
  EXPECT_LT(priority(), G_PRIORITY_DEFAULT);
  EXPECT_TRUE(runUntil([&] { return priority() == usual; }));
}

TEST_F(Haste, IsOverForAPageThatNeverStopsSendingMessages) {
  const int usual = priority();
  LoadHaste haste;
  haste.begin();
  const guint messages = g_idle_add_full(
      priority(), [](gpointer) -> gboolean { return G_SOURCE_CONTINUE; }, nullptr, nullptr);
  const gint64 start = g_get_monotonic_time();
  while (priority() != usual && g_get_monotonic_time() - start < 20 * G_TIME_SPAN_SECOND) {
    g_main_context_iteration(nullptr, TRUE);
  }
  g_source_remove(messages);
  EXPECT_EQ(priority(), usual);
}

TEST_F(Haste, BeginsAnewWithEachLoad) {
  const int usual = priority();
  LoadHaste haste;
  haste.begin();
  EXPECT_TRUE(runUntil([&] { return priority() == usual; }));
  haste.begin();
  haste.begin();
  EXPECT_LT(priority(), G_PRIORITY_DEFAULT);
  EXPECT_TRUE(runUntil([&] { return priority() == usual; }));
}

TEST_F(Haste, EndsWithItsProgram) {
  const int usual = priority();
  {
    LoadHaste haste;
    haste.begin();
  }
  EXPECT_EQ(priority(), usual);
}

}  // namespace
}  // namespace zovk::helper
