#include "e2e/navigation/NavigationFixture.h"

namespace zovk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

class Directory : public NavigationFixture, public testing::WithParamInterface<int> {};

// A popup of these content types is loaded as a file, and has none.
TEST_P(Directory, IsNoPageForAPopupWithoutAPageFile) {
  show("https://popups.example/a", GetParam());
  pumpUntil([&] { return logged("Did fail provisional navigation"); }, "the failure");
  EXPECT_THAT(navigationLines(),
              ElementsAre("Decide policy for navigation action, url:file:///",
                          StartsWith("Did fail provisional navigation, error:")));
  EXPECT_THAT(answers(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(ContentTypes, Directory, testing::Values(0, 4));

}  // namespace
}  // namespace zovk
