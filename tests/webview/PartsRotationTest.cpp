#include <map>
#include <string>
#include <vector>

#include "HelperUnderTest.h"
#include "ToolkitFixture.h"
#include "helper/Program.h"
#include "helper/commands/Commands.h"

namespace zovk::helper {
namespace {

guint constraintsAround(GtkWidget* container) {
  GtkLayoutManager* manager = gtk_widget_get_layout_manager(container);
  const auto all = GObjectPtr<GListModel>::adopt(
      gtk_constraint_layout_observe_constraints(GTK_CONSTRAINT_LAYOUT(manager)));
  return g_list_model_get_n_items(all.get());
}

guint childrenOf(GtkWidget* container) {
  const auto all = GObjectPtr<GListModel>::adopt(gtk_widget_observe_children(container));
  return g_list_model_get_n_items(all.get());
}

/// The helper's objects, given the commands that a game gives when its window is turned.
class RotationInTheHelper : public ToolkitFixture {
 protected:
  RotationInTheHelper() {
    addWindowCommands(table_);
    addViewCommands(table_);
    addLayoutCommands(table_);
    addWebCommands(table_);
    bool ready = false;
    program_.webViewFactory().whenReady([&ready] { ready = true; });
    EXPECT_TRUE(runUntil([&ready] { return ready; }));
  }
  void send(const HelperMessage& message) {
    table_.at(std::string(message.at("type").as_string()))(program_, Arguments(message));
  }
  void sync() {
    const int id = ++lastSync_;
    send({{"type", "sync"}, {"id", id}, {"window", 1}});
    EXPECT_TRUE(runUntil([&] { return synced_ == id; }));
  }
  GtkWidget* view(int id) { return program_.views().find(id); }
  void open() {
    send({{"type", "window.create"}, {"window", 1}, {"view", 1}, {"frame", {0, 0, 390, 700}}});
    send({{"type", "web.create"},
          {"view", kPage},
          {"handlers", boost::json::array()},
          {"inlineMedia", true},
          {"mobile", true},
          {"bounces", true},
          {"scrollIndicator", false},
          {"adjustInset", false},
          {"opaque", false}});
    loadLayout(1, "ZOVKPopupView");
    send({{"type", "window.show"}, {"window", 1}});
    sync();
  }
  /// Does what the page controller does for the layout of a policy. Its views have other numbers.
  void loadLayout(int number, const std::string& name) {
    const int base = 100 * number;
    send({{"type", "layout.load"},
          {"layout", number},
          {"view", base},
          {"bundle", HELPER_BUNDLE},
          {"name", name}});
    int next = base;
    for (const char* outlet : {"contentView", "stackView", "crossBtn", "returnBtn"}) {
      send({{"type", "layout.outlet"}, {"layout", number}, {"view", ++next}, {"name", outlet}});
    }
    send({{"type", "view.add"}, {"view", 1}, {"child", base}});
    send({{"type", "view.pinEdges"}, {"view", base}, {"to", 1}});
    send({{"type", "view.add"}, {"view", base + 1}, {"child", kPage}});
    send({{"type", "view.pinEdges"}, {"view", kPage}, {"to", base + 1}});
    send({{"type", "view.back"}, {"view", base + 1}, {"child", kPage}});
    for (const int corner : {base + 3, base + 4}) {
      send({{"type", "view.pinTop"},
            {"view", corner},
            {"to", 1},
            {"safeArea", true},
            {"offset", 0}});
    }
    send({{"type", "view.pinBottom"}, {"view", kPage}, {"candidates", {base + 2}}});
  }
  void turn(int oldLayout) {
    const int base = 100 * oldLayout;
    send({{"type", "view.alpha"}, {"view", base + 1}, {"alpha", 0}});
    loadLayout(oldLayout + 1, oldLayout % 2 == 1 ? "ZOVKPopupViewLandscape" : "ZOVKPopupView");
    sync();
    send({{"type", "view.remove"}, {"view", base}});
    send({{"type", "layout.close"}, {"layout", oldLayout}});
    sync();
  }

  static constexpr int kPage = 50;
  ScratchDirectory directory_;
  CommandTable table_;
  int synced_ = 0;
  int lastSync_ = 0;
  Program program_{{"test", directory_.path().string(), 0, false},
                   [this](const HelperMessage& event) {
                     if (event.at("type") == "synced") synced_ = event.at("id").to_number<int>();
                   }};
};

TEST_F(RotationInTheHelper, LeavesNoLayoutNoViewAndNoConstraintBehind) {
  open();
  turn(1);
  turn(2);
  const guint aroundRoot = constraintsAround(view(1));
  const guint aroundContent = constraintsAround(view(301));
  const guint inContent = childrenOf(view(301));
  for (int layout = 3; layout < 13; ++layout) {
    GtkWidget* old = view(100 * layout);
    g_object_add_weak_pointer(G_OBJECT(old), reinterpret_cast<gpointer*>(&old));
    turn(layout);
    EXPECT_EQ(old, nullptr) << "after turn " << layout;
    EXPECT_EQ(program_.layout(layout), nullptr);
    EXPECT_EQ(view(100 * layout + 1), nullptr);
  }
  EXPECT_EQ(childrenOf(view(1)), 1U);
  EXPECT_EQ(constraintsAround(view(1)), aroundRoot);
  EXPECT_EQ(constraintsAround(view(1301)), aroundContent);
  EXPECT_EQ(childrenOf(view(1301)), inContent);
}

TEST_F(RotationInTheHelper, PinsOverAndOverWithoutPilingUp) {
  open();
  const guint around = constraintsAround(view(101));
  for (int i = 0; i < 10; ++i) {
    send({{"type", "view.pinBottom"}, {"view", kPage}, {"candidates", {102}}});
    send({{"type", "view.pinTop"}, {"view", 103}, {"to", 1}, {"safeArea", true}, {"offset", 0}});
    sync();
  }
  EXPECT_EQ(constraintsAround(view(101)), around);
}

}  // namespace
}  // namespace zovk::helper
