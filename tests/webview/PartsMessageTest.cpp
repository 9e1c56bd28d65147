// What is taken from pages, to the byte: the text that the guard of their messages hands on, and
// values of scripts.
#include <string>

#include <boost/json/serialize.hpp>
#include <gtest/gtest.h>

#include "helper/GObjectPtr.h"
#include "helper/page/PageMessages.h"
#include "helper/page/PageScripts.h"
#include "helper/page/ScriptValues.h"
#include "protocol/FrameCodec.h"

namespace zovk::helper {
namespace {

std::string errorOf(const std::string& posted) {
  return readPageMessage(posted).body.error;
}

std::string bodyOf(const std::string& posted) {
  const PageMessage message = readPageMessage(posted);
  EXPECT_EQ(message.body.error, "");
  return message.body.value ? boost::json::serialize(*message.body.value) : "absent";
}

std::string listOf(std::size_t elements) {
  std::string json = "[1";
  for (std::size_t i = 1; i < elements; ++i) json += ",1";
  return json + "]";
}

std::string nested(std::size_t levels) {
  return std::string(levels, '[') + std::string(levels, ']');
}

TEST(PageMessage, IsATextOrJsonOrNothing) {
  EXPECT_EQ(bodyOf("t0 {\"a\":1}"), R"("{\"a\":1}")");
  EXPECT_EQ(bodyOf("j0 {\"a\":1}"), R"({"a":1})");
  EXPECT_EQ(bodyOf("j0 null"), "null");
  EXPECT_EQ(bodyOf("u0 "), "absent");
  EXPECT_EQ(bodyOf("t0 "), R"("")");
}

TEST(PageMessage, SaysWhichHandlerItIsFor) {
  EXPECT_EQ(readPageMessage("t0 x").handler, 0U);
  EXPECT_EQ(readPageMessage("t12 x").handler, 12U);
}

TEST(PageMessage, SaysHowManyWereLeftOut) {
  EXPECT_EQ(readPageMessage("d7 ").dropped, 7U);
  EXPECT_EQ(readPageMessage("t7 ").dropped, 0U);
}

TEST(PageMessage, ThatWasLeftOutInThePageSaysWhyInFewWords) {
  EXPECT_EQ(errorOf("x0 too long"), "too long");
  EXPECT_LE(errorOf("x0 " + std::string(1000, 'x')).size(), 20U);
}

TEST(PageMessage, OfAnotherFormIsRefused) {
  for (const char* posted : {"", "t", "t ", "t0", "t-1 x", "tx x", "t0x x", " 0 x"}) {
    EXPECT_NE(errorOf(posted), "") << posted;
  }
  EXPECT_NE(errorOf("j0 {"), "");
  EXPECT_NE(errorOf("j0 "), "");
}

TEST(PageMessage, MayBeAMebibyteLongAndNoByteLonger) {
  const std::string text(kMaximumPageText, 'x');
  EXPECT_EQ(kMaximumPageText, 1048576U);
  EXPECT_EQ(errorOf("t0 " + text), "");
  EXPECT_EQ(errorOf("t0 " + text + "x"), "too long");
  const std::string json = "\"" + text.substr(2) + "\"";
  EXPECT_EQ(errorOf("j0 " + json), "");
  EXPECT_EQ(errorOf("j0 " + json + " "), "too long");
}

TEST(PageMessage, IsMeasuredInBytesNotInCharacters) {
  std::string text;
  for (std::size_t i = 0; i < kMaximumPageText / 2; ++i) text += "\xC3\xA4";
  EXPECT_EQ(errorOf("t0 " + text), "");
  EXPECT_EQ(errorOf("t0 " + text + "\xC3\xA4"), "too long");
}

TEST(PageMessage, MayHoldTenThousandValuesAndNoneMore) {
  EXPECT_EQ(kMaximumPageValues, 10000U);
  // The list itself is one, and its bracket stands for the first element.
  EXPECT_EQ(errorOf("j0 " + listOf(kMaximumPageValues - 1)), "");
  EXPECT_EQ(errorOf("j0 " + listOf(kMaximumPageValues)), "too many values");
  EXPECT_EQ(errorOf("t0 " + listOf(kMaximumPageValues - 1)), "") << "the game will parse it";
  EXPECT_EQ(errorOf("t0 " + listOf(kMaximumPageValues)), "too many values");
}

TEST(PageMessage, CountsObjectsAndListsAndNotWhatStandsInTexts) {
  const auto listOfMany = [](const std::string& element, int count) {
    std::string json = "j0 [1";
    for (int i = 0; i < count; ++i) json += "," + element;
    return json + "]";
  };
  for (const char* element : {"{}", "[]", "\"\"", "null"}) {
    EXPECT_EQ(errorOf(listOfMany(element, 9998)), "") << element;
    EXPECT_EQ(errorOf(listOfMany(element, 9999)), "too many values") << element;
  }
  for (const char* element : {"[1]", "{\"a\":1}"}) {
    EXPECT_EQ(errorOf(listOfMany(element, 4999)), "") << element;
    EXPECT_EQ(errorOf(listOfMany(element, 5000)), "too many values") << element;
  }
  const std::string signs(20000, ',');
  EXPECT_EQ(errorOf("j0 [\"" + signs + "\"]"), "");
  EXPECT_EQ(errorOf("j0 [\"\\\"" + signs + "\"]"), "") << "a quote in the text does not end it";
}

TEST(PageMessage, MayBe512LevelsDeepAndNotOneMore) {
  EXPECT_EQ(errorOf("j0 " + nested(kMaximumValueDepth)), "");
  EXPECT_NE(errorOf("j0 " + nested(kMaximumValueDepth + 1)), "");
}

TEST(PageMessage, OfTheDeepestFitsIntoAFrame) {
  const PageMessage message = readPageMessage("j0 " + nested(kMaximumValueDepth));
  FrameDecoder decoder;
  decoder.feed(*encodeFrame({{"type", "web.message"}, {"body", *message.body.value}}));
  EXPECT_TRUE(decoder.next().has_value()) << decoder.error();
}

TEST(PageMessage, MendsHalfCharacters) {
  EXPECT_EQ(bodyOf("j0 \"a\\ud800b\""),
            "\"a\xEF\xBF\xBD"
            "b\"");
  EXPECT_EQ(bodyOf("j0 \"\\\\ud800\""), R"("\\ud800")");
}

/// Values of scripts, in a context without a page.
class ScriptValueOf : public testing::Test {
 protected:
  ScriptValue of(const std::string& script) {
    const auto value =
        GObjectPtr<JSCValue>::adopt(jsc_context_evaluate(context_.get(), script.c_str(), -1));
    return readScriptValue(value.get());
  }
  std::string text(const std::string& script) {
    const ScriptValue read = of(script);
    EXPECT_EQ(read.error, "");
    return read.value ? boost::json::serialize(*read.value) : "absent";
  }
  GObjectPtr<JSCContext> context_ = GObjectPtr<JSCContext>::adopt(jsc_context_new());
};

TEST_F(ScriptValueOf, AnyKindIsItsJson) {
  EXPECT_EQ(text("({a: [1, 'b', true, null, undefined]})"), R"({"a":[1,"b",true,null,null]})");
  EXPECT_EQ(text("'a\\0b'"), R"("a\u0000b")");
  EXPECT_EQ(text("undefined"), "absent");
  EXPECT_EQ(text("() => 1"), "absent");
  EXPECT_EQ(readScriptValue(nullptr).value, std::nullopt);
}

TEST_F(ScriptValueOf, ThatIsNoJsonIsAbsentAndHarmless) {
  EXPECT_EQ(text("const loop = {}; loop.loop = loop; loop"), "absent");
  EXPECT_EQ(text("10n"), "absent");
  EXPECT_EQ(text("1"), "1") << "nothing of the failure stays";
}

TEST_F(ScriptValueOf, ALongTextArrivesWhole) {
  EXPECT_EQ(of("'x'.repeat(8 << 20)").value->as_string().size(), std::size_t{8} << 20);
}

TEST_F(ScriptValueOf, MoreThanAFrameHoldsIsTooLong) {
  EXPECT_EQ(of("'x'.repeat(64 << 20)").error, "too long");
}

TEST_F(ScriptValueOf, ListsUpToTheBoundArriveAndLongerOnesDoNot) {
  EXPECT_EQ(of("new Array(9999)").value->as_array().size(), 9999U);
  EXPECT_EQ(of("new Array(10000)").error, "too many values");
}

// Each of these would take minutes or gigabytes if it were written out.
TEST_F(ScriptValueOf, WhatGrowsWithoutEndIsStoppedAtTheBound) {
  EXPECT_EQ(of("new Array(4294967295)").error, "too many values");
  EXPECT_EQ(of("let a = []; for (let i = 0; i < 64; ++i) a = [a, a]; a").error, "too many values");
  EXPECT_EQ(of("let t = 'x'.repeat(1 << 24); new Array(9000).fill(t)").error, "too long");
}

TEST_F(ScriptValueOf, TooDeepAListIsRefused) {
  const auto levels = [](int count) {
    return "let d = []; for (let i = 1; i < " + std::to_string(count) + "; ++i) d = [d]; d";
  };
  EXPECT_EQ(of(levels(512)).error, "");
  context_ = GObjectPtr<JSCContext>::adopt(jsc_context_new());
  EXPECT_NE(of(levels(513)).error, "");
}

/// The guard of a page's messages in a context without a page, with a clock of the test's.
class GuardOfMessages : public testing::Test {
 protected:
  GuardOfMessages() {
    run("var sent = [], listener = {}, timer = null, now = 0; Date.now = () => now;"
        "var setTimeout = (run) => { timer = run; };"
        "var handler = {postMessage: (text) => sent.push(text)};"
        "var window = {webkit: {messageHandlers: {zovk: handler}}, Event: function () {}};"
        "var line = {addEventListener: (type, take) => { listener[type] = take; }};"
        "var document = {dispatchEvent: () => {}, addEventListener: (type, hear) =>"
        "  hear({target: line, stopImmediatePropagation: () => {}})};" +
        pageMessageGuardScript() +
        "; var post = (detail, times) => {"
        "  for (let i = 0; i < (times || 1); ++i) listener.post({detail}); }");
  }
  void run(const std::string& script) {
    GObjectPtr<JSCValue>::adopt(jsc_context_evaluate(context_.get(), script.c_str(), -1));
    JSCException* wrong = jsc_context_get_exception(context_.get());
    ASSERT_EQ(wrong, nullptr) << jsc_exception_get_message(wrong);
  }
  /// Returns the value of an expression as text.
  std::string is(const std::string& expression) {
    return textOfScriptValue(
        GObjectPtr<JSCValue>::adopt(jsc_context_evaluate(context_.get(), expression.c_str(), -1))
            .get());
  }
  GObjectPtr<JSCContext> context_ = GObjectPtr<JSCContext>::adopt(jsc_context_new());
};

TEST_F(GuardOfMessages, HandsTextsOnAndNothingElse) {
  run("post('t0 a'); post(5); post({}); post(null); post('t0 b')");
  EXPECT_EQ(is("sent.join()"), "t0 a,t0 b");
}

TEST_F(GuardOfMessages, MendsHalfCharacters) {
  run("post('t0 \\ud800')");
  EXPECT_EQ(is("sent[0] === 't0 \\ufffd'"), "true");
}

TEST_F(GuardOfMessages, HandsOnWhatMayBeJustLongEnough) {
  run("const head = 't0 '; post(head + 'x'.repeat(1 << 20)); post('x'.repeat((1 << 20) + 17))");
  EXPECT_EQ(is("sent[0].length - 3 === 1 << 20"), "true");
  EXPECT_EQ(is("sent[1]"), "x0 too long");
}

TEST_F(GuardOfMessages, LetsAThousandThroughInASecond) {
  run("post('t0 a', 1000)");
  EXPECT_EQ(is("sent.length"), "1000");
  EXPECT_EQ(is("sent.every((text) => text === 't0 a')"), "true");
}

TEST_F(GuardOfMessages, LeavesTheNextOneOutAndSaysSoInTimeOfItsOwn) {
  run("now = 5000; post('t0 a', 1001)");
  EXPECT_EQ(is("sent.length + ' ' + sent[1000]"), "1001 d1 ");
  run("now = 5999; post('t0 a', 499)");
  EXPECT_EQ(is("sent.length"), "1001") << "once a second";
  run("now = 6000; timer()");
  EXPECT_EQ(is("sent[1001]"), "d499 ");
  run("timer()");
  EXPECT_EQ(is("sent.length"), "1002") << "nothing was left out since";
}

TEST_F(GuardOfMessages, SaysSoWithoutATimerToo) {
  run("now = 5000; post('t0 a', 1003); now = 6000; post('t0 b')");
  EXPECT_EQ(is("sent.slice(1000).join()"), "d1 ,t0 b,d2 ");
}

TEST_F(GuardOfMessages, LetsAThousandThroughAgainInTheNextSecond) {
  run("post('t0 a', 1000); now = 999; post('t0 b'); now = 1000; sent = []; post('t0 c', 1000)");
  EXPECT_EQ(is("sent.filter((text) => text === 't0 c').length"), "1000");
}

TEST_F(GuardOfMessages, StartsAnewWhenTheClockGoesBack) {
  run("now = 5000; post('t0 a', 1000); now = 4000; sent = []; post('t0 b')");
  EXPECT_EQ(is("sent[0]"), "t0 b");
}

TEST_F(GuardOfMessages, LetsEightMebibytesThroughInASecond) {
  run("const half = 'x'.repeat(1 << 19); now = 5000; post(half, 16); post('y')");
  EXPECT_EQ(is("sent.length + ' ' + sent[16]"), "17 d1 ");
}

TEST_F(GuardOfMessages, CountsTheFramesOfAPageAsOne) {
  run("window.top = {zovkCount: {since: 5000, messages: 999, signs: 0, dropped: 0, told: 0}};"
      "now = 5000; post('t0 a', 2)");
  EXPECT_EQ(is("sent.join()"), "t0 a,d1 ");
}

TEST_F(GuardOfMessages, CountsAFrameByItselfThatMayNotSeeThePage) {
  run("Object.defineProperty(window, 'top', {get: () => { throw 'foreign'; }});"
      "now = 5000; post('t0 a', 1001)");
  EXPECT_EQ(is("sent.length + ' ' + sent[1000]"), "1001 d1 ");
}

}  // namespace
}  // namespace zovk::helper
