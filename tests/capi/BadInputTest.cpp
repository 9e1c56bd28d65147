#include <cstdlib>

#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include "capi/CGameFixture.h"
#include "fixtures/ChildProcess.h"
#include "fixtures/ProcessFacts.h"

namespace zovk {
namespace {

namespace fs = std::filesystem;

/// A game that does something amiss: its requests end with a reason, and the log says it, too.
class BadInput : public CGameFixture {
 protected:
  zovkpopup_status show() {
    return zovkpopup_show_popup("welcome", 0, Note::complete, &note_, Note::destroy);
  }
  void awaitAnswers(std::size_t count) {
    pumpUntil([&] { return note_.answers.size() >= count; }, std::to_string(count) + " answers");
  }
  void expectAnError() {
    EXPECT_EQ(note_.answers.back().first, -1);
    EXPECT_FALSE(note_.answers.back().second.empty());
    EXPECT_TRUE(logged("[Error] Helper")) << allLines();
  }

  Note note_;
};

struct Helper {
  const char* name;
  const char* path;
};

void PrintTo(const Helper& helper, std::ostream* stream) {
  *stream << helper.name;
}

class WrongHelper : public BadInput, public testing::WithParamInterface<Helper> {};

TEST_P(WrongHelper, EndsEveryRequestWithAReason) {
  addPage("welcome", 1, answeringPage("skip", "", true));
  bundle().write();
  auto mine = settings();
  mine.helper_path = GetParam().path;
  ASSERT_EQ(zovkpopup_set_up(&mine), ZOVKPOPUP_OK);
  ASSERT_EQ(show(), ZOVKPOPUP_OK);
  ASSERT_EQ(show(), ZOVKPOPUP_OK);
  awaitAnswers(2);
  expectAnError();
  EXPECT_EQ(note_.destroyed, 2);
  // One that closed its connection was killed, and may still be about to end.
  pumpUntil([] { return childrenOf(getpid()).empty(); }, "the end of the helper");
}

INSTANTIATE_TEST_SUITE_P(BadInput, WrongHelper,
                         testing::Values(Helper{"Nowhere", "/nowhere/zovkpopup-helper"},
                                         Helper{"AFolder", "/tmp"},
                                         Helper{"AFileThatIsNoProgram", "/etc/passwd"},
                                         Helper{"AProgramThatEndsAtOnce", "/bin/true"},
                                         Helper{"AProgramThatFails", "/bin/false"}),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_F(BadInput, AResourceFolderThatIsMissingLeavesNothingToShow) {
  auto mine = settings();
  mine.resource_directory = "/nowhere/at/all";
  ASSERT_EQ(zovkpopup_set_up(&mine), ZOVKPOPUP_OK);
  EXPECT_FALSE(zovkpopup_have_popup(1));
  EXPECT_EQ(show(), ZOVKPOPUP_OK);
  ASSERT_EQ(note_.answers.size(), 1U);
  EXPECT_EQ(note_.answers[0].second, "No valid Popup now");
  EXPECT_TRUE(logged("[Error] ")) << allLines();
}

// The rules that keep pages from the player's files lie there, too.
TEST_F(BadInput, ADataFolderThatCannotBeMadeLetsNoPageIn) {
  addPage("welcome", 1, answeringPage("skip", "", true));
  bundle().write();
  auto mine = settings();
  mine.data_directory = "/proc/nothing/here";
  ASSERT_EQ(zovkpopup_set_up(&mine), ZOVKPOPUP_OK);
  ASSERT_EQ(show(), ZOVKPOPUP_OK);
  pumpUntil([&] { return logged("helper: no page is loaded: "); }, "the reason");
  EXPECT_TRUE(logged("[Error] Create container directory:/proc/nothing failed")) << allLines();
  EXPECT_TRUE(note_.answers.empty());
}

TEST_F(BadInput, WithoutADisplayARequestEndsWithAReason) {
  unsetenv("WAYLAND_DISPLAY");
  setenv("DISPLAY", ":4095", 1);
  addPage("welcome", 1, answeringPage("skip", "", true));
  ASSERT_EQ(setUp(), ZOVKPOPUP_OK);
  ASSERT_EQ(show(), ZOVKPOPUP_OK);
  awaitAnswers(1);
  expectAnError();
}

TEST_F(BadInput, ADisplayThatGoesAwayUnderAPopupEndsTheRequestWithAReason) {
  const ScratchDirectory scratch;
  ChildProcess display(
      {"/usr/bin/env", "Xvfb", "-displayfd", "1", "-screen", "0", "800x600x24", "-nolisten", "tcp"},
      (scratch.path() / "errors").string());
  const auto number = display.nextLine();
  ASSERT_TRUE(number.has_value());
  unsetenv("WAYLAND_DISPLAY");
  setenv("DISPLAY", (":" + *number).c_str(), 1);
  addPage("welcome", 1, answeringPage("skip", "", false));
  ASSERT_EQ(setUp(), ZOVKPOPUP_OK);
  ASSERT_EQ(show(), ZOVKPOPUP_OK);
  pumpUntil([&] { return logged("Did finish navigation"); }, "the page");
  display.signal(SIGKILL);
  awaitAnswers(1);
  expectAnError();
  EXPECT_EQ(show(), ZOVKPOPUP_OK);
  awaitAnswers(2);
  EXPECT_EQ(note_.answers[1].first, -1);
}

TEST_F(BadInput, AGameThatNeverPumpsShutsDownInTime) {
  addPage("welcome", 1, answeringPage("skip", "", true));
  ASSERT_EQ(setUp(), ZOVKPOPUP_OK);
  ASSERT_EQ(show(), ZOVKPOPUP_OK);
  pollfd ready{zovkpopup_poll_descriptor(), POLLIN, 0};
  ASSERT_EQ(poll(&ready, 1, 30'000), 1);
  EXPECT_TRUE(note_.answers.empty());
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(zovkpopup_shut_down(), ZOVKPOPUP_OK);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
  EXPECT_TRUE(note_.answers.empty());
  EXPECT_EQ(note_.destroyed, 1);
  EXPECT_TRUE(childrenOf(getpid()).empty());
}

TEST_F(BadInput, AnEndWithoutAShutDownTakesTheHelperAlong) {
  addPage("welcome", 1, answeringPage("skip", "", false));
  bundle().write();
  int ready[2];
  ASSERT_EQ(pipe(ready), 0);
  const pid_t game = fork();
  if (game == 0) {
    const auto mine = settings();
    zovkpopup_set_up(&mine);
    show();
    const auto helpers = childrenOf(getpid());
    const pid_t helper = helpers.size() == 1 ? helpers.front() : -1;
    std::exit(write(ready[1], &helper, sizeof helper) == sizeof helper ? 0 : 1);
  }
  pid_t helper = -1;
  ASSERT_EQ(read(ready[0], &helper, sizeof helper), static_cast<ssize_t>(sizeof helper));
  ASSERT_GT(helper, 0);
  int status = -1;
  ASSERT_EQ(waitpid(game, &status, 0), game);
  EXPECT_EQ(status, 0);
  ASSERT_EQ(setUp(), ZOVKPOPUP_OK);
  pumpUntil([&] { return !isAlive(helper); }, "the helper's end");
  close(ready[0]);
  close(ready[1]);
}

/// Returns the results of calls in a copy of the game: a bit for each that does not fail as it
/// should.
int callsOfACopy(Note& note) {
  int wrong = 0;
  wrong |= zovkpopup_pump(2000) == ZOVKPOPUP_ERROR_STATE ? 0 : 1;
  wrong |= zovkpopup_have_popup(1) ? 2 : 0;
  wrong |=
      zovkpopup_show_popup("welcome", 0, Note::complete, &note, nullptr) == ZOVKPOPUP_ERROR_STATE
          ? 0
          : 4;
  wrong |= note.answers.size() == 1 && note.answers[0].first == -1 ? 0 : 8;
  wrong |= zovkpopup_hold_popups() == ZOVKPOPUP_ERROR_STATE ? 0 : 16;
  wrong |= zovkpopup_shut_down() == ZOVKPOPUP_ERROR_STATE ? 0 : 32;
  return wrong;
}

TEST_F(BadInput, ACopyOfTheGameIsRefusedAndDoesTheGameNoHarm) {
  addPage("welcome", 1, answeringPage("skip", "", true));
  ASSERT_EQ(setUp(), ZOVKPOPUP_OK);
  ASSERT_EQ(show(), ZOVKPOPUP_OK);
  const pid_t copy = fork();
  if (copy == 0) {
    note_.answers.clear();
    const int wrong = callsOfACopy(note_);
    std::exit(logged("this process is a copy of the one that set the host up") ? wrong : 64);
  }
  int status = -1;
  ASSERT_EQ(waitpid(copy, &status, 0), copy);
  ASSERT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 0);
  awaitAnswers(1);
  EXPECT_EQ(note_.answers[0].first, 0);
}

}  // namespace
}  // namespace zovk
