#include "fixtures/ControllerFixture.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

enum class Page { kWeb, kFile, kStore, kOtherForm };
enum class Refresh { kUnchanged, kHidden, kShown };

/// How the system stands to the address, where that matters: what it says when it is asked whether
/// some program opens it, and whether it then is opened.
struct Opener {
  std::optional<bool> can;
  std::optional<bool> does;
};

struct Row {
  const char* name;
  Page page;
  std::string url;  // "{own}" stands for the page's own address
  Opener opener;
  NavigationPolicy decision;
  std::size_t opened;  // how often the address is handed out
  Refresh refresh;
};

const Opener kAny{std::nullopt, std::nullopt};
const Opener kCan{true, std::nullopt};
const Opener kCannot{false, std::nullopt};
const Opener kDoes{std::nullopt, true};
const Opener kCanButRefuses{true, false};
const Opener kCannotAndRefuses{false, false};
const Opener kRefuses{std::nullopt, false};

constexpr auto kWeb = Page::kWeb;
constexpr auto kFile = Page::kFile;
constexpr auto kStore = Page::kStore;
constexpr auto kOtherForm = Page::kOtherForm;  // the popup writes its address in another way
constexpr auto kAllow = NavigationPolicy::kAllow;
constexpr auto kCancel = NavigationPolicy::kCancel;
constexpr auto kSame = Refresh::kUnchanged;
constexpr auto kHidden = Refresh::kHidden;
constexpr auto kShown = Refresh::kShown;

const Row kRows[] = {
    // The popup's own page.
    {"OwnWebPage", kWeb, "{own}", kAny, kAllow, 0, kHidden},
    {"OwnWebPageWithQuery", kWeb, "{own}?x=1", kAny, kAllow, 0, kHidden},
    {"OwnWebPageWithFragment", kWeb, "{own}#x", kAny, kAllow, 0, kHidden},
    {"PageBelowTheOwn", kWeb, "{own}/below", kAny, kAllow, 0, kHidden},
    {"AddressThatGoesOnWhereTheOwnEnds", kWeb, "{own}bc", kAny, kAllow, 0, kHidden},
    {"OwnFile", kFile, "{own}", kAny, kAllow, 0, kHidden},
    {"OwnFileWithQuery", kFile, "{own}?x=1", kAny, kAllow, 0, kHidden},
    {"OwnFileWithFragment", kFile, "{own}#x", kAny, kAllow, 0, kHidden},
    {"OwnPageInAnotherForm", kOtherForm, "{own}", kAny, kAllow, 0, kHidden},
    {"OwnPageInAnotherFormWithQuery", kOtherForm, "{own}?x=1", kAny, kAllow, 0, kHidden},
    {"PageBelowTheOwnInAnotherForm", kOtherForm, "{own}/below", kAny, kAllow, 0, kHidden},
    {"OtherPageOfTheSiteInAnotherForm", kOtherForm, "https://popups.example/a", kCan, kCancel, 1,
     kSame},
    {"OwnPageAsThePopupWritesIt", kOtherForm, "https://Popups.Example/x/../a b", kCannot, kCancel,
     0, kSame},
    // Other pages.
    {"OtherSite", kWeb, "https://other.example/", kCan, kCancel, 1, kSame},
    {"OtherSiteThatNobodyOpens", kWeb, "https://other.example/", kCannot, kCancel, 0, kSame},
    {"OtherSiteFromAFile", kFile, "http://other.example/", kCan, kCancel, 1, kSame},
    {"OtherSiteFromAFileThatNobodyOpens", kFile, "http://other.example/", kCannot, kCancel, 0,
     kSame},
    {"OtherSchemeOfTheOwnSite", kWeb, "http://popups.example/a", kCan, kCancel, 1, kSame},
    {"OtherPageOfTheOwnSite", kWeb, "https://popups.example/", kCan, kCancel, 1, kSame},
    {"OwnSiteOnAnotherPort", kWeb, "https://popups.example:8443/a", kCan, kCancel, 1, kSame},
    {"OwnAddressWithinAnother", kWeb, "https://other.example/?{own}", kCan, kCancel, 1, kSame},
    {"PageSchemeWithoutAHost", kWeb, "https:", kCannot, kCancel, 0, kSame},
    {"OtherFile", kFile, "file:///etc/passwd", kCannot, kCancel, 0, kSame},
    {"OtherFileThatAProgramOpens", kFile, "file:///etc/passwd", kCan, kCancel, 1, kSame},
    {"FileFromAWebPage", kWeb, "file:///etc/passwd", kCannot, kCancel, 0, kSame},
    // The application store.
    {"Store", kWeb, "https://store.example/app", kDoes, kCancel, 1, kSame},
    {"StoreFromAFile", kFile, "http://store.example/app", kDoes, kCancel, 1, kSame},
    {"StoreThatIsTheOwnPage", kStore, "{own}", kDoes, kCancel, 1, kSame},
    {"StoreThatIsTheOwnPageAndRefused", kStore, "{own}", kRefuses, kAllow, 1, kHidden},
    {"StoreThatIsRefused", kWeb, "https://store.example/app", kCannotAndRefuses, kCancel, 1, kSame},
    {"StoreThatIsRefusedButSomeProgramOpens", kWeb, "https://store.example/app", kCanButRefuses,
     kCancel, 2, kSame},
    {"StoreInCapitals", kWeb, "https://STORE.example/app", kCannot, kCancel, 0, kSame},
    {"HostThatEndsAsTheStore", kWeb, "https://my.store.example/", kCannot, kCancel, 0, kSame},
    {"HostThatBeginsAsTheStore", kWeb, "https://store.example.other/", kCannot, kCancel, 0, kSame},
    // Other schemes.
    {"CustomScheme", kWeb, "game://x", kCan, kCancel, 1, kSame},
    {"CustomSchemeThatNobodyOpens", kWeb, "game://x", kCannot, kCancel, 0, kShown},
    {"CustomSchemeFromAFile", kFile, "game:x", kCan, kCancel, 1, kSame},
    {"CustomSchemeFromAFileThatNobodyOpens", kFile, "game:x", kCannot, kCancel, 0, kShown},
    {"CustomSchemeOfTheStore", kWeb, "game://store.example/app", kCan, kCancel, 1, kSame},
    {"CustomSchemeOfTheStoreThatNobodyOpens", kWeb, "game://store.example/app", kCannot, kCancel, 0,
     kShown},
    {"MailAddress", kWeb, "mailto:a@b.example", kCan, kCancel, 1, kSame},
    {"BlankPage", kWeb, "about:blank", kCannot, kCancel, 0, kShown},
    {"DataInTheAddress", kWeb, "data:text/html,x", kCannot, kCancel, 0, kShown},
    {"SchemeInCapitals", kWeb, "HTTPS://popups.example/a", kCannot, kCancel, 0, kShown},
    {"SchemeInCapitalsThatAProgramOpens", kWeb, "HTTPS://popups.example/a", kCan, kCancel, 1,
     kSame},
    {"NoScheme", kWeb, "popups.example/a", kCannot, kCancel, 0, kShown},
    {"NoSchemeButTheNameOfOne", kWeb, "https", kCannot, kCancel, 0, kShown},
    {"NothingAtAll", kWeb, "", kCannot, kCancel, 0, kShown},
};

