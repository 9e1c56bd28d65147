#include <memory>

#include "ToolkitFixture.h"
#include "WebHostProcess.h"
#include "webhost/Commands.h"
#include "webhost/ContainerView.h"
#include "webhost/Host.h"

namespace zovk {
namespace {

class PopupToScreenReaders : public ToolkitFixture {
 protected:
  PopupToScreenReaders() { addViewCommands(table_); }
  bool isHidden(Id view) {
    const GText wrong(gtk_test_accessible_check_state(GTK_ACCESSIBLE(host_.views().find(view)),
                                                      GTK_ACCESSIBLE_STATE_HIDDEN, TRUE, -1));
    return !wrong;
  }
  void setHidden(Id view, bool hidden) {
    const WebHostMessage command{{"type", "view.hidden"}, {"view", view}, {"hidden", hidden}};
    table_.at("view.hidden")(host_, Arguments(command));
  }

  TemporaryDirectory directory_;
  CommandTable table_;
  Host host_{{"test", directory_.path().string(), 0, false}, [](const WebHostMessage&) {}};
};

TEST_F(PopupToScreenReaders, IsADialog) {
  host_.openWindow(1, 1, {});
  EXPECT_TRUE(gtk_test_accessible_has_role(GTK_ACCESSIBLE(host_.window(1)->widget()),
                                           GTK_ACCESSIBLE_ROLE_DIALOG));
  host_.window(1)->show();
}

TEST_F(PopupToScreenReaders, HasNoButtonThatIsHidden) {
  constexpr Id kCross = 11;
  host_.openLayout(1, 10, WEBHOST_BUNDLE, "ZOVKPopupView");
  host_.views().add(kCross, host_.layout(1)->outlet("crossBtn"), 1);
  setHidden(kCross, true);
  EXPECT_TRUE(isHidden(kCross));
  setHidden(kCross, false);
  EXPECT_FALSE(isHidden(kCross));
}

}  // namespace
}  // namespace zovk
