#include <algorithm>

#include <boost/json/parse.hpp>

#include "DocumentTest.h"

namespace zovk {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

// Digests and file names are put right on disk, and nothing else.
class CheckFix : public DocumentTest {
 protected:
  static std::vector<std::string> fixed(const ProgramRun& run) {
    std::vector<std::string> result;
    const boost::json::value report = run.json();
    for (const auto& line : report.at("fixed").as_array()) {
      result.emplace_back(line.as_string());
    }
    return result;
  }
  static ProgramRun fix(const std::string& file, std::vector<std::string> more = {}) {
    more.emplace_back("--fix");
    return check(file, more);
  }
  std::vector<std::string> files() const {
    std::vector<std::string> names;
    for (const auto& file : fs::directory_iterator(path(""))) {
      names.push_back(file.path().filename());
    }
    std::sort(names.begin(), names.end());
    return names;
  }
  static std::string engineName(const std::string& sig) {
    return "ZOVKPopup_1_1_1_" + sig + ".html";
  }
};

TEST_F(CheckFix, ADigestIsPutRightAndTheRestStaysByteByByte) {
  const std::string page = pageText("shop");
  write("shop.html", page);
  const std::string before =
      "\xef\xbb\xbf{\r\n\t\"code\" : 0,\"popups\":[  {\"scene\":\"a\", \"sig\"";
  const std::string after = R"( , "scene_type":1, "pop_type":1,"content_type":1,
     "uri":"https://popups.example/shop.html", "pop_freq":2.0,  "x":"\u00e4 \"sig\": 1"} ] })";
  const std::string file = write("popups.json", before + " :\n \"old\"" + after);
  const ProgramRun run = fix(file);
  EXPECT_THAT(fixed(run), ElementsAre("/popups/0/sig: was \"old\", is \"" + md5Hex(page) + "\""));
  EXPECT_EQ(read(file), before + " :\n \"" + md5Hex(page) + "\"" + after);
  EXPECT_EQ(run.json().at("errors").as_int64(), 0) << run.out;
  EXPECT_THAT(fixed(fix(file)), IsEmpty());
}

TEST_F(CheckFix, EveryPopupGetsItsOwnDigest) {
  boost::json::array entries = {with(webPage("a", 1), "sig", "same"), boost::json::object{},
                                with(webPage("b", 2), "sig", "same"),
                                without(webPage("c", 3), "sig")};
  const std::string file = document(entries);
  EXPECT_EQ(fixed(fix(file)).size(), 3U);
  const boost::json::value after = boost::json::parse(read(file));
  const boost::json::array& popups = after.at("popups").as_array();
  EXPECT_EQ(popups.at(0).at("sig"), webPage("a").at("sig"));
  EXPECT_EQ(popups.at(2).at("sig"), webPage("b").at("sig"));
  EXPECT_EQ(popups.at(3).at("sig"), webPage("c").at("sig"));
}

TEST_F(CheckFix, APageOfABundleIsCalledByItsDigest) {
  const boost::json::object entry = pageFile("shop");
  fs::rename(path("shop.html"), path(engineName("0123")));
  const std::string file =
      write("ZOVKPopupLocal.config",
            boost::json::serialize(boost::json::object{{"popups", {with(entry, "sig", "0123")}}}));
  const std::string name = engineName(md5Hex(pageText("shop")));
  EXPECT_EQ(fix(file).json().at("errors").as_int64(), 0);
  EXPECT_THAT(files(), ElementsAre("ZOVKPopupLocal.config", name));
}

TEST_F(CheckFix, APageIsFoundByItsDigestOrByItsKinds) {
  const boost::json::object entry = pageFile("shop");
  const std::string name = engineName(md5Hex(pageText("shop")));
  for (const std::string lost : {"ZOVKPopup_9_9_1_0123.html", "ZOVKPopup_1_1_1_0123.html"}) {
    SCOPED_TRACE(lost);
    const bool byDigest = lost.find("_9_") != std::string::npos;
    write(lost, pageText("shop"));
    fs::remove(path("shop.html"));
    const std::string file = write("ZOVKPopupLocal.config",
                                   boost::json::serialize(boost::json::object{
                                       {"popups", {byDigest ? entry : with(entry, "sig", "77")}}}));
    EXPECT_EQ(fix(file).json().at("errors").as_int64(), 0);
    EXPECT_THAT(files(), ElementsAre("ZOVKPopupLocal.config", name));
    fs::remove(path(name));
  }
}

TEST_F(CheckFix, OfSeveralPagesOfItsKindsNoneIsTaken) {
  const boost::json::object entry = with(pageFile("shop"), "sig", "77");
  fs::remove(path("shop.html"));
  write(engineName("01"), pageText("one"));
  write(engineName("02"), pageText("two"));
  const std::string file = write("ZOVKPopupLocal.config",
                                 boost::json::serialize(boost::json::object{{"popups", {entry}}}));
  const ProgramRun run = fix(file);
  EXPECT_THAT(fixed(run), IsEmpty());
  EXPECT_EQ(run.json().at("errors").as_int64(), 1);
  EXPECT_THAT(files(), ElementsAre("ZOVKPopupLocal.config", engineName("01"), engineName("02")));
}

