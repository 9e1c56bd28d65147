#include <csignal>

#include <gmock/gmock.h>

#include "ProgramRun.h"
#include "zovkpopup/BriefRun.h"
#include "zovkpopup/ToolError.h"

namespace zovk::tool {
namespace {

using std::chrono::milliseconds;
using std::chrono::minutes;
using ::testing::EndsWith;

constexpr minutes kLong{1};

class BriefRun : public ToolTest {
 protected:
  static std::string failureOf(const std::string& program,
                               const std::vector<std::string>& arguments, milliseconds limit) {
    try {
      runBriefly(program, arguments, limit);
      return "";
    } catch (const ToolError& error) {
      EXPECT_EQ(error.code(), kUnavailable);
      return error.what();
    }
  }
};

TEST_F(BriefRun, WaitsForTheProgramsEnd) {
  const std::string file = path("made");
  EXPECT_EQ(failureOf("/bin/sh", {"-c", "sleep 0.1; echo done >" + file}, kLong), "");
  EXPECT_EQ(read(file), "done\n");
}

TEST_F(BriefRun, EndsAProgramThatRunsTooLong) {
  const std::string file = path("pid");
  EXPECT_EQ(
      failureOf("/bin/sh", {"-c", "echo $$ >" + file + "; exec sleep 600"}, milliseconds(500)),
      "/bin/sh was ended after 500 ms");
  EXPECT_EQ(::kill(std::stoi(read(file)), 0), -1) << "it still runs";
}

TEST_F(BriefRun, SaysHowAProgramFailed) {
  EXPECT_EQ(failureOf("/bin/sh", {"-c", "exit 3"}, kLong), "/bin/sh exited with status 3");
  EXPECT_EQ(failureOf("/bin/sh", {"-c", "kill -9 $$"}, kLong), "/bin/sh was ended by signal 9");
  EXPECT_THAT(failureOf(path("nothing"), {}, kLong),
              EndsWith("cannot be run: No such file or directory"));
}

TEST_F(BriefRun, GivesTheProgramNoSignalsOrDescriptorsOfItsOwn) {
  sigset_t blocked;
  sigemptyset(&blocked);
  sigaddset(&blocked, SIGTERM);
  ASSERT_EQ(::pthread_sigmask(SIG_BLOCK, &blocked, nullptr), 0);
  EXPECT_EQ(failureOf("/bin/sh", {"-c", "kill $$; exit 0"}, kLong),
            "/bin/sh was ended by signal 15");
  // Three stand for nothing, and the one with which they are listed.
  EXPECT_EQ(failureOf("/bin/sh", {"-c", "test $(ls /proc/self/fd | wc -l) = 4"}, kLong), "");
}

}  // namespace
}  // namespace zovk::tool
