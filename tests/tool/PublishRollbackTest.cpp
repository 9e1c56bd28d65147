#include <filesystem>

#include "PublishTest.h"

namespace zovk {
namespace {

namespace fs = std::filesystem;

class PublishRollback : public PublishTest {
 protected:
  std::string publishPage(const std::string& page) const {
    const ProgramRun run = publish(documentWith(page), site());
    EXPECT_EQ(run.code, 0) << run.out << run.err;
    return live();
  }
  ProgramRun rollBack() const { return publish(path("popups.json"), site(), {"--rollback"}); }
};

TEST_F(PublishRollback, GoesBackStepByStepAndForwardByANewPublication) {
  const std::string first = publishPage("one");
  const std::string second = publishPage("two");
  publishPage("three");
  ASSERT_EQ(rollBack().code, 0);
  EXPECT_EQ(live(), second);
  ASSERT_EQ(rollBack().code, 0);
  EXPECT_EQ(live(), first);
  const std::string fourth = publishPage("four");
  EXPECT_EQ(popupOf(fourth).at("sig").as_string(), md5Hex("four"));
}

TEST_F(PublishRollback, NeedsSomethingToGoBackTo) {
  documentWith("one");
  EXPECT_EQ(rollBack().code, 66);
  const std::string first = publishPage("one");
  const ProgramRun run = rollBack();
  EXPECT_EQ(run.code, 66);
  EXPECT_NE(run.err.find("nothing was published"), std::string::npos) << run.err;
  EXPECT_EQ(live(), first);
}

TEST_F(PublishRollback, DoesNotLookAtTheDocumentOfToday) {
  const std::string first = publishPage("one");
  publishPage("two");
  write("popups.json", "{ broken");
  ASSERT_EQ(rollBack().code, 0);
  EXPECT_EQ(live(), first);
}

TEST_F(PublishRollback, KeepsTheReleasesOfEachTargetApart) {
  publishPage("one");
  ASSERT_EQ(publish(path("popups.json"), path("other")).code, 0);
  EXPECT_EQ(rollBack().code, 66);
}

TEST_F(PublishRollback, KnowsAFolderHoweverItIsWritten) {
  const std::string file = documentWith("one");
  const std::string begin =
      "cd '" + path("") + "'; '" + ZOVKPOPUP_TOOL + "' publish popups.json --to ";
  EXPECT_EQ(runProgram({"/bin/sh", "-c", begin + "site/"}).code, 0);
  const std::string first = live();
  EXPECT_EQ(runProgram({"/bin/sh", "-c", begin + "./site"}).code, 0);
  EXPECT_EQ(publish(file, site(), {"--rollback"}).code, 0);
  EXPECT_EQ(live(), first);
}

TEST_F(PublishRollback, SaysSoWhenTheReleaseIsNoLongerThere) {
  publishPage("one");
  const std::string gone = fs::read_symlink(site() + "/current");
  const std::string second = publishPage("two");
  fs::remove_all(site() + "/" + gone);
  EXPECT_EQ(rollBack().code, 66);
  EXPECT_EQ(live(), second);
}

TEST_F(PublishRollback, RefusesARecordThatIsNone) {
  publishPage("one");
  for (const char* text : {"", "[]", "{\"targets\": 1}", "{\"targets\": {\"x\": 1}}"}) {
    write("published/record.json", text);
    const ProgramRun run = publish(path("popups.json"), site());
    EXPECT_EQ(run.code, 65) << text;
    EXPECT_NE(run.err.find("record.json"), std::string::npos) << run.err;
  }
}

}  // namespace
}  // namespace zovk
