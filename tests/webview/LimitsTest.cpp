#include <gtest/gtest.h>

#include "HandServer.h"
#include "PopupScreen.h"

namespace zovk {
namespace {

/// A page from the net, which may store things.
class HelperLimits : public testing::Test {
 protected:
  void openPage(const std::string& url) {
    helper_.send({{"type", "web.load"}, {"view", PopupScreen::kWebView}, {"url", url}});
    helper_.send({{"type", "web.decide"},
                  {"view", PopupScreen::kWebView},
                  {"decision", helper_.await("web.policy").at("decision")},
                  {"allow", true}});
    server_.awaitRequest();
    server_.answer("Page");
    helper_.await("web.finished");
  }
  void run(const std::string& script) {
    helper_.send({{"type", "web.run"}, {"view", PopupScreen::kWebView}, {"script", script}});
  }
  boost::json::value posted() { return helper_.await("web.message").at("body"); }

  HandServer server_;
  HelperUnderTest helper_;
  PopupScreen screen_{helper_};
};

TEST_F(HelperLimits, APageKeepsSixtyFourMegabytesAtMost) {
  screen_.open();
  openPage(server_.url());
  run(R"(
    const post = (what) => window.webkit.messageHandlers.ZOVKPopup.postMessage(what);
    const request = indexedDB.open("fill");
    request.onupgradeneeded = () => request.result.createObjectStore("store");
    request.onerror = () => post({kept: -1, error: String(request.error)});
    request.onsuccess = () => {
      let kept = 0;
      const bytes = new Uint8Array(1 << 20).map(() => Math.random() * 256);
      const more = () => {
        const change = request.result.transaction("store", "readwrite");
        change.objectStore("store").put(bytes, kept);
        change.oncomplete = () => ++kept < 200 ? more() : post({kept, error: "none"});
        change.onabort = () => post({kept, error: change.error ? change.error.name : "aborted"});
      };
      more();
    };)");
  const boost::json::value result = posted();
  EXPECT_EQ(result.at("error"), "QuotaExceededError");
  EXPECT_GE(result.at("kept").as_int64(), 16) << "room for what pages need";
  EXPECT_LE(result.at("kept").as_int64(), 64);
}

constexpr const char* kTakesSlices = R"(
    const kept = [];
    const take = () => {
      if (kept.length < SLICES) kept.push(new Uint8Array(1 << 25).fill(7));
    };
    setInterval(take, 10);)";

std::string taking(int megabytes) {
  std::string script = kTakesSlices;
  return script.replace(script.find("SLICES"), 6, std::to_string(megabytes / 32));
}

TEST_F(HelperLimits, APageThatTakesAGigabyteOfMemoryEndsAndCanBeLoadedAgain) {
  screen_.openPage("plain.html");
  run(taking(1536));
  helper_.await("web.terminated");
  screen_.loadPage("other.html");
}

TEST(HelperLimit, OfAPagesMemoryIsTheGames) {
  HelperUnderTest helper(HelperUnderTest::Start::kSilent);
  HelperMessage greeting = helper.greeting();
  greeting["pageMemory"] = 256;
  helper.send(greeting);
  helper.await("ready");
  PopupScreen screen(helper);
  screen.openPage("plain.html");
  helper.send({{"type", "web.run"}, {"view", PopupScreen::kWebView}, {"script", taking(512)}});
  helper.await("web.terminated");
}

}  // namespace
}  // namespace zovk
