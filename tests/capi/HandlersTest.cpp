#include <algorithm>
#include <thread>
#include <utility>

#include "capi/CWindowFixture.h"

namespace zovk {
namespace {

class CHandlers : public CWindowFixture {
 protected:
  /// Lets the page call `name`. The handler notes what it receives and keeps the response.
  zovkpopup_status keep(const char* name) {
    const auto handler = [](const char* json, zovkpopup_response* response, void* user) {
      auto* const test = static_cast<CHandlers*>(user);
      CWindowFixture::note("told ", json, &test->note_);
      test->kept_.push_back(response);
    };
    return zovkpopup_web_window_register_handler(
        window_, name, handler, this, [](void* user) { ++static_cast<CHandlers*>(user)->letGo_; });
  }
  void TearDown() override {
    for (zovkpopup_response* response : kept_) zovkpopup_response_free(response);
    CWindowFixture::TearDown();
  }

 public:  // for the game's functions, which are not members
  std::vector<zovkpopup_response*> kept_;
  std::atomic<int> letGo_{0};
};

constexpr const char* kAsking = "bridge.callHandler('ask', {a: 1}, x => { window.answer = x; });";

TEST_F(CHandlers, HearThePageAndAnswerIt) {
  open(kAsking);
  ASSERT_EQ(keep("ask"), ZOVKPOPUP_OK);
  awaitText(R"(told {"a":1})");
  ASSERT_EQ(kept_.size(), 1U);
  EXPECT_EQ(zovkpopup_response_send(kept_[0], R"({"b":[2,"ü"]})"), ZOVKPOPUP_OK);
  pumpUntil([&] { return evaluate("window.answer") == R"({"b":[2,"ü"]})"; }, "the answer");
}

TEST_F(CHandlers, TellNoValueFromNull) {
  open("bridge.callHandler('ask', null); bridge.callHandler('ask', 'text');");
  ASSERT_EQ(keep("ask"), ZOVKPOPUP_OK);
  awaitText(R"(told "text")");
  EXPECT_TRUE(has("told null"));
  evaluate("WebViewJavascriptBridge.callHandler('ask'); 1");
  awaitText("told nothing");
}

TEST_F(CHandlers, AnswerOnceAndRefuseWhatIsNoJson) {
  open(kAsking);
  ASSERT_EQ(keep("ask"), ZOVKPOPUP_OK);
  awaitText("told ");
  EXPECT_EQ(zovkpopup_response_send(kept_[0], "{no json"), ZOVKPOPUP_ERROR_JSON);
  EXPECT_EQ(zovkpopup_response_send(kept_[0], "\"\xff\""), ZOVKPOPUP_ERROR_JSON);
  EXPECT_EQ(zovkpopup_response_send(kept_[0], "\"first\""), ZOVKPOPUP_OK);
  EXPECT_EQ(zovkpopup_response_send(kept_[0], "\"second\""), ZOVKPOPUP_ERROR_STATE);
  EXPECT_EQ(zovkpopup_response_send(nullptr, "1"), ZOVKPOPUP_ERROR_ARGUMENT);
  pumpUntil([&] { return evaluate("window.answer") == R"("first")"; }, "the answer");
  EXPECT_EQ(countOf("[Error] zovkpopup_response_send: "), 4U);
}

TEST_F(CHandlers, MayAnswerFromAnotherThread) {
  open(kAsking);
  ASSERT_EQ(keep("ask"), ZOVKPOPUP_OK);
  awaitText("told ");
  std::atomic<bool> sent{false};
  std::thread other([&] {
    EXPECT_EQ(zovkpopup_response_send(kept_[0], "7"), ZOVKPOPUP_OK);
    zovkpopup_response_free(kept_[0]);
    sent = true;
  });
  pumpUntil([&] { return sent.load(); }, "the other thread");
  other.join();
  kept_.clear();
  pumpUntil([&] { return evaluate("window.answer") == "7"; }, "the answer");
}

TEST_F(CHandlers, MayAnswerTooLateOrNever) {
  open(std::string(kAsking) + kAsking);
  ASSERT_EQ(keep("ask"), ZOVKPOPUP_OK);
  pumpUntil([&] { return kept_.size() == 2; }, "both questions");
  zovkpopup_response_free(kept_.back());
  kept_.pop_back();
  zovkpopup_web_window_free(std::exchange(window_, nullptr));
  EXPECT_EQ(zovkpopup_response_send(kept_[0], "1"), ZOVKPOPUP_OK);
  zovkpopup_shut_down();
  zovkpopup_response_free(kept_[0]);
  kept_.clear();
}

TEST_F(CHandlers, AreLetGoWhenTheyAreReplacedRemovedOrTheWindowCloses) {
  open("");
  ASSERT_EQ(keep("ask"), ZOVKPOPUP_OK);
  ASSERT_EQ(keep("ask"), ZOVKPOPUP_OK);
  EXPECT_EQ(letGo_, 1);
  EXPECT_EQ(zovkpopup_web_window_remove_handler(window_, "ask"), ZOVKPOPUP_OK);
  EXPECT_EQ(zovkpopup_web_window_remove_handler(window_, "ask"), ZOVKPOPUP_OK);
  EXPECT_EQ(letGo_, 2);
  ASSERT_EQ(keep("ask"), ZOVKPOPUP_OK);
  zovkpopup_web_window_close(window_);
  EXPECT_EQ(letGo_, 3);
  EXPECT_EQ(keep("ask"), ZOVKPOPUP_ERROR_STATE);
  EXPECT_EQ(letGo_, 4);
  EXPECT_EQ(zovkpopup_web_window_remove_handler(window_, "ask"), ZOVKPOPUP_ERROR_STATE);
}

TEST_F(CHandlers, NeedANameAFunctionAndAWindow) {
  open("");
  EXPECT_EQ(keep(nullptr), ZOVKPOPUP_ERROR_ARGUMENT);
  EXPECT_EQ(zovkpopup_web_window_register_handler(window_, "ask", nullptr, nullptr, nullptr),
            ZOVKPOPUP_ERROR_ARGUMENT);
  EXPECT_EQ(zovkpopup_web_window_remove_handler(window_, nullptr), ZOVKPOPUP_ERROR_ARGUMENT);
  EXPECT_EQ(zovkpopup_web_window_remove_handler(nullptr, "ask"), ZOVKPOPUP_ERROR_ARGUMENT);
  EXPECT_EQ(countOf("name is NULL"), 2U);
  EXPECT_EQ(countOf("handler is NULL"), 1U);
  EXPECT_EQ(countOf("window is NULL"), 1U);
}

TEST_F(CHandlers, MayFreeTheirWindow) {
  open("bridge.callHandler('close'); bridge.callHandler('close');");
  const auto close = [](const char*, zovkpopup_response* response, void* user) {
    auto* const test = static_cast<CHandlers*>(user);
    zovkpopup_response_free(response);
    zovkpopup_web_window_free(std::exchange(test->window_, nullptr));
    test->note_.texts.emplace_back("closed");
  };
  ASSERT_EQ(zovkpopup_web_window_register_handler(
                window_, "close", close, this,
                [](void* user) { ++static_cast<CHandlers*>(user)->letGo_; }),
            ZOVKPOPUP_OK);
  awaitText("closed");
  EXPECT_EQ(letGo_, 1);
  EXPECT_EQ(zovkpopup_pump(100'000), ZOVKPOPUP_OK);
  EXPECT_EQ(std::count(note_.texts.begin(), note_.texts.end(), "closed"), 1);
}

}  // namespace
}  // namespace zovk
