// The game's first command, as the helper reads it.
#include <gtest/gtest.h>

#include "HelperUnderTest.h"
#include "ToolkitFixture.h"
#include "helper/Program.h"
#include "helper/commands/Greeting.h"

namespace zovk::helper {
namespace {

HelperMessage greeting() {
  return {{"type", "hello"},        {"version", 1},    {"application", "test"},
          {"dataDirectory", "/"},   {"drawing", ""},   {"developerTools", false},
          {"drawingFailed", false}, {"pageMemory", 1}, {"nativeWindow", 0}};
}

Greeting with(const char* member, const boost::json::value& value) {
  HelperMessage message = greeting();
  message[member] = value;
  return readGreeting(Arguments(message));
}

class GameThatGreets : public ToolkitFixture {
 protected:
  std::optional<bool> hasKeyboard(const Greeting& greeting) {
    Greeting here = greeting;
    here.dataDirectory = directory_.path().string();
    Program program(here, [](const HelperMessage&) {});
    bool ready = false;
    program.webViewFactory().whenReady([&ready] { ready = true; });
    EXPECT_TRUE(runUntil([&ready] { return ready; }));
    return program.game().hasKeyboard();
  }
  ScratchDirectory directory_;
};

TEST_F(GameThatGreets, HasTheKeyboardAsItSays) {
  EXPECT_EQ(hasKeyboard(with("key", true)), true);
  EXPECT_EQ(hasKeyboard(with("key", false)), false);
}

TEST_F(GameThatGreets, NeedNotKnowOfTheKeyboard) {
  EXPECT_EQ(hasKeyboard(readGreeting(Arguments(greeting()))), std::nullopt);
}

TEST(Greeting, MayNameWhatDraws) {
  EXPECT_EQ(with("renderer", "Some GPU").drawing.renderer, "Some GPU");
  EXPECT_EQ(readGreeting(Arguments(greeting())).drawing.renderer, "");
}

TEST(Greeting, IsNoneWithAMemberOfAnotherKind) {
  EXPECT_THROW(with("key", 1), std::invalid_argument);
  EXPECT_THROW(with("renderer", 1), std::invalid_argument);
}

}  // namespace
}  // namespace zovk::helper
