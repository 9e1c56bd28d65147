#include <memory>

#include "HelperUnderTest.h"
#include "ToolkitFixture.h"
#include "helper/Program.h"
#include "helper/commands/Commands.h"
#include "helper/layout/ContainerView.h"

namespace zovk::helper {
namespace {

class PopupToScreenReaders : public ToolkitFixture {
 protected:
  PopupToScreenReaders() { addViewCommands(table_); }
  bool isHidden(Id view) {
    const GText wrong(gtk_test_accessible_check_state(GTK_ACCESSIBLE(program_.views().find(view)),
                                                      GTK_ACCESSIBLE_STATE_HIDDEN, TRUE, -1));
    return !wrong;
  }
  void setHidden(Id view, bool hidden) {
    const HelperMessage command{{"type", "view.hidden"}, {"view", view}, {"hidden", hidden}};
    table_.at("view.hidden")(program_, Arguments(command));
  }

  ScratchDirectory directory_;
  CommandTable table_;
  Program program_{{"test", directory_.path().string(), 0, false}, [](const HelperMessage&) {}};
};

TEST_F(PopupToScreenReaders, IsADialog) {
  program_.openWindow(1, 1, {});
  EXPECT_TRUE(gtk_test_accessible_has_role(GTK_ACCESSIBLE(program_.window(1)->widget()),
                                           GTK_ACCESSIBLE_ROLE_DIALOG));
  program_.window(1)->show();
}

TEST_F(PopupToScreenReaders, HasNoButtonThatIsHidden) {
  constexpr Id kCross = 11;
  program_.openLayout(1, 10, HELPER_BUNDLE, "ZOVKPopupView");
  program_.views().add(kCross, program_.layout(1)->outlet("crossBtn"), 1);
  setHidden(kCross, true);
  EXPECT_TRUE(isHidden(kCross));
  setHidden(kCross, false);
  EXPECT_FALSE(isHidden(kCross));
}

}  // namespace
}  // namespace zovk::helper
