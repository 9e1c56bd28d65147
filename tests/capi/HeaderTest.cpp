#include <algorithm>
#include <type_traits>

#include "capi/CGameFixture.h"
#include "capi/header.h"

namespace zovk {
namespace {

TEST(Header, MeansTheSameInCAndInCpp) {
  const header_sizes sizes = header_sizes_in_c();
  EXPECT_EQ(sizes.settings, sizeof(zovkpopup_settings));
  EXPECT_EQ(sizes.hooks, sizeof(zovkpopup_hooks));
  EXPECT_EQ(sizes.popup_event, sizeof(zovkpopup_popup_event));
  EXPECT_EQ(sizes.explained_popup, sizeof(zovkpopup_explained_popup));
  EXPECT_EQ(sizes.web_window_settings, sizeof(zovkpopup_web_window_settings));
}

TEST(Header, StructsCanBeCopiedByteByByteAndBeginWithTheirSize) {
  EXPECT_TRUE(std::is_trivial_v<zovkpopup_settings>);
  EXPECT_TRUE(std::is_standard_layout_v<zovkpopup_web_window_settings>);
  EXPECT_EQ(offsetof(zovkpopup_settings, size), 0U);
  EXPECT_EQ(offsetof(zovkpopup_hooks, size), 0U);
  EXPECT_EQ(offsetof(zovkpopup_popup_event, size), 0U);
  EXPECT_EQ(offsetof(zovkpopup_explained_popup, size), 0U);
  EXPECT_EQ(offsetof(zovkpopup_web_window_settings, size), 0U);
}

TEST(Header, NamesEveryFunctionForC) {
  EXPECT_EQ(header_functions_in_c(), 40U);
}

TEST(Header, AProgramInCSetsTheHostUpOnce) {
  const ScratchDirectory home;
  const std::string data = home.path().string();
  EXPECT_STREQ(header_set_up_twice_in_c(data.c_str()), "this cannot be done now");
  EXPECT_EQ(zovkpopup_shut_down(), ZOVKPOPUP_OK);
}

TEST(Version, OfTheLibraryIsThatOfTheHeader) {
  EXPECT_STREQ(zovkpopup_version(), ZOVKPOPUP_VERSION);
  EXPECT_EQ(zovkpopup_version_number(), static_cast<std::uint32_t>(ZOVKPOPUP_VERSION_NUMBER));
  EXPECT_STREQ(ZOVKPOPUP_VERSION, "1.0.0");
}

TEST(ErrorMessage, IsThereForEveryNumber) {
  std::vector<std::string> messages;
  for (zovkpopup_status status = 0; status >= -8; --status) {
    ASSERT_NE(zovkpopup_error_message(status), nullptr);
    const std::string message = zovkpopup_error_message(status);
    EXPECT_EQ(std::count(messages.begin(), messages.end(), message), 0) << message;
    messages.push_back(message);
  }
  EXPECT_EQ(messages.front(), "success");
  EXPECT_EQ(messages.back(), zovkpopup_error_message(12345));
}

}  // namespace
}  // namespace zovk
