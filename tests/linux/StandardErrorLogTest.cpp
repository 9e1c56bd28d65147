#include <cstdio>
#include <regex>
#include <sstream>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <unistd.h>

#include "ScratchDirectory.h"
#include "platform/linux/system/PosixFileSystem.h"
#include "platform/linux/system/StandardErrorLog.h"
#include "support/UniqueFd.h"

namespace zovk {
namespace {

using testing::ElementsAre;

/// Sends standard error to a file for a while.
class CapturedError {
 public:
  CapturedError() : before_(::dup(STDERR_FILENO)) {
    const UniqueFd file(::open(path().c_str(), O_CREAT | O_WRONLY | O_APPEND, 0600));
    ::dup2(file.get(), STDERR_FILENO);
  }
  ~CapturedError() { ::dup2(before_.get(), STDERR_FILENO); }
  std::string text() const { return PosixFileSystem().read(path()).value_or(""); }

 private:
  std::string path() const { return scratch_ / "stderr"; }
  ScratchDirectory scratch_;
  UniqueFd before_;
};

TEST(StandardErrorLog, ARecordNamesTimeProgramProcessAndThread) {
  const std::string record = StandardErrorLog::record("[Error] text");
  const std::regex form(
      R"(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{3} \S+\[(\d+):(\d+)\] \[Error\] text\n)");
  std::smatch parts;
  ASSERT_TRUE(std::regex_match(record, parts, form)) << record;
  EXPECT_EQ(parts[1], std::to_string(::getpid()));
  EXPECT_EQ(parts[2], std::to_string(::gettid()));
}

TEST(StandardErrorLog, ALineOfSeveralLinesStaysOneRecord) {
  const std::string record = StandardErrorLog::record("one\ntwo\n2026-01-01 not a record");
  EXPECT_TRUE(record.ends_with("] one\n\ttwo\n\t2026-01-01 not a record\n")) << record;
}

TEST(StandardErrorLog, WritesToStandardError) {
  std::string text;
  {
    const CapturedError captured;
    StandardErrorLog log;
    log.writeLine("a line");
    text = captured.text();
  }
  EXPECT_TRUE(text.ends_with("] a line\n")) << text;
}

TEST(StandardErrorLog, RecordsOfSeveralThreadsDoNotMix) {
  constexpr int kThreads = 4;
  constexpr int kLines = 100;
  const std::string line(500, 'x');
  std::string text;
  {
    const CapturedError captured;
    StandardErrorLog log;
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
      threads.emplace_back([&] {
        for (int i = 0; i < kLines; ++i) log.writeLine(line);
      });
    }
    for (auto& thread : threads) thread.join();
    text = captured.text();
  }
  std::istringstream stream(text);
  int count = 0;
  for (std::string record; std::getline(stream, record); ++count) {
    EXPECT_TRUE(record.ends_with("] " + line));
  }
  EXPECT_EQ(count, kThreads * kLines);
}

TEST(StandardErrorLog, TheHostsSinkGetsTheLineAsItStandsInstead) {
  std::vector<std::string> lines;
  std::string text;
  {
    const CapturedError captured;
    StandardErrorLog log([&](std::string_view line) { lines.emplace_back(line); });
    log.writeLine("one\ntwo");
    text = captured.text();
  }
  EXPECT_THAT(lines, ElementsAre("one\ntwo"));
  EXPECT_EQ(text, "");
}

}  // namespace
}  // namespace zovk
