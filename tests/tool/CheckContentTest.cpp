#include "DocumentTest.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// Reasons why a popup of an accepted document is never shown.
class CheckContent : public DocumentTest {
 protected:
  static std::string upperCase(std::string text) {
    for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return text;
  }
};

TEST_F(CheckContent, AWebPageHasTheDigestOfItsAddress) {
  const std::string digest = md5Hex("https://popups.example/a");
  EXPECT_THAT(problemsOf(with(webPage("a"), "sig", upperCase(digest))), IsEmpty());
  EXPECT_THAT(problemsOf(with(webPage("a"), "sig", "x")),
              ElementsAre("error /popups/0/sig is \"x\", but the MD5 of "
                          "https://popups.example/a is " +
                          digest));
  EXPECT_THAT(problemsOf(without(webPage("a"), "sig")),
              ElementsAre("error /popups/0/sig is missing, but the MD5 of "
                          "https://popups.example/a is " +
                          digest));
}

TEST_F(CheckContent, ADigestDoesNotMixItsCase) {
  const std::string digest = md5Hex("https://popups.example/a");
  std::string mixed = upperCase(digest);
  const std::size_t letter = mixed.find_first_of("ABCDEF");
  mixed[letter] = digest[letter];
  EXPECT_THAT(problemsOf(with(webPage("a"), "sig", mixed)),
              ElementsAre("error /popups/0/sig mixes upper and lower case, which never matches; "
                          "write " +
                          digest));
}

TEST_F(CheckContent, APageFileHasItsOwnDigest) {
  const boost::json::object entry = pageFile("a");
  EXPECT_THAT(problemsOf(entry), IsEmpty());
  write("a.html", pageText("changed"));
  EXPECT_THAT(problemsOf(entry), ElementsAre("error /popups/0/sig is \"" + md5Hex(pageText("a")) +
                                             "\", but the MD5 of " + path("a.html") + " is " +
                                             md5Hex(pageText("changed"))));
}

TEST_F(CheckContent, APageFileWithoutADigestIsToldItsOwn) {
  EXPECT_THAT(problemsOf(without(pageFile("a"), "sig")),
              ElementsAre("error /popups/0/sig is missing, but the MD5 of " + path("a.html") +
                          " is " + md5Hex(pageText("a"))));
}

TEST_F(CheckContent, APageFileIsThere) {
  const boost::json::object entry = pageFile("a");
  std::filesystem::remove(path("a.html"));
  EXPECT_THAT(problemsOf(entry),
              ElementsAre("error /popups/0/sig There is no page file " +
                          path("ZOVKPopup_1_1_1_" + md5Hex(pageText("a")) + ".html") + " or " +
                          path("a.html") + "; is it elsewhere (--pages)?"));
}

TEST_F(CheckContent, PagesMayLieElsewhere) {
  const std::string file = document({pageFile("a")});
  std::filesystem::create_directory(path("pages"));
  std::filesystem::rename(path("a.html"), path("pages/a.html"));
  EXPECT_EQ(check(file).code, 1);
  EXPECT_EQ(check(file, {"--pages", path("pages")}).code, 0);
}

TEST_F(CheckContent, AnAddressCannotLeadOutOfTheFolder) {
  boost::json::object entry = pageFile("a");
  std::filesystem::create_directory(path("pages"));
  entry["uri"] = "https://popups.example/x%2F..%2F..%2Fa.html";
  EXPECT_EQ(check(document({entry}), {"--pages", path("pages")}).code, 1);
}

TEST_F(CheckContent, ARemotePageHasAnAddressAndALocalOneNeedsNone) {
  const boost::json::object remote = without(pageFile("a"), "uri");
  const std::string own = "ZOVKPopup_1_1_1_" + md5Hex(pageText("a")) + ".html";
  write(own, pageText("a"));
  EXPECT_THAT(problemsOf(remote),
              ElementsAre("error /popups/0/uri is missing, so that the page is never downloaded"));
  EXPECT_THAT(problems(check(document({remote}), {"--as", "local"})), IsEmpty());
  EXPECT_THAT(problemsOf(without(webPage("a"), "uri")),
              ElementsAre("error /popups/0/uri is missing, so that there is no page to load"));
}

TEST_F(CheckContent, AConditionalPopupHasAServiceToAsk) {
  const boost::json::object entry = with(webPage("a"), "pop_freq", 3);
  EXPECT_THAT(problemsOf(entry),
              ElementsAre("error /popups/0/check_url is missing, which counts as no: a conditional "
                          "popup (pop_freq 3) is never shown without it"));
  EXPECT_THAT(problemsOf(with(entry, "check_url", "https://popups.example/check")), IsEmpty());
}

}  // namespace
}  // namespace zovk
