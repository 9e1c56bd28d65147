#include <limits>

#include "unit/engine/ConfigFixture.h"

namespace zovk {
namespace {

constexpr std::int32_t kLargest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kSmallest = std::numeric_limits<std::int32_t>::min();

class DocumentNumbers : public ConfigFixture {
 protected:
  /// Returns the record of an entry whose number keys all hold `value`.
  ZOVKPopupModel popupWith(const std::string& value) {
    std::string entry = R"({"scene":"a")";
    for (const char* key : kKeys) entry += std::string(",\"") + key + "\":" + value;
    PopupList popups;
    EXPECT_TRUE(engine().parseConfigFile(documentOf({entry + "}"}), kConfigRemote, &popups));
    return popups.empty() ? ZOVKPopupModel() : *popups[0];
  }
  void expectNumbers(const std::string& value, std::int32_t number) {
    const ZOVKPopupModel popup = popupWith(value);
    const auto kind = static_cast<std::uint64_t>(std::int64_t{number});
    EXPECT_EQ(popup.pop_id, number) << value;
    EXPECT_EQ(popup.priority, number) << value;
    EXPECT_EQ(popup.publish_time, number) << value;
    EXPECT_EQ(popup.valid_time, number) << value;
    EXPECT_EQ(popup.expire_time, number) << value;
    EXPECT_EQ(popup.scene_type, kind) << value;
    EXPECT_EQ(popup.pop_type, kind) << value;
    EXPECT_EQ(popup.content_type, kind) << value;
    EXPECT_EQ(popup.pop_freq, kind) << value;
  }

  static constexpr const char* kKeys[] = {"pop_id",       "scene_type", "pop_type",
                                          "content_type", "pop_freq",   "priority",
                                          "publish_time", "valid_time", "expire_time"};
};

TEST_F(DocumentNumbers, MayBeNumbersOrTexts) {
  expectNumbers("2", 2);
  expectNumbers("2.9", 2);
  expectNumbers(R"("2")", 2);
  expectNumbers(R"(" 2nd")", 2);
  expectNumbers(R"("")", 0);
  expectNumbers("true", 1);
  expectNumbers("false", 0);
}

TEST_F(DocumentNumbers, KeepTheirSignWhenTheyAreWidened) {
  expectNumbers("-1", -1);
  expectNumbers("-2.9", -2);
  EXPECT_EQ(popupWith("-1").scene_type, std::numeric_limits<std::uint64_t>::max());
}

TEST_F(DocumentNumbers, AreHeldToTheirRange) {
  expectNumbers("2147483648", kLargest);
  expectNumbers("-2147483649", kSmallest);
  expectNumbers("99999999999999999999", kLargest);
  expectNumbers("1e300", kLargest);
  expectNumbers("-1e300", kSmallest);
  expectNumbers(R"("2147483648")", kLargest);
  expectNumbers(R"("-99999999999999999999")", kSmallest);
  expectNumbers(R"("nan")", 0);
}

TEST_F(DocumentNumbers, ThatAreNoNumbersRejectTheWholeDocument) {
  for (const char* key : kKeys) {
    for (const char* value : {"null", "[]", "[1]", "{}", R"({"a":1})"}) {
      log().clear();
      PopupList popups = listOf({webPage("old")});
      const std::string bad = std::string(R"({"scene":"bad",")") + key + "\":" + value + "}";
      EXPECT_FALSE(
          engine().parseConfigFile(documentOf({entryOf("good"), bad}), kConfigRemote, &popups));
      EXPECT_EQ(scenesOf(popups), std::vector<std::string>{"old"}) << "left as it was";
      EXPECT_THAT(lines().back(), ::testing::StartsWith("E Parse config file exception:")) << bad;
    }
  }
}

TEST_F(DocumentNumbers, OfAnyServerTimeAreTakenWithoutHarm) {
  for (const char* time : {"1e400", "-1e400", "1e-400", R"("1e400")", R"("1e-400")", R"("nan")",
                           R"("inf")", R"("")", "99999999999999999999", "true"}) {
    engine().parseConfigFile(std::string(R"({"server_time":)") + time + "}", kConfigRemote,
                             nullptr);
    EXPECT_EQ(engine().getCurrentTime(), MemoryScheduler::kStartOfTime) << time;
  }
}

}  // namespace
}  // namespace zovk
