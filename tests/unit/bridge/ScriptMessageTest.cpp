#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <boost/json/parse.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "bridge/ZOVKPopupWebviewMessageHandler.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

class ScriptMessage : public ::testing::Test {
 protected:
  using Received = std::vector<std::pair<std::int32_t, boost::json::value>>;

  ScriptMessage() {
    handler_.setCallback([this](std::int32_t code, const boost::json::value& message) {
      received_.emplace_back(code, message);
    });
  }

  /// Returns what the callback receives for one message.
  Received post(const std::string& channel, const std::optional<boost::json::value>& body) {
    received_.clear();
    handler_.didReceiveScriptMessage(channel, body);
    return received_;
  }
  Received postText(const std::string& text) { return post("ZOVKPopup", boost::json::value(text)); }
  Received postObject(const char* json) { return post("__qvOpenSdk", boost::json::parse(json)); }

  ZOVKPopupWebviewMessageHandler handler_;
  Received received_;
};

TEST_F(ScriptMessage, GivesACodeForEachWordOfThePopupChannel) {
  EXPECT_THAT(postText(R"({"action":"skip","msg":"a"})"), ElementsAre(Pair(0, "a")));
  EXPECT_THAT(postText(R"({"action":"commit","msg":"ok"})"), ElementsAre(Pair(1, "ok")));
  EXPECT_THAT(postText(R"({"action":"cancel","msg":"c"})"), ElementsAre(Pair(2, "c")));
}

TEST_F(ScriptMessage, GivesOneCodeForEachWordOfTheOpenSdkChannel) {
  EXPECT_THAT(postObject(R"({"action":"confirm","msg":"a"})"), ElementsAre(Pair(1, "a")));
  EXPECT_THAT(postObject(R"({"action":"reject","msg":"b"})"), ElementsAre(Pair(1, "b")));
  EXPECT_THAT(postObject(R"({"action":"cancel","msg":"c"})"), ElementsAre(Pair(1, "c")));
}

TEST_F(ScriptMessage, HasAnEmptyTextWhereThePageGaveNone) {
  EXPECT_THAT(postText(R"({"action":"skip"})"), ElementsAre(Pair(0, "")));
  EXPECT_THAT(postObject(R"({"action":"reject"})"), ElementsAre(Pair(1, "")));
}

TEST_F(ScriptMessage, PassesItsTextOnAsItStands) {
  EXPECT_THAT(postText(R"({"action":"skip","msg":"100%s \"x\" \n"})"),
              ElementsAre(Pair(0, "100%s \"x\" \n")));
  for (const char* json : {"5", "null", "true", "[1,2]", R"({"k":"v"})", R"("")"}) {
    const std::string text = std::string(R"({"action":"commit","msg":)") + json + "}";
    EXPECT_THAT(postText(text), ElementsAre(Pair(1, boost::json::parse(json)))) << json;
  }
}

