#include <string>

#include <gtest/gtest.h>

#include "HelperUnderTest.h"

namespace zovk {
namespace {

std::string framed(const std::string& text) {
  std::string frame;
  for (unsigned shift = 0; shift < 32; shift += 8) {
    frame += static_cast<char>((text.size() >> shift) & 0xFFU);
  }
  return frame + text;
}

struct BrokenFrame {
  std::string name;
  std::string bytes;
};

void PrintTo(const BrokenFrame& frame, std::ostream* stream) {
  *stream << frame.name;
}

class HelperBrokenFrame : public testing::TestWithParam<BrokenFrame> {};

TEST_P(HelperBrokenFrame, LeavesOneLineAndEndsTheHelper) {
  HelperUnderTest helper;
  helper.sendBytes(GetParam().bytes);
  EXPECT_TRUE(helper.await("log").at("line").as_string().starts_with("helper: "));
  EXPECT_EQ(helper.awaitEnd(), 0);
}

INSTANTIATE_TEST_SUITE_P(Helper, HelperBrokenFrame,
                         testing::Values(BrokenFrame{"TooLong", std::string("\x01\0\0\x04", 4)},
                                         BrokenFrame{"Empty", framed("")},
                                         BrokenFrame{"NoJson", framed("hello")},
                                         BrokenFrame{"NoUtf8", framed("{\"type\":\"\xFF\"}")},
                                         BrokenFrame{"List", framed("[\"type\"]")},
                                         BrokenFrame{"NoType", framed("{}")},
                                         BrokenFrame{"TypeIsNumber", framed(R"({"type":1})")}),
                         [](const auto& parameter) { return parameter.param.name; });

class HelperOddCommand : public testing::TestWithParam<BrokenFrame> {};

TEST_P(HelperOddCommand, IsSkippedWithOneLine) {
  HelperUnderTest helper;
  helper.sendBytes(framed(GetParam().bytes));
  EXPECT_TRUE(helper.await("log").at("line").as_string().starts_with("helper: command \""));
  EXPECT_FALSE(helper.came("log"));
}

INSTANTIATE_TEST_SUITE_P(
    Helper, HelperOddCommand,
    testing::Values(
        BrokenFrame{"UnknownType", R"({"type":"window.explode","window":1})"},
        BrokenFrame{"MissingMember", R"({"type":"window.show"})"},
        BrokenFrame{"TextForNumber", R"({"type":"window.show","window":"1"})"},
        BrokenFrame{"FractionForIdentifier", R"({"type":"window.show","window":1.5})"},
        BrokenFrame{"ZeroIdentifier", R"({"type":"window.show","window":0})"},
        BrokenFrame{"NegativeIdentifier", R"({"type":"window.close","window":-1})"},
        BrokenFrame{"ShortFrame", R"({"type":"window.create","window":1,"view":1,"frame":[0,0]})"},
        BrokenFrame{"TextInFrame",
                    R"({"type":"window.create","window":1,"view":1,"frame":[0,0,"9",9]})"},
        BrokenFrame{"NumberForBoolean", R"({"type":"view.hidden","view":1,"hidden":1})"},
        BrokenFrame{"ColorTooShort", R"({"type":"window.background","window":1,"color":[0,0,0]})"},
        BrokenFrame{"ZeroCharacter", R"({"type":"web.load","view":1,"url":"a\u0000b"})"},
        BrokenFrame{"CandidatesNoList", R"({"type":"view.pinBottom","view":1,"candidates":5})"},
        BrokenFrame{"SecondGreeting", R"({"type":"hello","version":1})"}),
    [](const auto& parameter) { return parameter.param.name; });

TEST(HelperCommands, ToWhatIsNotThereHaveNoEffect) {
  HelperUnderTest helper;
  for (const char* command :
       {R"({"type":"window.show","window":9})",
        R"({"type":"window.close","window":9})",
        R"({"type":"window.background","window":9,"color":[0,0,0,1]})",
        R"({"type":"view.add","view":9,"child":10})",
        R"({"type":"view.back","view":9,"child":10})",
        R"({"type":"view.remove","view":9})",
        R"({"type":"view.release","view":9})",
        R"({"type":"view.hidden","view":9,"hidden":true})",
        R"({"type":"view.alpha","view":9,"alpha":0.5})",
        R"({"type":"view.background","view":9,"color":[0,0,0,1]})",
        R"({"type":"view.clip","view":9,"clips":true})",
        R"({"type":"view.image","view":9,"path":"/nowhere.png"})",
        R"({"type":"view.pinEdges","view":9,"to":10})",
        R"({"type":"view.pinTop","view":9,"to":10,"safeArea":true,"offset":0})",
        R"({"type":"view.pinBottom","view":9,"candidates":[10,11]})",
        R"({"type":"layout.outlet","layout":9,"view":10,"name":"crossBtn"})",
        R"({"type":"layout.close","layout":9})",
        R"({"type":"web.load","view":9,"url":"a:b"})",
        R"({"type":"web.stop","view":9})",
        R"({"type":"web.reload","view":9})",
        R"({"type":"web.close","view":9})",
        R"({"type":"web.terminate","view":9})",
        R"({"type":"web.decide","view":9,"decision":1,"allow":true})"}) {
    helper.sendBytes(framed(command));
  }
  EXPECT_FALSE(helper.came("log"));
}

TEST(HelperCommands, WithNumbersBeyondAllScreensDoNoHarm) {
  HelperUnderTest helper;
  helper.send({{"type", "window.create"},
               {"window", 1},
               {"view", 1},
               {"frame", {-1e300, 1e300, 500.0, 400.0}}});
  helper.send({{"type", "view.alpha"}, {"view", 1}, {"alpha", 1e300}});
  helper.send({{"type", "window.background"}, {"window", 1}, {"color", {-1e300, 7, 1e300, 5}}});
  helper.send({{"type", "window.show"}, {"window", 1}});
  helper.sync(1);
  EXPECT_FALSE(helper.came("log"));
}

TEST(HelperCommands, AnswerAScriptForAWebViewThatIsGoneWithAnError) {
  HelperUnderTest helper;
  helper.send({{"type", "web.evaluate"}, {"view", 9}, {"id", 1}, {"script", "1"}});
  EXPECT_EQ(helper.await("web.evaluated", {{"id", 1}}).at("error"), "the web view is gone");
}

TEST(HelperCommands, AnswerASnapshotOfAWindowThatIsNotShownWithNo) {
  HelperUnderTest helper;
  helper.send({{"type", "snapshot"}, {"id", 1}, {"window", 1}, {"path", "/nowhere/a.png"}});
  helper.await("snapshot.done", {{"id", 1}, {"done", false}});
}

}  // namespace
}  // namespace zovk