std::vector<bool> valuesOf(std::optional<bool> value) {
  return value ? std::vector{*value} : std::vector{false, true};
}

class NavigationTable : public ControllerFixture, public ::testing::WithParamInterface<Row> {
 protected:
  /// Shows the row's page, the flag being as an earlier navigation left it.
  void showPage(bool flag) {
    ZOVKPopupModel popup = GetParam().page == kFile ? pageFile("a") : webPage("a");
    if (GetParam().page == kStore) popup.uri = "https://store.example/app";
    if (GetParam().page == kOtherForm) popup.uri = "HTTPS://Popups.Example/x/../a b?q";
    show({popup});
    own_ = page()->lastLoad();
    if (GetParam().page == kOtherForm) {
      page()->resolveAddress(own_, "https://popups.example/a%20b?q");
      own_ = "https://popups.example/a%20b";
    }
    ZOVKPopupViewController::setNeedRefresh(flag);
    layout()->view("refreshBtn").hidden = flag;
  }

  std::string url() const {
    std::string url = GetParam().url;
    const std::size_t place = url.find("{own}");
    return place == std::string::npos ? url : url.replace(place, 5, own_);
  }

  void setOpener(bool can, bool does) {
    const std::string scheme = url().substr(0, url().find(':'));
    memory().userInterface.setOpenableSchemes(can ? std::set{scheme} : std::set<std::string>());
    memory().userInterface.setOpenAnswer([does](const std::string&) { return does; });
  }

  /// One navigation, with all that must come of it.
  void navigate(TargetFrame target, bool flagBefore) {
    const std::size_t openedBefore = memory().userInterface.openedUrls().size();
    const std::size_t loadsBefore = page()->loads().size();
    log().clear();
    std::vector<NavigationPolicy> decisions;
    controller().decidePolicyForNavigationAction(
        *page(), {url(), target}, [&](NavigationPolicy policy) { decisions.push_back(policy); });
    settle();

    EXPECT_THAT(decisions, ElementsAre(GetParam().decision));
    const auto& opened = memory().userInterface.openedUrls();
    EXPECT_EQ(std::vector(opened.begin() + static_cast<std::ptrdiff_t>(openedBefore), opened.end()),
              std::vector(GetParam().opened, url()));
    EXPECT_THAT(controllerMessages(log()),
                ElementsAre("Decide policy for navigation action, url:" + url()));
    EXPECT_THAT(errorMessages(log()), IsEmpty());
    const bool flag =
        GetParam().refresh == kSame ? flagBefore : GetParam().refresh == Refresh::kHidden;
    EXPECT_EQ(ZOVKPopupViewController::needRefresh(), flag);
    EXPECT_EQ(layout()->view("refreshBtn").hidden, flag);
    // What wants a new window is loaded in this one, whatever is decided.
    const std::vector<MemoryLoad> loads(
        page()->loads().begin() + static_cast<std::ptrdiff_t>(loadsBefore), page()->loads().end());
    EXPECT_EQ(loads, std::vector<MemoryLoad>(target == TargetFrame::kNone ? 1 : 0,
                                             MemoryLoad{url(), std::nullopt}));
  }

 private:
  std::string own_;
};

TEST_P(NavigationTable, IsDecidedOnceInEveryFrame) {
  for (const TargetFrame target : {TargetFrame::kMain, TargetFrame::kSub, TargetFrame::kNone}) {
    for (const bool can : valuesOf(GetParam().opener.can)) {
      for (const bool does : valuesOf(GetParam().opener.does)) {
        for (const bool flag : {false, true}) {
          SCOPED_TRACE(::testing::Message()
                       << "target " << static_cast<int>(target) << ", can open " << can
                       << ", opens " << does << ", flag " << flag);
          showPage(flag);
          setOpener(can, does);
          navigate(target, flag);
        }
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Navigation, NavigationTable, ::testing::ValuesIn(kRows),
                         [](const auto& test) { return std::string(test.param.name); });

}  // namespace
}  // namespace zovk
