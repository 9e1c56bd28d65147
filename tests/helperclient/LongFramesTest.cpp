// Messages of tens of megabytes: what they cost the game's thread, and what happens around them.
#include <algorithm>
#include <atomic>
#include <ctime>
#include <fstream>
#include <iostream>
#include <thread>

#include <malloc.h>
#include <unistd.h>

#include "helperclient/ClientFixture.h"

namespace zovk {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using Milliseconds = std::chrono::duration<double, std::milli>;

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kSanitizer = true;
#elif defined(__has_feature)
constexpr bool kSanitizer = __has_feature(address_sanitizer) || __has_feature(thread_sanitizer);
#else
constexpr bool kSanitizer = false;
#endif

constexpr std::size_t kMebibyte = std::size_t{1} << 20;
constexpr std::size_t kLongestValue = 63 * kMebibyte;

Milliseconds processorTime() {
  timespec now{};
  ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return std::chrono::seconds(now.tv_sec) + std::chrono::nanoseconds(now.tv_nsec);
}

/// Returns the memory of this process, without what the making of a frame has left behind in it.
std::size_t residentBytes() {
  ::malloc_trim(0);
  std::size_t all = 0;
  std::size_t resident = 0;
  std::ifstream("/proc/self/statm") >> all >> resident;
  return resident * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
}

boost::json::value textOf(std::size_t length) {
  return boost::json::value(boost::json::string(length, 'x'));
}

/// Returns what comes before the content of a frame of that length.
std::string headerOf(std::size_t length) {
  std::string header;
  for (unsigned shift = 0; shift < 32; shift += 8) {
    header += static_cast<char>((length >> shift) & 0xFFU);
  }
  return header;
}

class HelperLongFrames : public ClientOfTheHelper {
 protected:
  HelperLongFrames() {
    startReady();
    WebViewConfiguration configuration;
    configuration.scriptMessageHandlers["Game"] = handler_;
    page_ = client_->makeWebView(configuration);
  }
  ~HelperLongFrames() override { joinWriter(); }

  /// Sends what the socket does not hold at once. The helper's end closes afterwards if `andDies`.
  void write(std::string bytes, bool andDies = false) {
    joinWriter();
    FakeHelper& helper = hosts_.last();
    written_ = false;
    writer_ = std::thread([this, &helper, andDies, held = std::move(bytes)] {
      try {
        helper.sendBytes(held);
        written_ = true;
      } catch (const std::runtime_error&) {
        return;  // the game does not want it any more
      }
      if (andDies) helper.die();
    });
  }
  void joinWriter() {
    if (writer_.joinable()) writer_.join();
  }
  /// Asks for the value of a script, and has the helper answer with `value`.
  void answer(boost::json::value value) {
    page_->evaluateJavaScript("1", [this](ScriptResult result) { result_ = std::move(result); });
    const HelperId id = hosts_.last().messages("web.evaluate").at(0).at("id").as_int64();
    write(*encodeFrame({{"type", "web.evaluated"}, {"id", id}, {"value", std::move(value)}}));
  }
  static std::string message(const std::string& body) {
    return *encodeFrame({{"type", "web.message"}, {"view", 1}, {"name", "Game"}, {"body", body}});
  }
  /// Pumps on events, one turn at a time, and keeps the processor time of the longest.
  void takeTurnsUntil(const std::function<bool()>& done) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (!done()) {
      ASSERT_LT(std::chrono::steady_clock::now(), deadline);
      pollfd ready{queue_.pollDescriptor(), POLLIN, 0};
      ::poll(&ready, 1, 1000);
      const Milliseconds before = processorTime();
      queue_.pump(std::chrono::microseconds(0));
      longest_ = std::max(longest_, processorTime() - before);
    }
  }
  std::vector<std::size_t> lengths() const {
    std::vector<std::size_t> found;
    for (const std::string& call : handler_->calls) found.push_back(call.size() - 7);
    return found;
  }

  std::shared_ptr<RecordingHandler> handler_ = std::make_shared<RecordingHandler>();
  std::shared_ptr<WebView> page_;
  std::optional<ScriptResult> result_;
  Milliseconds longest_{0};
  std::thread writer_;
  std::atomic<bool> written_ = false;
};

struct LongValue {
  const char* name;
  boost::json::value (*make)();
};

class HelperLongValue : public HelperLongFrames, public testing::WithParamInterface<LongValue> {};

TEST_P(HelperLongValue, TakesNoTurnOfThePumpForLong) {
  const boost::json::value value = GetParam().make();
  answer(value);
  takeTurnsUntil([this] { return result_.has_value(); });
  ASSERT_TRUE(result_->value);
  EXPECT_TRUE(*result_->value == value);
  const Milliseconds before = processorTime();
  result_.reset();
  const Milliseconds end = processorTime() - before;
  std::cout << GetParam().name << ": longest turn " << longest_.count() << " ms, the value's end "
            << end.count() << " ms\n";
  // To move it about in memory, or to give it back, takes several times as long.
  EXPECT_LT(longest_.count(), 15.0);
  EXPECT_LT(end.count(), 3.0);
}

