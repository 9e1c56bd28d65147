#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "record/LoginStateRecord.h"

namespace zovk {
namespace {

TEST(LoginStateRecord, IsChannelOneWithoutTextsAtFirst) {
  const ZOVKPopupLoginStateModel state = LoginStateRecord().get();
  EXPECT_EQ(state.channelID, 1);
  EXPECT_EQ(state.openID + state.token + state.jwtToken, "");
}

TEST(LoginStateRecord, IsNeverSeenHalfChanged) {
  LoginStateRecord record;
  record.set({0, "0", "0", "0"});
  std::thread host([&record] {
    for (int i = 1; i <= 2000; ++i) {
      const std::string text(static_cast<std::size_t>(i % 50 + 1), static_cast<char>('0' + i % 10));
      record.set({text[0] - '0', text, text, text});
    }
  });
  for (int i = 0; i < 2000; ++i) {
    const ZOVKPopupLoginStateModel state = record.get();
    EXPECT_EQ(state.openID, state.token);
    EXPECT_EQ(state.openID, state.jwtToken);
    EXPECT_EQ(state.openID[0] - '0', state.channelID);
  }
  host.join();
}

}  // namespace
}  // namespace zovk