TEST_F(ScriptMessage, WithAnotherWordIsIgnored) {
  for (const char* word : {"Commit", "COMMIT", "Skip", "SKIP", "Cancel", "CANCEL", "confirm",
                           "reject", "", " skip", "commit "}) {
    EXPECT_THAT(postText(std::string(R"({"action":")") + word + R"(","msg":"x"})"), IsEmpty())
        << word;
  }
  for (const char* word :
       {"commit", "skip", "Confirm", "CONFIRM", "Reject", "REJECT", "Cancel", "CANCEL", ""}) {
    const std::string json = std::string(R"({"action":")") + word + R"("})";
    EXPECT_THAT(postObject(json.c_str()), IsEmpty()) << word;
  }
}

TEST_F(ScriptMessage, WithoutAWordIsIgnored) {
  for (const char* action : {"null", "1", "true", R"(["skip"])", R"({"skip":1})"}) {
    const std::string json = std::string(R"({"action":)") + action + R"(,"msg":"x"})";
    EXPECT_THAT(postText(json), IsEmpty()) << action;
    EXPECT_THAT(postObject(json.c_str()), IsEmpty()) << action;
  }
  EXPECT_THAT(postText("{}"), IsEmpty());
  EXPECT_THAT(postObject("{}"), IsEmpty());
  EXPECT_THAT(postText(R"({"Action":"skip"})"), IsEmpty());
}

TEST_F(ScriptMessage, ThatIsNoJsonObjectIsIgnored) {
  for (const std::string text :
       {"", "skip", "[1]", "5", "null", "\"commit\"", "{\"action\":\"skip\"",
        "{\"action\":\"skip\"}x", "{\"action\":\"\xff\"}"}) {
    EXPECT_THAT(postText(text), IsEmpty()) << text;
  }
}

TEST_F(ScriptMessage, OfEveryOtherTypeIsIgnoredOnBothChannels) {
  for (const char* channel : {"ZOVKPopup", "__qvOpenSdk"}) {
    EXPECT_THAT(post(channel, std::nullopt), IsEmpty());
    for (const char* json :
         {"null", "true", "0", "1.5", "[]", R"([{"action":"cancel"}])", "\"\""}) {
      EXPECT_THAT(post(channel, boost::json::parse(json)), IsEmpty()) << channel << json;
    }
  }
}

TEST_F(ScriptMessage, OfTheOtherChannelsShapeIsIgnored) {
  for (const char* word : {"skip", "commit", "cancel", "confirm", "reject"}) {
    const std::string json = std::string(R"({"action":")") + word + R"(","msg":"x"})";
    EXPECT_THAT(post("ZOVKPopup", boost::json::parse(json)), IsEmpty()) << word;
    EXPECT_THAT(post("__qvOpenSdk", boost::json::value(json)), IsEmpty()) << word;
  }
}

TEST_F(ScriptMessage, OnAnotherChannelIsIgnored) {
  for (const char* channel : {"", "zovkpopup", "ZOVKPopup2", "qvOpenSdk"}) {
    EXPECT_THAT(post(channel, boost::json::value(R"({"action":"skip"})")), IsEmpty());
    EXPECT_THAT(post(channel, boost::json::parse(R"({"action":"cancel"})")), IsEmpty());
  }
}

TEST_F(ScriptMessage, WithBottomlessNestingIsIgnored) {
  EXPECT_THAT(postText(std::string(100'000, '[')), IsEmpty());
  EXPECT_THAT(postText(R"({"action":"skip","msg":)" + std::string(100'000, '[')), IsEmpty());
}

TEST_F(ScriptMessage, MayBeLarge) {
  const std::string message(10'000'000, 'x');
  EXPECT_THAT(postText(R"({"action":"skip","msg":")" + message + R"("})"),
              ElementsAre(Pair(0, boost::json::value(message))));
}

TEST_F(ScriptMessage, IsIgnoredWithoutACallback) {
  handler_.setCallback(nullptr);
  EXPECT_THAT(postText(R"({"action":"skip"})"), IsEmpty());
  EXPECT_THAT(postObject(R"({"action":"cancel"})"), IsEmpty());
  EXPECT_FALSE(handler_.callback());
}

TEST_F(ScriptMessage, ReachesTheCallbackThatWasSetLast) {
  int told = 0;
  handler_.setCallback([&told](std::int32_t, const boost::json::value&) { ++told; });
  EXPECT_THAT(postText(R"({"action":"skip"})"), IsEmpty());
  EXPECT_EQ(told, 1);
}

TEST_F(ScriptMessage, MayTakeTheCallbackAwayWhileItRuns) {
  const auto held = std::make_shared<int>(0);
  handler_.setCallback([this, held](std::int32_t, const boost::json::value&) {
    handler_.setCallback(nullptr);
    ++*held;
  });
  postText(R"({"action":"skip"})");
  postText(R"({"action":"skip"})");
  EXPECT_EQ(*held, 1);
  EXPECT_EQ(held.use_count(), 1) << "the handler keeps nothing of it";
}

}  // namespace
}  // namespace zovk
