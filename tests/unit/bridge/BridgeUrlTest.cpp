#include "unit/bridge/BridgeFixture.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;

using BridgeUrl = BridgeFixture;

TEST_F(BridgeUrl, TheQueueIsSignalledByItsHost) {
  for (const char* url :
       {"https://__wvjb_queue_message__", "https://__wvjb_queue_message__/",
        "wvjbscheme://__wvjb_queue_message__", "HTTPS://__WVJB_QUEUE_MESSAGE__/a/b?c=d#e",
        "WvjbScheme://__wvjb_Queue_message__?x", "https://__wvjb_queue_message__:8443/x",
        "https://user:password@__wvjb_queue_message__/", "https://__wvjb_queue_message__#x",
        "https://__wvjb_queue_message__/ |{}\xff"}) {
    EXPECT_TRUE(bridge_->isQueueMessageURL(url)) << url;
    EXPECT_TRUE(bridge_->isWebViewJavascriptBridgeURL(url)) << url;
    EXPECT_FALSE(bridge_->isBridgeLoadedURL(url)) << url;
  }
}

TEST_F(BridgeUrl, TheBridgeIsAskedForByItsHost) {
  for (const char* url : {"https://__bridge_loaded__", "wvjbscheme://__BRIDGE_LOADED__",
                          "HTTPS://__BRIDGE_LOADED__", "https://a@__bridge_loaded__:1/x?y"}) {
    EXPECT_TRUE(bridge_->isBridgeLoadedURL(url)) << url;
    EXPECT_TRUE(bridge_->isWebViewJavascriptBridgeURL(url)) << url;
    EXPECT_FALSE(bridge_->isQueueMessageURL(url)) << url;
  }
}

TEST_F(BridgeUrl, OtherAddressesAreNoneOfTheBridges) {
  for (const char* url : {"http://__bridge_loaded__",
                          "http://__wvjb_queue_message__/",
                          "https://example.org/",
                          "wvjbscheme://other",
                          "https:__bridge_loaded__",
                          "https:///__bridge_loaded__",
                          "https://__bridge_loaded__.example.org/",
                          "https://x__bridge_loaded__",
                          "https://example.org/__bridge_loaded__",
                          "https://example.org/?https://__bridge_loaded__",
                          "https://__bridge_loaded__@example.org/",
                          "https://[__bridge_loaded__]/",
                          "__bridge_loaded__",
                          "://__bridge_loaded__",
                          "https",
                          "https:",
                          "https://",
                          "",
                          ":",
                          "//__bridge_loaded__",
                          "wvjbscheme:__bridge_loaded__"}) {
    EXPECT_FALSE(bridge_->isWebViewJavascriptBridgeURL(url)) << url;
    EXPECT_FALSE(bridge_->isBridgeLoadedURL(url)) << url;
    EXPECT_FALSE(bridge_->isQueueMessageURL(url)) << url;
  }
}

TEST_F(BridgeUrl, TwoSchemesMatchInAnyCase) {
  for (const char* url : {"https://a", "HttpS://a", "https:", "wvjbscheme:x", "WVJBSCHEME://x"}) {
    EXPECT_TRUE(bridge_->isSchemeMatch(url)) << url;
  }
  for (const char* url : {"http://a", "https2://a", "wvjb://a", "file:///https:", "https", ""}) {
    EXPECT_FALSE(bridge_->isSchemeMatch(url)) << url;
  }
}

TEST_F(BridgeUrl, AnUnknownOneIsLoggedInFull) {
  bridge_->logUnkownMessage("wvjbscheme://other/a?b=%@#c");
  EXPECT_THAT(warnings(),
              ElementsAre("WebViewJavascriptBridge: WARNING: Received unknown "
                          "WebViewJavascriptBridge command wvjbscheme://other/a?b=%@#c"));
}

}  // namespace
}  // namespace zovk
