#include <cstddef>
#include <fstream>
#include <iterator>

#include <sys/stat.h>

#include "capi/CGameFixture.h"

namespace zovk {
namespace {

class CSettings : public CGameFixture {
 protected:
  /// Returns the first message of the library to its helper, a program that only stores it.
  std::string greetingWith(const zovkpopup_settings& given) {
    const std::string told = (scratch_.path() / "told").string();
    const std::string program = (scratch_.path() / "helper").string();
    std::ofstream(program) << "#!/bin/sh\nexec cat <&3 >'" << told << "'\n";
    ::chmod(program.c_str(), 0700);
    zovkpopup_settings mine = given;
    mine.helper_path = program.c_str();
    EXPECT_EQ(zovkpopup_set_up(&mine), ZOVKPOPUP_OK);
    std::string greeting;
    pumpUntil(
        [&] {
          std::ifstream file(told);
          greeting.assign(std::istreambuf_iterator<char>(file), {});
          return greeting.find('}') != std::string::npos;
        },
        "the greeting");
    return greeting;
  }

 private:
  ScratchDirectory scratch_;
};

TEST_F(CSettings, TellTheHelperHowMuchMemoryAPageMayTake) {
  zovkpopup_settings mine = settings();
  mine.page_memory = 300;
  EXPECT_NE(greetingWith(mine).find(R"("pageMemory":300)"), std::string::npos);
}

TEST_F(CSettings, TellTheHelperWhatKindOfWindowPopupsHave) {
  zovkpopup_settings mine = settings();
  mine.popup_window = "fullscreen";
  EXPECT_NE(greetingWith(mine).find(R"("popupWindow":"fullscreen")"), std::string::npos);
}

TEST_F(CSettings, LeaveAPageAGigabyteWhenTheGameDoesNotSay) {
  EXPECT_NE(greetingWith(settings()).find(R"("pageMemory":1024)"), std::string::npos);
}

TEST_F(CSettings, OfAGameThatDoesNotKnowOfTheMemoryYetLeaveAPageAGigabyte) {
  zovkpopup_settings mine = settings();
  mine.page_memory = 300;
  mine.size = offsetof(zovkpopup_settings, page_memory);
  EXPECT_NE(greetingWith(mine).find(R"("pageMemory":1024)"), std::string::npos);
}

TEST_F(CSettings, HoldMoreMemoryThanThereIsToTheMostThatCanBeSaid) {
  zovkpopup_settings mine = settings();
  mine.page_memory = UINT64_MAX;
  EXPECT_NE(greetingWith(mine).find(R"("pageMemory":4294967295)"), std::string::npos);
}

}  // namespace
}  // namespace zovk
