#include "fixtures/ControllerFixture.h"

namespace zovk {
namespace {

// Addresses of the application store are the system's before they are anybody's.
class StoreNavigation : public ControllerFixture {
 protected:
  static constexpr const char* kStorePage = "https://store.example/app";

  void answerOpening(bool opened) {
    memory().userInterface.setOpenAnswer([opened](const std::string&) { return opened; });
  }
  const std::vector<std::string>& handedOut() { return memory().userInterface.openedUrls(); }
};

TEST_F(StoreNavigation, ThatTheSystemOpensIsCancelledInside) {
  answerOpening(true);
  show({webPage("a")});
  const MemoryDecision decision = page()->navigate(kStorePage);
  EXPECT_TRUE(decision.undecided()) << "the system has not said yet";
  settle();
  EXPECT_TRUE(decision.cancelled());
  EXPECT_EQ(handedOut(), std::vector<std::string>{kStorePage});
  EXPECT_FALSE(ZOVKPopupViewController::needRefresh());
}

TEST_F(StoreNavigation, ThatTheSystemOpensIsCancelledEvenForThePopupsOwnPage) {
  answerOpening(true);
  ZOVKPopupModel popup = webPage("a");
  popup.uri = kStorePage;
  show({popup});
  const MemoryDecision decision = page()->navigate(kStorePage);
  settle();
  EXPECT_TRUE(decision.cancelled());
}

TEST_F(StoreNavigation, ThatTheSystemRefusesIsDecidedByThePrefix) {
  answerOpening(false);
  ZOVKPopupModel popup = webPage("a");
  popup.uri = kStorePage;
  show({popup});
  const MemoryDecision own = page()->navigate(kStorePage);
  settle();
  EXPECT_TRUE(own.allowed());
  EXPECT_TRUE(ZOVKPopupViewController::needRefresh());
  const MemoryDecision other = page()->navigate("https://store.example/other");
  settle();
  EXPECT_TRUE(other.cancelled());
  EXPECT_EQ(handedOut().size(), 3U) << "as any other web page it is handed out again";
}

TEST_F(StoreNavigation, IsKnownByItsHostWhateverFollows) {
  answerOpening(true);
  show({webPage("a")});
  for (const char* url : {"https://store.example", "http://store.example/a|b?c=[d]#^",
                          "https://user@store.example:8443/x", "https://store.example?x"}) {
    const MemoryDecision decision = page()->navigate(url);
    EXPECT_TRUE(decision.undecided()) << url;
    settle();
    EXPECT_TRUE(decision.cancelled()) << url;
  }
}

TEST_F(StoreNavigation, IsComparedExactly) {
  show({webPage("a")});
  for (const char* url :
       {"https://store.example.other/", "https://my.store.example/",
        "https://other.example/store.example", "https://other.example/?store.example"}) {
    EXPECT_TRUE(page()->navigate(url).cancelled()) << url;
  }
}

TEST_F(StoreNavigation, AnAddressWithoutAHostIsNeverTheStoresEvenWhenTheDeviceKnowsNone) {
  memory().device.setAppStoreHost("");
  show({pageFile("a")});
  EXPECT_TRUE(page()->navigate(page()->lastLoad()).allowed());
  EXPECT_TRUE(handedOut().empty());
}

TEST_F(StoreNavigation, AnsweredAfterTheWindowWasClosedIsCancelled) {
  answerOpening(false);
  ZOVKPopupModel popup = webPage("a");
  popup.uri = kStorePage;
  show({popup});
  const MemoryDecision decision = page()->navigate(kStorePage);
  close();
  settle();
  EXPECT_TRUE(decision.cancelled());
  EXPECT_EQ(handedOut().size(), 1U) << "nobody opens it a second time";
}

}  // namespace
}  // namespace zovk
