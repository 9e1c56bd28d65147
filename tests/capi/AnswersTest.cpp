#include <thread>

#include "capi/CWindowFixture.h"

namespace zovk {
namespace {

class CAnswers : public CWindowFixture {
 protected:
  static void answer(const char* json, void* user) { CWindowFixture::note("", json, user); }
  /// Calls the page's handler and notes its answer.
  zovkpopup_status call(const char* name, const char* json) {
    return zovkpopup_web_window_call_handler(window_, name, json, answer, &answers_, Note::destroy);
  }
  void awaitAnswers(std::size_t count) {
    pumpUntil([&] { return answers_.texts.size() >= count; }, std::to_string(count) + " answers");
  }

  Note answers_;
};

constexpr const char* kEcho = R"(
bridge.registerHandler('echo', (data, respond) => respond([typeof data, data]));
bridge.registerHandler('silent', () => {});)";

TEST_F(CAnswers, ComeFromThePage) {
  open(kEcho);
  EXPECT_EQ(call("echo", R"({"price":1.5})"), ZOVKPOPUP_OK);  // waits for the page
  EXPECT_EQ(call("echo", "null"), ZOVKPOPUP_OK);
  EXPECT_EQ(call("echo", nullptr), ZOVKPOPUP_OK);
  awaitAnswers(3);
  EXPECT_EQ(answers_.texts,
            (std::vector<std::string>{R"(["object",{"price":1.5}])", R"(["object",null])",
                                      R"(["undefined",null])"}));
  EXPECT_EQ(answers_.destroyed, 3);
}

TEST_F(CAnswers, NeedJsonAndAName) {
  open(kEcho);
  EXPECT_EQ(call("echo", "{"), ZOVKPOPUP_ERROR_JSON);
  EXPECT_EQ(call("echo", ""), ZOVKPOPUP_ERROR_JSON);
  EXPECT_EQ(call("echo", "1 2"), ZOVKPOPUP_ERROR_JSON);
  EXPECT_EQ(call(nullptr, "1"), ZOVKPOPUP_ERROR_ARGUMENT);
  EXPECT_EQ(zovkpopup_web_window_send(window_, "{", nullptr, nullptr, nullptr),
            ZOVKPOPUP_ERROR_JSON);
  EXPECT_EQ(countOf("a text is no JSON"), 4U);
  EXPECT_EQ(answers_.destroyed, 4);
  EXPECT_TRUE(answers_.texts.empty());
}

TEST_F(CAnswers, ThatNeverComeAreLetGoWithTheWindow) {
  open(kEcho);
  EXPECT_EQ(call("silent", nullptr), ZOVKPOPUP_OK);
  EXPECT_EQ(zovkpopup_web_window_send(window_, "1", answer, &answers_, Note::destroy),
            ZOVKPOPUP_OK);
  EXPECT_EQ(call("echo", "1"), ZOVKPOPUP_OK);
  awaitAnswers(1);
  EXPECT_EQ(answers_.destroyed, 1);
  zovkpopup_web_window_close(window_);
  EXPECT_EQ(answers_.destroyed, 3);
  EXPECT_EQ(call("echo", "1"), ZOVKPOPUP_ERROR_STATE);
  EXPECT_EQ(answers_.destroyed, 4);
}

TEST_F(CAnswers, AreForgottenByAReset) {
  open(kEcho);
  EXPECT_EQ(call("silent", nullptr), ZOVKPOPUP_OK);
  EXPECT_EQ(call("echo", "1"), ZOVKPOPUP_OK);
  awaitAnswers(1);
  EXPECT_EQ(zovkpopup_web_window_reset_bridge(window_), ZOVKPOPUP_OK);
  EXPECT_EQ(answers_.destroyed, 2);
  EXPECT_EQ(call("echo", "2"), ZOVKPOPUP_OK);  // held back for the next page
  EXPECT_EQ(zovkpopup_web_window_send_held(window_), ZOVKPOPUP_OK);
  awaitAnswers(2);
  EXPECT_EQ(answers_.texts.back(), R"(["number",2])");
  EXPECT_EQ(zovkpopup_web_window_disable_alert_box_safety_timeout(window_), ZOVKPOPUP_OK);
  EXPECT_EQ(call("echo", "3"), ZOVKPOPUP_OK);
  awaitAnswers(3);
}

TEST_F(CAnswers, ServeAnotherThread) {
  open(kEcho);
  EXPECT_EQ(call("echo", "1"), ZOVKPOPUP_OK);
  awaitAnswers(1);
  std::atomic<bool> sent{false};
  std::thread other([&] {
    EXPECT_EQ(call("echo", "2"), ZOVKPOPUP_OK);
    sent = true;
  });
  pumpUntil([&] { return sent.load(); }, "the other thread");
  other.join();
  awaitAnswers(2);
}

TEST_F(CAnswers, AreSeenInTheLogOnceItIsWanted) {
  open(kEcho);
  EXPECT_EQ(zovkpopup_log_bridges(20), ZOVKPOPUP_OK);
  EXPECT_EQ(call("echo", "1"), ZOVKPOPUP_OK);
  awaitAnswers(1);
  EXPECT_TRUE(logged("WVJB SEND:"));
  EXPECT_TRUE(logged("WVJB RCVD:"));
}

TEST_F(CAnswers, NeedAWindow) {
  ASSERT_EQ(setUp(), ZOVKPOPUP_OK);
  EXPECT_EQ(call("echo", "1"), ZOVKPOPUP_ERROR_ARGUMENT);
  EXPECT_EQ(zovkpopup_web_window_send(nullptr, "1", answer, &answers_, Note::destroy),
            ZOVKPOPUP_ERROR_ARGUMENT);
  EXPECT_EQ(zovkpopup_web_window_reset_bridge(nullptr), ZOVKPOPUP_ERROR_ARGUMENT);
  EXPECT_EQ(zovkpopup_web_window_send_held(nullptr), ZOVKPOPUP_ERROR_ARGUMENT);
  EXPECT_EQ(zovkpopup_web_window_disable_alert_box_safety_timeout(nullptr),
            ZOVKPOPUP_ERROR_ARGUMENT);
  EXPECT_EQ(answers_.destroyed, 2);
}

}  // namespace
}  // namespace zovk
