#include "fixtures/ControllerFixture.h"
#include "presentation/PageAddress.h"

namespace zovk {
namespace {

using PageAddress = EngineFixture;

TEST(PageAddressWithExtra, MergesTheQueryAndAnExtraKeyTakesThePlaceOfAParameter) {
  EXPECT_EQ(addressWithExtra("https://a.example/p?a=1&b=2", {{"b", 9}, {"c", "3"}}),
            "https://a.example/p?a=1&b=9&c=3");
}

TEST(PageAddressWithExtra, AddsAQueryWhereThereIsNone) {
  EXPECT_EQ(addressWithExtra("https://a.example/p", {{"c", 3}}), "https://a.example/p?c=3");
}

TEST(PageAddressWithExtra, TakesTheParametersOfTheWholeAddressBehindItsFirstQuestionMark) {
  EXPECT_EQ(addressWithExtra("https://a.example/p?a=1#f=2", {{"c", 3}}),
            "https://a.example/p?#f=2&c=3");
  EXPECT_EQ(addressWithExtra("https://a.example/p?a=1?b=2", {{"c", 3}}),
            "https://a.example/p?a=2&c=3");
  EXPECT_EQ(addressWithExtra("https://a.example/#f?a=1", {{"c", 3}}),
            "https://a.example/#f?a=1&c=3");
}

TEST(PageAddressWithExtra, EncodesTheValues) {
  EXPECT_EQ(addressWithExtra("https://a.example/p?a=x%20y", {{"c", "u v"}}),
            "https://a.example/p?a=x%20y&c=u%20v");
}

TEST(PageAddressWithExtra, LeavesAnAddressWithoutExtraParametersAlone) {
  EXPECT_EQ(addressWithExtra("https://a.example/p?b=2&a=x%20y#f", {}),
            "https://a.example/p?b=2&a=x%20y#f");
  EXPECT_EQ(addressWithExtra("", {{"a", 1}}), "");
}

TEST_F(PageAddress, OfAPageFileIsItsPathAsAFileAddress) {
  const ZOVKPopupModel popup = pageFile("lobby");
  EXPECT_EQ(pageFileAddress(popup),
            "file:///home/player/Library/Caches/ZOVKPopup/" + popup.getPopupFileName());
  EXPECT_EQ(ownPagePrefix(popup), pageFileAddress(popup));
}

TEST_F(PageAddress, OfAPageFileIsPercentEncodedWhereThePathNeedsIt) {
  memory().device.setHomeDirectory("/home/a b#c?d%e\xC3\xA9");
  const ZOVKPopupModel popup = pageFile("lobby");
  const std::string expected =
      "file:///home/a%20b%23c%3Fd%25e%C3%A9/Library/Caches/ZOVKPopup/" + popup.getPopupFileName();
  EXPECT_EQ(pageFileAddress(popup), expected);
  EXPECT_EQ(ownPagePrefix(popup), expected) << "a ? of the path begins no query";
}

TEST_F(PageAddress, OfAPopupThatIsNeitherFileNorWebPageIsAFileAddressWithoutAPath) {
  ZOVKPopupModel popup = webPage("lobby");
  popup.content_type = 4;
  EXPECT_EQ(pageFileAddress(popup), "file://");
  EXPECT_EQ(ownPagePrefix(popup), "file://");
}

TEST_F(PageAddress, OfAWebPageIsComparedWithoutItsQuery) {
  ZOVKPopupModel popup = webPage("lobby");
  EXPECT_EQ(ownPagePrefix(popup), popup.uri);
  popup.uri += "?a=1?b=2";
  EXPECT_EQ(ownPagePrefix(popup), webPage("lobby").uri);
}

TEST_F(PageAddress, IsComposedByTheControllerToo) {
  const ZOVKPopupViewController controller(memory().shared(), nullptr);
  EXPECT_EQ(controller.getLoadUri("https://a.example/?a=1", {{"b", 2}}),
            "https://a.example/?a=1&b=2");
}

}  // namespace
}  // namespace zovk
