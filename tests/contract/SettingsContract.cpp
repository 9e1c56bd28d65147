#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>

#include "Backend.h"

namespace zovk {
namespace {

using testing::Optional;

class SettingsContract : public testing::Test {
 protected:
  SettingsStore& settings() { return backend.settings(); }
  SettingsBackend backend;
};

TEST_F(SettingsContract, AKeyThatWasNeverSetHasNoValue) {
  EXPECT_FALSE(settings().value("key"));
}

TEST_F(SettingsContract, GivesBackWhatWasSet) {
  settings().set("key", "value");
  EXPECT_THAT(settings().value("key"), Optional(std::string("value")));
  EXPECT_FALSE(settings().value("KEY"));
}

TEST_F(SettingsContract, TheLastValueCounts) {
  settings().set("key", "one");
  settings().set("key", "two");
  EXPECT_THAT(settings().value("key"), Optional(std::string("two")));
}

TEST_F(SettingsContract, RemovedValuesAreGone) {
  settings().set("key", "one");
  settings().set("other", "two");
  settings().remove("key");
  settings().remove("missing");
  EXPECT_FALSE(settings().value("key"));
  EXPECT_THAT(settings().value("other"), Optional(std::string("two")));
}

TEST_F(SettingsContract, AnEmptyTextIsAValue) {
  settings().set("key", "");
  EXPECT_THAT(settings().value("key"), Optional(std::string()));
}

TEST_F(SettingsContract, KeysAndValuesMayHoldAnyText) {
  for (const std::string& text :
       {std::string("'; DROP TABLE settings; --"), std::string("\xe6\x97\xa5\xe6\x9c\xac"),
        std::string("a\0b", 3), std::string(100'000, 'x')}) {
    settings().set(text, text);
    EXPECT_THAT(settings().value(text), Optional(text));
  }
  EXPECT_FALSE(settings().value("a"));
}

TEST_F(SettingsContract, SynchronizeKeepsWhatWasSet) {
  settings().set("key", "value");
  settings().synchronize();
  EXPECT_THAT(settings().value("key"), Optional(std::string("value")));
}

TEST_F(SettingsContract, ManyThreadsMayUseIt) {
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([&, t] {
      const std::string key = "key" + std::to_string(t);
      for (int i = 0; i < 10; ++i) {
        settings().set(key, std::to_string(i));
        settings().value("key0");
        settings().synchronize();
      }
    });
  }
  for (auto& thread : threads) thread.join();
  for (int t = 0; t < 4; ++t) {
    EXPECT_THAT(settings().value("key" + std::to_string(t)), Optional(std::string("9")));
  }
}

}  // namespace
}  // namespace zovk
