#include "e2e/navigation/NavigationFixture.h"

namespace zovk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Form = NavigationFixture;

constexpr const char* kSubmit = "document.forms[0].submit();";

std::string form(const std::string& method, const std::string& target) {
  return "<form method=" + method + " action='" + target + "'><input name=q value=1></form>";
}

TEST_F(Form, PostsBelowThePagesOwnAddressInside) {
  const std::string target = site().page("/own/answer", arrivalPage());
  const std::string own = servePage(kSubmit, form("post", target));
  show(own);
  EXPECT_EQ(pageTells(), target);
  EXPECT_THAT(site().requestsTo("/own/answer"), ElementsAre("POST q=1"));
  EXPECT_THAT(decided(), ElementsAre(own, target));
  EXPECT_THAT(opener().opened(), IsEmpty());
}

TEST_F(Form, PostsNothingToAnotherSiteWhoseAddressOpensOutside) {
  const std::string target = otherSite().page("/answer", arrivalPage());
  const std::string own = servePage(std::string(kSubmit) + "tellLater();", form("post", target));
  show(own);
  awaitOpened(1);
  EXPECT_EQ(pageTells(), own);
  EXPECT_THAT(opener().opened(), ElementsAre(target));
  EXPECT_THAT(decided(), ElementsAre(own, target));
  EXPECT_FALSE(otherSite().wasAsked());
}

TEST_F(Form, OpensOutsideWithItsParametersInTheAddress) {
  const std::string target = otherSite().url("/answer");
  const std::string own = servePage(std::string(kSubmit) + "tellLater();", form("get", target));
  show(own);
  awaitOpened(1);
  EXPECT_EQ(pageTells(), own);
  EXPECT_THAT(opener().opened(), ElementsAre(target + "?q=1"));
  EXPECT_FALSE(otherSite().wasAsked());
}

}  // namespace
}  // namespace zovk
