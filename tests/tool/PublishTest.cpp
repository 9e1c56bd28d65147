#include "PublishTest.h"

#include <filesystem>

#include <sys/stat.h>

namespace zovk {
namespace {

namespace fs = std::filesystem;

using Publish = PublishTest;

// With a line end of its own.
std::string unpacked(const std::string& file) {
  return runProgram({"/bin/sh", "-c", "gzip -dc '" + file + "'; echo"}).out;
}

TEST_F(Publish, PutsThePageUnderItsDigestAndLeadsTheDocumentToIt) {
  const ProgramRun run = publish(documentWith("first"), site());
  ASSERT_EQ(run.code, 0) << run.out << run.err;
  EXPECT_EQ(read(site() + "/" + key("first")), "first");
  const boost::json::object popup = popupOf(live());
  EXPECT_EQ(popup.at("uri").as_string(), "https://popups.example/" + key("first"));
  EXPECT_EQ(popup.at("sig").as_string(), md5Hex("first"));
  EXPECT_EQ(popup.at("pop_id").as_int64(), 1);
}

TEST_F(Publish, TakesAnotherHostWhenToldTo) {
  ASSERT_EQ(publish(documentWith("first"), site(), {"--base", "https://cdn.example/a"}).code, 0);
  EXPECT_EQ(popupOf(live()).at("uri").as_string(), "https://cdn.example/a/" + key("first"));
}

TEST_F(Publish, LeavesWebPagesAndUnknownMembersAsTheyAre) {
  const auto entry = with(webPage("fair"), "studio", boost::json::object{{"a", 1.5}});
  ASSERT_EQ(publish(document({entry}), site()).code, 0);
  EXPECT_EQ(popupOf(live()), entry);
}

TEST_F(Publish, CompressesEverythingBeforehandAndTheSameEachTime) {
  ASSERT_EQ(publish(documentWith(std::string(9000, 'a')), site()).code, 0);
  const std::string packed = site() + "/" + key(std::string(9000, 'a')) + ".gz";
  EXPECT_EQ(unpacked(packed), std::string(9000, 'a') + "\n");
  EXPECT_EQ(unpacked(site() + "/current/popup/get_info.gz"), live() + "\n");
  const std::string before = read(packed);
  EXPECT_LT(before.size(), 200U);
  ASSERT_EQ(publish(documentWith(std::string(9000, 'a')), site()).code, 0);
  EXPECT_EQ(read(packed), before);
}

// A server makes the page's validator of it: it must not change with each publication.
TEST_F(Publish, GivesPagesATimeThatNeverChangesAndDocumentsALaterOneEachTime) {
  struct stat page {};
  struct stat first {};
  struct stat second {};
  const std::string file = documentWith("page");
  ASSERT_EQ(publish(file, site()).code, 0);
  ::stat((site() + "/" + key("page")).c_str(), &page);
  ::stat((site() + "/current/popup/get_info").c_str(), &first);
  ASSERT_EQ(publish(file, site()).code, 0);
  ::stat((site() + "/current/popup/get_info").c_str(), &second);
  EXPECT_EQ(page.st_mtime, 946684800);
  EXPECT_GT(second.st_mtime, first.st_mtime);
}

TEST_F(Publish, PutsFilesOfLastingAddressesLiveWithTheDocument) {
  fs::create_directories(path("web/pictures"));
  write("web/invitation.html", "come");
  write("web/pictures/lake.svg", "<svg/>");
  ASSERT_EQ(publish(document({webPage("fair")}), site(), {"--lasting", path("web")}).code, 0);
  EXPECT_EQ(live("pages/invitation.html"), "come");
  EXPECT_EQ(live("pages/pictures/lake.svg"), "<svg/>");
}

TEST_F(Publish, RefusesADocumentWithAnErrorAndTouchesNothing) {
  ASSERT_EQ(publish(documentWith("good"), site()).code, 0);
  const std::string before = live();
  const std::string file = documentWith("good");
  write("shop.html", "another page than its sig says");
  const ProgramRun run = publish(file, site());
  EXPECT_EQ(run.code, 1);
  EXPECT_NE(run.out.find("/popups/0/sig"), std::string::npos) << run.out;
  EXPECT_EQ(live(), before);
}

TEST_F(Publish, RefusesWarningsWhenStrict) {
  const auto past = with(webPage("fair"), "expire_time", 1);
  EXPECT_EQ(publish(document({past}), site(), {"--strict"}).code, 1);
  EXPECT_FALSE(fs::exists(site()));
  EXPECT_EQ(publish(document({past}), site()).code, 0);
}

TEST_F(Publish, RefusesTheDocumentOfABundle) {
  boost::json::object entry = pageFile("shop");
  const std::string file = write("ZOVKPopupLocal.config",
                                 boost::json::serialize(boost::json::object{{"popups", {entry}}}));
  const ProgramRun run = publish(file, site());
  EXPECT_EQ(run.code, 65);
  EXPECT_NE(run.err.find("bundle"), std::string::npos) << run.err;
}

TEST_F(Publish, SaysWhatIsWrongWithATarget) {
  const std::string file = documentWith("page");
  for (const char* target : {"ssh:host", "ssh:-oProxyCommand=x:/a"}) {
    const ProgramRun run = publish(file, target);
    EXPECT_NE(run.err.find("ssh:HOST:FOLDER"), std::string::npos);
    EXPECT_EQ(run.code, 64);
  }
  const ProgramRun run = publish(file, "command:store {file}");
  EXPECT_NE(run.err.find("{key}"), std::string::npos);
  EXPECT_EQ(run.code, 64);
  EXPECT_EQ(publish(file, write("a-file", "")).code, 74);
  EXPECT_EQ(publish(file, site(), {"--lasting", path("nothing")}).code, 66);
}

TEST_F(Publish, SaysThatTheRecordCannotBeMadeWhereAFileIs) {
  const std::string file = documentWith("page");
  EXPECT_EQ(publish(file, site(), {"--record", write("a-file", "")}).code, 74);
}

TEST_F(Publish, NeedsAnAddressInWhichThePageCanBePlaced) {
  boost::json::object entry = pageFile("shop");
  entry["uri"] = "https://popups example/shop.html";
  // Found by the engine's name for it.
  const std::string page = pageText("shop");
  write("ZOVKPopup_1_1_1_" + md5Hex(page) + ".html", page);
  const ProgramRun run = publish(document({entry}), site());
  EXPECT_NE(run.err.find("a page's address cannot be read"), std::string::npos)
      << run.err << run.out;
  EXPECT_EQ(run.code, 65);
}

}  // namespace
}  // namespace zovk
