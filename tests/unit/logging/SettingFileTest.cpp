#include <ostream>

#include "unit/logging/LoggerFixture.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;

struct SettingCase {
  const char* name;
  std::string text;
  bool found;  // a line was taken as the one that counts
  bool on;
};

void PrintTo(const SettingCase& value, std::ostream* out) {
  *out << value.name;
}

class SettingFile : public LoggerFixture, public ::testing::WithParamInterface<SettingCase> {};

TEST_P(SettingFile, DecidesTheDebugSwitchByItsFirstLineThatCounts) {
  addSettingFile(GetParam().text);
  setInfo({{"ZOVK_DEBUG", !GetParam().on}});
  writeDebugLine();
  std::vector<std::string> expected{kRead};
  if (GetParam().found) expected.emplace_back(kFound);
  if (GetParam().on) expected.emplace_back(kDebugLine);
  EXPECT_EQ(lines(), expected);
}

const SettingCase kCases[] = {
    {"Plain", "ZOVK_DEBUG=1", true, true},
    {"WithBlanks", "  ZOVK_DEBUG = 1  ", true, true},
    {"AmongOtherLines", "[game]\nNAME=x\n\nZOVK_DEBUG=1\nNAME=y\n", true, true},
    {"WithACarriageReturn", "ZOVK_DEBUG=1\r\n", true, true},
    {"KeyInsideALongerOne", "XZOVK_DEBUG=1", true, true},
    {"KeyBeforeALongerEnd", "ZOVK_DEBUGGER=1", true, true},
    {"SecondOfThreePieces", "ZOVK_DEBUG=1=0", true, true},
    {"ThirdOfThreePieces", "ZOVK_DEBUG=0=1", true, false},
    {"Zero", "ZOVK_DEBUG=0", true, false},
    {"Word", "ZOVK_DEBUG=true", true, false},
    {"OneWithAZero", "ZOVK_DEBUG=01", true, false},
    {"Eleven", "ZOVK_DEBUG=1 1", true, false},
    {"OneAndATab", "ZOVK_DEBUG=1\t", true, false},
    {"QuotedOne", "ZOVK_DEBUG=\"1\"", true, false},
    {"EmptyValue", "ZOVK_DEBUG=", true, false},
    {"KeyAsValue", "=ZOVK_DEBUG", true, false},
    {"CommentThenLine", "#ZOVK_DEBUG=1\nZOVK_DEBUG = 1", true, true},
    {"CommentBehindTheValue", "ZOVK_DEBUG=1 # on", false, false},
    {"CommentOnly", "#ZOVK_DEBUG=1", false, false},
    {"KeyOnly", "ZOVK_DEBUG", false, false},
    {"KeyOnlyThenLine", "ZOVK_DEBUG\nZOVK_DEBUG=1", true, true},
    {"ZeroThenOne", "ZOVK_DEBUG=0\nZOVK_DEBUG=1", true, false},
    {"OneThenZero", "ZOVK_DEBUG=1\nZOVK_DEBUG=0", true, true},
    {"KeyWithABlankInside", "ZOVK_ DEBUG=1", false, false},
    {"LowerCaseKey", "zovk_debug=1", false, false},
    {"OtherKeysOnly", "DEBUG=1\nZOVK=1", false, false},
    {"Empty", "", false, false},
    {"LineEndsOnly", "\n\n\r\n", false, false},
    {"ValueOnTheNextLine", "ZOVK_DEBUG=\n1", true, false},
    {"ZeroByteInTheValue", std::string("ZOVK_DEBUG=1\0", 13), true, false},
    {"MillionsOfSigns", "ZOVK_DEBUG" + std::string(4'000'000, '='), true, false},
    {"MillionsOfLines", std::string(4'000'000, '\n') + "ZOVK_DEBUG=1", true, true},
};

INSTANTIATE_TEST_SUITE_P(Texts, SettingFile, ::testing::ValuesIn(kCases),
                         [](const auto& test) { return std::string(test.param.name); });

}  // namespace
}  // namespace zovk
