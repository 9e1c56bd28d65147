#include "e2e/navigation/NavigationFixture.h"

namespace zovk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The page of a file, with another file beside it.
class FilePage : public NavigationFixture {
 protected:
  const std::string neighbour_ = addFile(arrivalPage());
};

TEST_F(FilePage, MayChangeTheParametersOfItsAddress) {
  const std::string own =
      showFile("location.search ? tell(location.href) : location.href = '?x=1';");
  EXPECT_EQ(pageTells(), own + "?x=1");
  EXPECT_THAT(decided(), ElementsAre(own, own + "?x=1"));
}

TEST_F(FilePage, CannotGoToAnotherFile) {
  const std::string own = showFile("location.href = '" + neighbour_ + "'; tellLater();");
  awaitDecided(2);
  EXPECT_EQ(pageTells(), own);
  EXPECT_THAT(decided(), ElementsAre(own, neighbour_));
  EXPECT_THAT(opener().opened(), IsEmpty());
}

TEST_F(FilePage, CannotShowAnotherFileInAFrame) {
  const std::string own = showFile("tellLater();", "<iframe src='" + neighbour_ + "'></iframe>");
  pumpUntil([&] { return logged("Did finish navigation"); }, "the page");
  EXPECT_EQ(pageTells(), own);
  EXPECT_THAT(opener().opened(), IsEmpty());
}

TEST_F(FilePage, CannotReadAnotherFile) {
  showFile("fetch('" + neighbour_ + "').then(() => tell('read'), () => tell('refused'));");
  EXPECT_EQ(pageTells(), "refused");
  EXPECT_EQ(decided().size(), 1U);
}

TEST_F(FilePage, CannotShowAPictureThatIsAFile) {
  showFile(
      "const picture = new Image();"
      "picture.onload = () => tell('shown');"
      "picture.onerror = () => tell('refused');"
      "picture.src = 'file://" +
      (bundle().bundle() / "close.png").string() + "';");
  EXPECT_EQ(pageTells(), "refused");
  EXPECT_EQ(decided().size(), 1U);
}

TEST_F(FilePage, OpensAWebAddressOutside) {
  const std::string other = otherSite().page("/other", arrivalPage());
  const std::string own = showFile("location.href = '" + other + "'; tellLater();");
  awaitOpened(1);
  EXPECT_EQ(pageTells(), own);
  EXPECT_THAT(opener().opened(), ElementsAre(other));
  EXPECT_THAT(decided(), ElementsAre(own, other));
  EXPECT_FALSE(otherSite().wasAsked());
}

}  // namespace
}  // namespace zovk
