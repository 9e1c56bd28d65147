#include "DocumentTest.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// Documents that are allowed but probably not intended.
class CheckWarnings : public DocumentTest {
 protected:
  /// The only problem, which leaves the document good.
  std::string warningOf(const boost::json::array& entries) const {
    const ProgramRun run = check(document(entries));
    EXPECT_EQ(run.code, 0) << run.out;
    const auto found = problems(run);
    EXPECT_EQ(found.size(), 1U) << run.out;
    return found.empty() ? "" : found.front();
  }
};

TEST_F(CheckWarnings, PastPopups) {
  EXPECT_EQ(warningOf({with(webPage("a"), "expire_time", 1'000'000)}),
            "warning /popups/0/expire_time is past: 1000000 (1970-01-12 13:46:40 UTC)");
  EXPECT_THAT(problemsOf(with(webPage("a"), "expire_time", 1'000'001)), IsEmpty());
}

TEST_F(CheckWarnings, PopupsThatAreNeverValid) {
  EXPECT_EQ(
      warningOf({with(with(webPage("a"), "expire_time", 2'000'000), "valid_time", 2'000'000)}),
      "warning /popups/0/expire_time is not after valid_time (2000000 against 2000000), so "
      "that the popup is never valid");
}

TEST_F(CheckWarnings, KindsThatAreNone) {
  EXPECT_EQ(warningOf({with(webPage("a"), "content_type", 4)}),
            "warning /popups/0/content_type is 4 and counts as a web page; write 1 or 2 for a page "
            "file, 3 for a web page");
  EXPECT_EQ(warningOf({without(webPage("a"), "pop_type")}),
            "warning /popups/0/pop_type is 0 and counts as an ordinary popup; write 1, or 2 for a "
            "game page");
  EXPECT_EQ(warningOf({with(webPage("a"), "pop_freq", -1)}),
            "warning /popups/0/pop_freq is -1 and counts as no limit; write 1 for once, 2 for no "
            "limit, 3 for conditional");
  EXPECT_EQ(warningOf({with(webPage("a"), "pop_freq", 1)}),
            "warning /popups/0/pop_freq is 1 for once, which has no effect on a web page");
}

TEST_F(CheckWarnings, TwoPopupsOfOneSceneOrNumber) {
  EXPECT_EQ(warningOf({webPage("a"), webPage("b", 2), webPage("a", 3)}),
            "warning /popups/2/scene is \"a\" as in /popups/0: asked for by its scene, only the "
            "first that is valid for the player is looked at");
  EXPECT_EQ(warningOf({webPage("a", 7), webPage("b", 7)}),
            "warning /popups/1/pop_id is 7 as in /popups/0: reports cannot tell them apart");
  EXPECT_EQ(warningOf({without(webPage("a"), "scene")}),
            "warning /popups/0/scene is missing: the popup can be asked for by its scene type "
            "only");
}

TEST_F(CheckWarnings, AddressesThatAreNotSafeOrNone) {
  boost::json::object plain = webPage("a");
  plain["uri"] = "http://popups.example/a";
  plain["sig"] = md5Hex("http://popups.example/a");
  EXPECT_EQ(warningOf({plain}),
            "warning /popups/0/uri is not https, so that others on the way can read and change it");
  EXPECT_EQ(warningOf({with(webPage("a"), "report_url", "ftp://popups.example")}),
            "warning /popups/0/report_url is neither an https nor an http address");
  EXPECT_EQ(warningOf({with(webPage("a"), "report_url", "popups.example/report")}),
            "warning /popups/0/report_url is no complete address: \"popups.example/report\"");
  EXPECT_EQ(warningOf({with(webPage("a"), "report_url", "https://popups.example/report#a")}),
            "warning /popups/0/report_url must not have a fragment (#)");
}

TEST_F(CheckWarnings, ServicesThatAreMissingOrNeverAsked) {
  EXPECT_EQ(
      warningOf({without(webPage("a"), "report_url")}),
      "warning /popups/0/report_url is missing: a commit of the page closes the popup unreported");
  EXPECT_EQ(warningOf({with(webPage("a"), "check_url", "https://popups.example/check")}),
            "warning /popups/0/check_url is never asked unless pop_freq is 3");
}

TEST_F(CheckWarnings, ValuesThatCountAsOthers) {
  EXPECT_EQ(warningOf({with(webPage("a"), "priority", "7")}),
            "warning /popups/0/priority is a text and counts as 7; write a number");
  EXPECT_EQ(warningOf({with(webPage("a"), "priority", true)}),
            "warning /popups/0/priority is a boolean and counts as 1; write a number");
  EXPECT_EQ(warningOf({with(webPage("a"), "expire_time", 1'700'000'000'000)}),
            "warning /popups/0/expire_time is 1700000000000 and counts as 2147483647; numbers have "
            "32 bits, and times are in seconds");
  EXPECT_EQ(warningOf({with(webPage("a"), "priority", 2.5)}),
            "warning /popups/0/priority is 2.5E0 and counts as 2; write a whole number");
  EXPECT_EQ(warningOf({with(webPage("a"), "valid_platform", 3)}),
            "warning /popups/0/valid_platform is a number and counts as absent; write a text");
  EXPECT_EQ(warningOf({with(webPage("a"), "valid_platform", "1 2")}),
            "warning /popups/0/valid_platform is \"1 2\"; write channel numbers with commas "
            "between, such as 1,2");
}

TEST_F(CheckWarnings, MembersThatNobodyKnows) {
  EXPECT_EQ(warningOf({with(webPage("a"), "priorty", 7)}),
            "warning /popups/0/priorty is no member that the engine knows; is priority meant?");
  EXPECT_EQ(warningOf({with(webPage("a"), "comment", "x")}),
            "warning /popups/0/comment is no member that the engine knows");
  EXPECT_EQ(warningOf({with(webPage("a"), "page", "a.html")}),
            "warning /popups/0/page is known to the development service only; games pass over it");
  const std::string file =
      write("popups.json",
            boost::json::serialize(boost::json::object{{"popup", 1}, {"popups", {webPage("a")}}}));
  EXPECT_THAT(problems(check(file)),
              ElementsAre("warning /popup is no member that the engine knows; is popups meant?"));
}

}  // namespace
}  // namespace zovk