INSTANTIATE_TEST_SUITE_P(, HelperLongValue,
                         testing::Values(LongValue{"OneText", [] { return textOf(kLongestValue); }},
                                         LongValue{"TenThousandTexts",
                                                   [] {
                                                     return boost::json::value(boost::json::array(
                                                         10'000, textOf(kLongestValue / 10'000)));
                                                   }}),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_F(HelperLongFrames, KeepTheirPlaceAmongTheOthers) {
  write(message("a") + message(std::string(kMebibyte, 'x')) + message("bc") +
        message(std::string(2 * kMebibyte, 'x')) + message("def"));
  takeTurnsUntil([this] { return handler_->calls.size() == 5; });
  EXPECT_THAT(lengths(), ElementsAre(1U, kMebibyte, 2U, 2 * kMebibyte, 3U));
  EXPECT_THAT(takeLines(), IsEmpty());
}

TEST_F(HelperLongFrames, ComeBeforeTheEndOfTheirHelper) {
  write(message(std::string(kMebibyte, 'x')) + message("a"), true);
  takeTurnsUntil([this] { return hosts_.count() == 2; });
  EXPECT_THAT(lengths(), ElementsAre(kMebibyte, 1U));
  EXPECT_THAT(takeLines(), ElementsAre(HasSubstr("it closed its connection")));
}

TEST_F(HelperLongFrames, ThatEndInTheMiddleAreAHelperThatIsLost) {
  const std::string whole = message(std::string(kMebibyte, 'x'));
  write(whole.substr(0, whole.size() / 2), true);
  takeTurnsUntil([this] { return hosts_.count() == 2; });
  EXPECT_THAT(handler_->calls, IsEmpty());
  EXPECT_THAT(takeLines(), ElementsAre(HasSubstr("it closed its connection")));
}

TEST_F(HelperLongFrames, ThatAreNoMessageEndTheConnection) {
  const std::string text(kMebibyte, '[');
  write(headerOf(text.size()) + text + message("a"));
  takeTurnsUntil([this] { return hosts_.count() == 2; });
  EXPECT_THAT(takeLines(), ElementsAre(HasSubstr("frame is not JSON")));
  write(headerOf(kMebibyte + 2) + "[" + std::string(kMebibyte, ' ') + "]");
  takeTurnsUntil([this] { return lines_.size() == 1; });
  EXPECT_THAT(takeLines(), ElementsAre(HasSubstr("frame is not an object")));
  EXPECT_THAT(handler_->calls, IsEmpty());
}

TEST_F(HelperLongFrames, ThatAreParsedWhenTheClientShutsDownAreNotDelivered) {
  const std::string whole = message(std::string(kLongestValue, 'x'));
  const std::string last = whole.substr(whole.size() - 100);
  write(whole.substr(0, whole.size() - last.size()));
  takeTurnsUntil([this] { return written_.load(); });
  pump();
  hosts_.last().sendBytes(last);
  queue_.pump(std::chrono::microseconds(0));  // the thread has it now
  page_.reset();
  client_->shutDown();
  pump();
  EXPECT_THAT(handler_->calls, IsEmpty());
  EXPECT_THAT(takeLines(), IsEmpty());
}

TEST_F(HelperLongFrames, ValuesOutliveTheClientAndHaveCopiesOfTheirOwn) {
  answer(boost::json::array(3, textOf(kMebibyte)));
  takeTurnsUntil([this] { return result_.has_value(); });
  page_.reset();
  client_.reset();
  boost::json::array& values = result_->value->as_array();
  boost::json::value copy = values[1];
  values[0] = "short";
  values.emplace_back(7);
  std::thread([&copy] { copy.as_string().append("more"); }).join();
  EXPECT_EQ(copy.as_string().size(), kMebibyte + 4);
  // A sanitizer keeps what is freed for a while.
  const std::size_t before = residentBytes();
  for (int i = 0; i < 600; ++i) copy = values[2];
  EXPECT_LT(residentBytes(), before + 400 * kMebibyte);
  result_.reset();
  EXPECT_EQ(copy.as_string().size(), kMebibyte);
}

TEST_F(HelperLongFrames, CostMemoryOnlyAsTheyCome) {
  const std::size_t before = residentBytes();
  hosts_.last().sendBytes(headerOf(kMaximumFrameLength) + "{");
  pump();
  EXPECT_LT(residentBytes(), before + 4 * kMebibyte);
  EXPECT_THAT(takeLines(), IsEmpty());
}

TEST_F(HelperLongFrames, LeaveNoMemoryBehind) {
  if (kSanitizer) GTEST_SKIP() << "the sanitizer keeps memory of its own";
  answer(textOf(kMebibyte));  // the thread has started then
  takeTurnsUntil([this] { return result_.has_value(); });
  result_.reset();
  const std::size_t before = residentBytes();
  answer(textOf(kLongestValue));
  takeTurnsUntil([this] { return result_.has_value(); });
  joinWriter();
  EXPECT_GT(residentBytes(), before + 50 * kMebibyte);
  result_.reset();
  page_.reset();
  client_->shutDown();  // waits for the thread
  EXPECT_LT(residentBytes(), before + 8 * kMebibyte);
}

}  // namespace
}  // namespace zovk
