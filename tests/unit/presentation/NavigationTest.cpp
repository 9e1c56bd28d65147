#include "support/ControllerFixture.h"

namespace zovk {
namespace {

using ::testing::Contains;
using ::testing::IsEmpty;

enum class Page { kWeb, kFile };
enum class Opens { kNothing, kWebOnly, kEverything };
enum class Refresh { kUnchanged, kHidden, kShown };

struct Row {
  const char* name;
  Page page;
  std::string url;  // "{own}" stands for the page's own address
  TargetFrame target;
  Opens opens;
  bool allowed;
  bool handedOut;
  Refresh refresh;
};

constexpr auto kMain = TargetFrame::kMain;
constexpr auto kSub = TargetFrame::kSub;
constexpr auto kNone = TargetFrame::kNone;
constexpr auto kSame = Refresh::kUnchanged;

const Row kRows[] = {
    {"OwnWebPage", Page::kWeb, "{own}", kMain, Opens::kWebOnly, true, false, Refresh::kHidden},
    {"OwnWebPageWithQuery", Page::kWeb, "{own}?x=1", kMain, Opens::kWebOnly, true, false,
     Refresh::kHidden},
    {"PageBelowTheOwn", Page::kWeb, "{own}/sub", kMain, Opens::kWebOnly, true, false,
     Refresh::kHidden},
    {"OwnPageInASubFrame", Page::kWeb, "{own}/frame", kSub, Opens::kWebOnly, true, false,
     Refresh::kHidden},
    {"OwnPageInANewWindow", Page::kWeb, "{own}#new", kNone, Opens::kWebOnly, true, false,
     Refresh::kHidden},
    {"OtherWebPage", Page::kWeb, "https://other.example/", kMain, Opens::kWebOnly, false, true,
     kSame},
    {"OtherWebPageInASubFrame", Page::kWeb, "https://other.example/", kSub, Opens::kWebOnly, false,
     true, kSame},
    {"OtherWebPageInANewWindow", Page::kWeb, "http://other.example/", kNone, Opens::kWebOnly, false,
     true, kSame},
    {"OtherWebPageThatNobodyOpens", Page::kWeb, "https://other.example/", kMain, Opens::kNothing,
     false, false, kSame},
    {"OtherSchemeOfTheOwnHost", Page::kWeb, "http://popups.example/a", kMain, Opens::kWebOnly,
     false, true, kSame},
    {"OwnFile", Page::kFile, "{own}", kMain, Opens::kWebOnly, true, false, Refresh::kHidden},
    {"OwnFileWithQuery", Page::kFile, "{own}?x=1", kMain, Opens::kWebOnly, true, false,
     Refresh::kHidden},
    {"OtherFile", Page::kFile, "file:///etc/passwd", kMain, Opens::kWebOnly, false, false, kSame},
    {"FileFromAWebPage", Page::kWeb, "file:///etc/passwd", kMain, Opens::kWebOnly, false, false,
     kSame},
    {"WebPageFromAFile", Page::kFile, "https://other.example/", kMain, Opens::kWebOnly, false, true,
     kSame},
    {"CustomSchemeThatOpens", Page::kWeb, "game://x", kMain, Opens::kEverything, false, true,
     kSame},
    {"CustomSchemeThatNobodyOpens", Page::kWeb, "game://x", kMain, Opens::kWebOnly, false, false,
     Refresh::kShown},
    {"CustomSchemeInANewWindow", Page::kFile, "game://x", kNone, Opens::kWebOnly, false, false,
     Refresh::kShown},
    {"MailAddress", Page::kWeb, "mailto:a@b.example", kMain, Opens::kEverything, false, true,
     kSame},
    {"BlankPage", Page::kWeb, "about:blank", kSub, Opens::kWebOnly, false, false, Refresh::kShown},
    {"UpperCaseScheme", Page::kWeb, "HTTPS://popups.example/a", kMain, Opens::kNothing, false,
     false, Refresh::kShown},
    {"NoSchemeAtAll", Page::kWeb, "popups.example", kMain, Opens::kWebOnly, false, false,
     Refresh::kShown},
    {"NothingAtAll", Page::kWeb, "", kMain, Opens::kWebOnly, false, false, Refresh::kShown},
};

class Navigation : public ControllerFixture {
 protected:
  std::string showPage(Page kind) {
    const ZOVKPopupModel popup = kind == Page::kWeb ? webPage("a") : pageFile("a");
    show({popup});
    layout()->view("refreshBtn").hidden = false;
    return page()->lastLoad();
  }
  void open(Opens opens) {
    auto& interface = memory().userInterface;
    if (opens == Opens::kNothing) interface.setOpenableSchemes({});
    if (opens == Opens::kWebOnly) interface.setOpenableSchemes({"http", "https"});
    if (opens == Opens::kEverything)
      interface.setOpenableSchemes({"http", "https", "game", "mailto"});
  }
  bool refreshHidden() { return layout()->view("refreshBtn").hidden; }
  const std::vector<std::string>& opened() { return memory().userInterface.openedUrls(); }
};

class NavigationRow : public Navigation,
                      public ::testing::WithParamInterface<std::tuple<Row, bool>> {};

TEST_P(NavigationRow, IsDecidedAtOnce) {
  const auto& [row, flagBefore] = GetParam();
  std::string url = row.url;
  const std::string own = showPage(row.page);
  if (url.starts_with("{own}")) url.replace(0, 5, own);
  open(row.opens);
  ZOVKPopupViewController::setNeedRefresh(flagBefore);
  layout()->view("refreshBtn").hidden = flagBefore;
  const std::size_t loads = page()->loads().size();

  const MemoryDecision decision = page()->navigate(url, row.target);

  ASSERT_FALSE(decision.undecided());
  EXPECT_EQ(decision.allowed(), row.allowed);
  EXPECT_EQ(opened(), row.handedOut ? std::vector{url} : std::vector<std::string>());
  EXPECT_THAT(controllerMessages(log()),
              Contains("Decide policy for navigation action, url:" + url));
  const bool hidden = row.refresh == kSame ? flagBefore : row.refresh == Refresh::kHidden;
  EXPECT_EQ(refreshHidden(), hidden);
  EXPECT_EQ(ZOVKPopupViewController::needRefresh(), hidden);
  EXPECT_EQ(page()->loads().size(), loads + (row.target == kNone ? 1 : 0));
  if (row.target == kNone) {
    EXPECT_EQ(page()->loads().back(), (MemoryLoad{url, std::nullopt}));
  }
}

INSTANTIATE_TEST_SUITE_P(Navigation, NavigationRow,
                         ::testing::Combine(::testing::ValuesIn(kRows), ::testing::Bool()),
                         [](const auto& test) {
                           return std::string(std::get<0>(test.param).name) +
                                  (std::get<1>(test.param) ? "AfterAnAllowedOne" : "");
                         });

TEST_F(Navigation, TheDecisionComesBeforeTheFlagAndTheButton) {
  const std::string own = showPage(Page::kWeb);
  bool flagSeen = true;
  bool hiddenSeen = true;
  controller().decidePolicyForNavigationAction({own, kMain}, [&](NavigationPolicy policy) {
    EXPECT_EQ(policy, NavigationPolicy::kAllow);
    flagSeen = ZOVKPopupViewController::needRefresh();
    hiddenSeen = refreshHidden();
  });
  EXPECT_FALSE(flagSeen);
  EXPECT_FALSE(hiddenSeen);
  EXPECT_TRUE(ZOVKPopupViewController::needRefresh());
  EXPECT_TRUE(refreshHidden());
}

TEST_F(Navigation, ARemotePageMayCarryOtherParametersThanItsAddress) {
  ZOVKPopupModel popup = webPage("a");
  popup.uri += "?a=1";
  show({popup});
  EXPECT_TRUE(page()->navigate(webPage("a").uri + "?a=1&b=2").allowed());
}

TEST_F(Navigation, APageFileWhosePathNeedsEncodingIsItsOwnPage) {
  ZOVKPopupModel popup = pageFile("a");
  popup.sig = "a b?c";
  show({popup});
  EXPECT_THAT(page()->lastLoad(), ::testing::HasSubstr("a%20b%3Fc.html"));
  EXPECT_TRUE(page()->navigate(page()->lastLoad() + "?x=1").allowed());
  EXPECT_TRUE(page()->navigate("file://" + std::string(kCache) + "/other.html").cancelled());
}

TEST_F(Navigation, BeforeTheFirstPopupNothingIsAllowedInside) {
  controller().showPopup(listOf({webPage("a")}), window().get(), recordAnswer());
  EXPECT_TRUE(page()->navigate(webPage("a").uri).cancelled());
}

TEST_F(Navigation, TheFlagCarriesOverToTheNextPopup) {
  ZOVKPopupModel game = webPage("b");
  game.pop_type = 2;
  show({webPage("a"), game});
  page()->navigate(webPage("a").uri);
  choose("skip");
  EXPECT_TRUE(refreshHidden());
  EXPECT_NE(layout()->view("contentView").background, Color::black(0.5));
}

}  // namespace
}  // namespace zovk
