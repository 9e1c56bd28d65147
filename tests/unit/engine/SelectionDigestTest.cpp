#include <algorithm>
#include <cctype>

#include <gmock/gmock.h>

#include "fixtures/EngineFixture.h"
#include "fixtures/LogMessages.h"

namespace zovk {
namespace {

class SelectionDigest : public EngineFixture {
 protected:
  SelectionDigest() { engine(); }
  bool matches(const std::string& sig) {
    ZOVKPopupModel popup = webPage("a");
    popup.sig = sig;
    const PopupList list = listOf({popup});
    const bool byType = !engine().getValidPopupForSceneType(1, list).empty();
    EXPECT_EQ(byType, !engine().getValidPopupForScene("a", list).empty());
    return byType;
  }
  static std::string upper(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return text;
  }
  const std::string digest_ = md5Hex(webPage("a").uri);
};

TEST_F(SelectionDigest, MatchesInLowerAndInUpperCase) {
  EXPECT_TRUE(matches(digest_));
  EXPECT_TRUE(matches(upper(digest_)));
}

TEST_F(SelectionDigest, DoesNotMatchInMixedCase) {
  std::string mixed = digest_;
  const auto firstLetter = std::find_if(mixed.begin(), mixed.end(),
                                        [](unsigned char c) { return std::isalpha(c) != 0; });
  ASSERT_NE(firstLetter, mixed.end());
  *firstLetter = upper({*firstLetter})[0];
  ASSERT_NE(mixed, upper(digest_));
  EXPECT_FALSE(matches(mixed));
}

TEST_F(SelectionDigest, DoesNotMatchWithAnythingAroundItOrMissing) {
  EXPECT_FALSE(matches(" " + digest_));
  EXPECT_FALSE(matches(digest_ + " "));
  EXPECT_FALSE(matches(digest_.substr(1)));
  EXPECT_FALSE(matches(digest_ + "0"));
  EXPECT_FALSE(matches(""));
}

// Neither an empty address nor an unreadable file has a digest, and a missing one is not equal to
// that.
TEST_F(SelectionDigest, ThatIsMissingMatchesNoPageWithoutADigest) {
  ZOVKPopupModel nowhere = webPage("a");
  nowhere.uri = "";
  nowhere.sig = "";
  ZOVKPopupModel unreadable = pageFile("a");
  unreadable.sig = "";
  addCacheFile(unreadable.getPopupFileName(), "page");
  memory().files.failReads(unreadable.getPopupFilePath());
  const std::string line = "MD5 different, config sig:, file MD5:";
  for (const ZOVKPopupModel& popup : {nowhere, unreadable}) {
    log().clear();
    EXPECT_TRUE(engine().getValidPopupForSceneType(1, listOf({popup})).empty());
    EXPECT_THAT(errorMessages(log()), ::testing::Contains(line));
    log().clear();
    EXPECT_TRUE(engine().getValidPopupForScene("a", listOf({popup})).empty());
    EXPECT_THAT(popup.isPageFile() ? debugMessages(log()) : errorMessages(log()),
                ::testing::Contains(line));
  }
}

TEST_F(SelectionDigest, OfAPageFileMatchesInUpperCaseToo) {
  ZOVKPopupModel popup = pageFile("a");
  popup.sig = upper(popup.sig);
  addCacheFile(popup.getPopupFileName(), "page of a");
  EXPECT_EQ(engine().getValidPopupForSceneType(1, listOf({popup})).size(), 1U);
  EXPECT_EQ(engine().getValidPopupForScene("a", listOf({popup})).size(), 1U);
}

}  // namespace
}  // namespace zovk