TEST_F(CheckFix, OnlyAFileThatCanBeAPageIsTaken) {
  const boost::json::object entry = with(pageFile("shop"), "sig", "77");
  fs::remove(path("shop.html"));
  write("ZOVKPopup_1_1_1_01.txt", pageText("one"));
  const std::uintmax_t tooLarge = (std::uintmax_t{64} << 20) + 1;
  fs::resize_file(write("ZOVKPopup_1_1_2_02.html", ""), tooLarge);
  const auto fixedOf = [&](const boost::json::object& popup) {
    return fixed(fix(write("ZOVKPopupLocal.config",
                           boost::json::serialize(boost::json::object{{"popups", {popup}}}))));
  };
  EXPECT_THAT(fixedOf(entry), IsEmpty());
  EXPECT_THAT(fixedOf(with(entry, "content_type", 2)), IsEmpty());
}

TEST_F(CheckFix, AFileThatAnotherPopupStillUsesStays) {
  const boost::json::object one = pageFile("shop");
  const std::string name = engineName(md5Hex(pageText("shop")));
  fs::rename(path("shop.html"), path(name));
  const boost::json::object other = with(with(one, "scene_type", 2), "pop_id", 2);
  const std::string file =
      write("ZOVKPopupLocal.config",
            boost::json::serialize(boost::json::object{{"popups", {one, other}}}));
  // The second finds the page by its digest only once the first has one of its own name.
  write("spare.html", pageText("shop"));
  fix(file);
  EXPECT_TRUE(fs::exists(path(name)));
  EXPECT_TRUE(fs::exists(path("ZOVKPopup_2_1_1_" + md5Hex(pageText("shop")) + ".html")));
}

TEST_F(CheckFix, ADocumentThatGamesRejectIsLeftAlone) {
  for (const std::string text : {"{ broken", R"({"popups": []})", "[1]"}) {
    const std::string file = write("popups.json", text);
    EXPECT_THAT(fixed(fix(file)), IsEmpty());
    EXPECT_EQ(read(file), text);
  }
}

TEST_F(CheckFix, ALinkStaysALinkAndAFileKeepsItsMode) {
  const std::string real = document({with(webPage("a"), "sig", "x")});
  fs::permissions(real, fs::perms(0640));
  fs::create_symlink(real, path("link.json"));
  EXPECT_EQ(fixed(fix(path("link.json"))).size(), 1U);
  EXPECT_TRUE(fs::is_symlink(path("link.json")));
  EXPECT_EQ(fs::status(real).permissions(), fs::perms(0640));
  EXPECT_THAT(fixed(fix(real)), IsEmpty());
}

TEST_F(CheckFix, SaysToPeopleWhatItChanged) {
  const std::string file = document({with(webPage("a"), "sig", "x")});
  const ProgramRun run = runTool({"check", file, "--fix", "--at", kNow});
  EXPECT_EQ(run.code, 0);
  EXPECT_THAT(run.out, HasSubstr(file + ": fixed: /popups/0/sig: was \"x\", is \""));
}

// The development service's own folder, from which it completes what games get.
class CheckService : public DocumentTest {
 protected:
  ProgramRun checkService(const boost::json::object& entry) const {
    return check(document({entry}), {"--as", "service", "--strict"});
  }
  boost::json::object pageEntry() const {
    fs::create_directories(path("pages"));
    write("pages/it's a shop.html", pageText("shop"));
    return {{"pop_id", 1},
            {"scene", "shop"},
            {"scene_type", 1},
            {"pop_type", 1},
            {"pop_freq", 2},
            {"page", "it's a shop.html"},
            {"report_url", "{{base}}/report/shop"}};
  }
};

TEST_F(CheckService, ItsOwnFormatPassesStrictly) {
  const ProgramRun run = checkService(pageEntry());
  EXPECT_EQ(run.code, 0) << run.out;
  EXPECT_THAT(problems(run), IsEmpty());
  EXPECT_EQ(check(document({pageEntry()}), {"--strict"}).code, 1) << "games do not know it";
}

TEST_F(CheckService, APopupThatIsTakenBackPassesStrictly) {
  const ProgramRun run = checkService(with(pageEntry(), "expire_time", 999));
  EXPECT_EQ(run.code, 0);
  EXPECT_THAT(problems(run), ElementsAre(HasSubstr("hint /popups/0/expire_time is past")));
}

TEST_F(CheckService, APageThatIsNotThereIsAnError) {
  for (const char* name : {"gone.html", "../popups.json", "..", ""}) {
    const ProgramRun run = checkService(with(pageEntry(), "page", name));
    EXPECT_EQ(run.code, 1) << name;
    EXPECT_THAT(run.out, HasSubstr("There is no page file")) << name;
  }
  EXPECT_EQ(checkService(with(pageEntry(), "page", 7)).code, 1);
}

TEST_F(CheckService, WhatIsNoJsonIsToldWithItsPlace) {
  const ProgramRun run = runTool({"check", write("config.json", "{\n,"), "--as", "service"});
  EXPECT_EQ(run.code, 1);
  EXPECT_THAT(run.out, HasSubstr("config.json:2:1: error: is no JSON"));
}

TEST_F(CheckService, OnlyADigestThatIsGivenIsFixed) {
  const std::string file = document({pageEntry()});
  const std::string before = read(file);
  EXPECT_EQ(check(file, {"--as", "service", "--fix"}).code, 0);
  EXPECT_EQ(read(file), before);
  document({with(pageEntry(), "sig", "wrong")});
  EXPECT_EQ(check(file, {"--as", "service", "--fix"}).code, 0);
  EXPECT_THAT(read(file), HasSubstr(md5Hex(pageText("shop"))));
}

TEST_F(CheckService, TheSameIsExplained) {
  const ProgramRun run = runTool(
      {"explain", document({pageEntry()}), "--as", "service", "--scene", "shop", "--at", kNow});
  EXPECT_THAT(run.out, HasSubstr("1 of 1 would be shown"));
}

}  // namespace
}  // namespace zovk
