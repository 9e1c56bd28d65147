#include <filesystem>

#include "DocumentTest.h"

namespace zovk {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

// The problems of a page file itself.
class CheckPage : public DocumentTest {
 protected:
  std::vector<std::string> problemsOfPage(const std::string& page) const {
    boost::json::object entry = pageFile("a");
    write("a.html", page);
    entry["sig"] = md5Hex(page);
    return problemsOf(entry);
  }
  /// A good page with something more.
  static std::string pageWith(const std::string& more) { return pageText("a") + more; }
  /// The same page, which names another encoding.
  static std::string pageIn(const std::string& encoding, const std::string& more) {
    std::string page = pageWith(more);
    const std::string utf8 = "utf-8";
    return page.replace(page.find(utf8), utf8.size(), encoding);
  }
  static std::string inUtf16(const std::string& ascii, bool bigEndian) {
    std::string wide = bigEndian ? "\xfe\xff" : "\xff\xfe";
    for (const char c : ascii) wide += bigEndian ? std::string{'\0', c} : std::string{c, '\0'};
    return wide;
  }
  /// A good page of a size, with something more at its end.
  static std::string pageOfSize(std::size_t size, const std::string& more = {}) {
    std::string page = pageWith("<!--");
    page.resize(size - more.size() - 3, 'x');
    return page + "-->" + more;
  }
};

TEST_F(CheckPage, AGoodPageHasNoProblem) {
  EXPECT_THAT(problemsOfPage(pageWith("<p>x<a href=\"https://popups.example\">y</a>"
                                      "<img src=\"data:image/png;base64,AAAA\">")),
              IsEmpty());
}

TEST_F(CheckPage, WhatAPageLacksIsNamed) {
  EXPECT_THAT(problemsOfPage("<p>nothing"),
              ElementsAre(HasSubstr("does not say its encoding"), HasSubstr("has no <title>"),
                          HasSubstr("has no viewport"), HasSubstr("posts nothing"),
                          HasSubstr("has no background")));
}

TEST_F(CheckPage, WhatAPageCannotLoadIsNamed) {
  EXPECT_THAT(problemsOfPage(pageWith("<img src=\"lamp.png\">")),
              ElementsAre(HasSubstr("warning /popups/0 the page a.html <img src=\"lamp.png\"> is "
                                    "another file")));
  EXPECT_THAT(problemsOfPage(pageWith("<script src=\"https://popups.example/a.js\"></script>")),
              ElementsAre(HasSubstr("is loaded from the net")));
  EXPECT_THAT(problemsOfPage(pageWith("<link rel=\"stylesheet\" href=\"a.css\">")),
              ElementsAre(HasSubstr("is another file")));
  EXPECT_THAT(problemsOfPage(pageWith("<a href=\"rules.html\">x</a>")),
              ElementsAre(HasSubstr("leads to a file, which does not open")));
  EXPECT_THAT(problemsOfPage(pageWith("<style>@import 'a.css'</style>")),
              ElementsAre(HasSubstr("@import")));
}

TEST_F(CheckPage, AScriptThatCannotBeParsedIsAnErrorWithItsLineInThePage) {
  EXPECT_THAT(
      problemsOfPage(pageWith("\n<p>x\n<script>\nlet a = 1;\nlet b = ;\n</script>")),
      ElementsAre(AllOf(HasSubstr("error /popups/0 the page a.html has a script that cannot "
                                  "be parsed, at line 5:"),
                        HasSubstr("Unexpected token ';'"))));
  EXPECT_THAT(problemsOfPage(pageWith("<button onclick=\"go('now)\">x</button>")),
              ElementsAre(HasSubstr("cannot be parsed, at line 1:")));
}

TEST_F(CheckPage, GoodScriptsOfEachKindAreNoProblem) {
  EXPECT_THAT(problemsOfPage(pageWith("<script>const t = '</p>'; a?.b ?? `${1}`</script>"
                                      "<script type=\"module\">export const x = await 1;</script>"
                                      "<script type=\"application/json\">{\"no\": script}</script>"
                                      "<button onclick=\"return go(&quot;now&quot;)\">x</button>")),
              IsEmpty());
  EXPECT_THAT(problemsOfPage(pageWith("<script>export const x = 1;</script>")),
              ElementsAre(HasSubstr("cannot be parsed")));
  // A browser does not read the text of an element that names a file.
  EXPECT_THAT(problemsOfPage(pageWith("<script src=\"data:,\">no ( script</script>")), IsEmpty());
}

TEST_F(CheckPage, WithoutTheHelperAHintSaysThatScriptsWereNotChecked) {
  const std::string alone = path("bin/zovkpopup");
  std::filesystem::create_directory(path("bin"));
  std::filesystem::copy_file(ZOVKPOPUP_TOOL, alone);
  write("a.html", pageText("a"));
  const ProgramRun run =
      runProgram({alone, "check", document({pageFile("a")}), "--at", kNow, "--json", "--strict"});
  EXPECT_EQ(run.code, 0) << run.out << run.err;
  EXPECT_THAT(problems(run),
              ElementsAre(AllOf(HasSubstr("hint  the scripts of the pages were not checked: "),
                                HasSubstr("zovkpopup-helper is not installed"))));
}

TEST_F(CheckPage, APageIsUtf8) {
  EXPECT_THAT(problemsOfPage(pageWith("<p>gr\xfc\xdf")), ElementsAre(HasSubstr("is not UTF-8")));
  EXPECT_THAT(problemsOfPage(std::string("\xff\xfe<\0", 4)), ElementsAre(HasSubstr("is UTF-16")));
}

TEST_F(CheckPage, ALargePageIsHintedAtThenWarnedOfThenRefused) {
  EXPECT_THAT(problemsOfPage(pageOfSize(200 * 1024)), IsEmpty());
  EXPECT_THAT(problemsOfPage(pageOfSize(200 * 1024 + 1)), ElementsAre(HasSubstr("hint /popups/0")));
  EXPECT_THAT(problemsOfPage(pageOfSize(8 << 20)), ElementsAre(HasSubstr("hint /popups/0")));
  EXPECT_THAT(problemsOfPage(pageOfSize((8 << 20) + 1)),
              ElementsAre(HasSubstr("warning /popups/0")));
}

TEST_F(CheckPage, TheScriptsOfTheLargestPageAreParsedAndThoseOfALargerOneAreNot) {
  const std::string broken = "<script>let b = ;</script>";
  EXPECT_THAT(
      problemsOfPage(pageOfSize(64 << 20, broken)),
      ElementsAre(HasSubstr("warning /popups/0"), HasSubstr("cannot be parsed, at line 1")));
  EXPECT_THAT(
      problemsOfPage(pageOfSize((64 << 20) + 1, broken)),
      ElementsAre(
          "error /popups/0 the page a.html is 64.0 MiB large; 64 MiB are the most",
          "hint /popups/0 the scripts of the page a.html were not checked: it is too large"));
}

TEST_F(CheckPage, AScriptOfManyMegabytesIsParsedToItsEnd) {
  std::string script = "<script>\n";
  for (int i = 0; i < 1000; ++i) script += "/*" + std::string(12000, 'x') + "*/\n";
  EXPECT_THAT(problemsOfPage(pageWith(script + "let b = 1;</script>")),
              ElementsAre(HasSubstr("warning /popups/0 the page a.html is 11.")));
  EXPECT_THAT(problemsOfPage(pageWith(script + "let b = ;</script>")),
              ElementsAre(HasSubstr("warning /popups/0 the page a.html is 11."),
                          HasSubstr("cannot be parsed, at line 1002")));
}

TEST_F(CheckPage, ScriptsAreDecodedAsTheWebEngineDecodesThem) {
  const std::string latin = "<script>let gr\xf6\xdf = 1;</script>";
  EXPECT_THAT(problemsOfPage(pageIn("ISO-8859-1", latin)), ElementsAre(HasSubstr("is not UTF-8")));
  // There the two bytes are no letters, so they cannot be in a name.
  EXPECT_THAT(problemsOfPage(pageWith(latin)),
              ElementsAre(HasSubstr("is not UTF-8"), HasSubstr("cannot be parsed")));
  EXPECT_THAT(problemsOfPage(pageIn("Shift_JIS", "<script>let a = '\x83\x5c'</script>")),
              ElementsAre(HasSubstr("is not UTF-8")))
      << "the second byte is half of a letter, not a backslash";
  for (const bool bigEndian : {false, true}) {
    EXPECT_THAT(problemsOfPage(inUtf16(pageWith("<script>let b = 1;</script>"), bigEndian)),
                ElementsAre(HasSubstr("is UTF-16")));
    EXPECT_THAT(problemsOfPage(inUtf16(pageWith("\n<script>let b = ;</script>"), bigEndian)),
                ElementsAre(HasSubstr("is UTF-16"), HasSubstr("cannot be parsed, at line 2:")));
  }
}

TEST_F(CheckPage, ScriptsOfAPageThatNamesNoEncodingAreWestern) {
  std::string page = pageIn("", "<script>let gr\xc3\xb6\xc3\x9f = 1;</script>");
  EXPECT_THAT(problemsOfPage(page),
              ElementsAre(HasSubstr("does not say its encoding"), HasSubstr("cannot be parsed")));
}

TEST_F(CheckPage, AHelperThatFailsIsNamedInAHint) {
  const std::string alone = path("bin/zovkpopup");
  for (const char* folder : {"bin", "zovkpopup"}) std::filesystem::create_directory(path(folder));
  std::filesystem::copy_file(ZOVKPOPUP_TOOL, alone);
  const std::string helper = write("zovkpopup/zovkpopup-helper", "#!/bin/sh\nexit 7\n");
  std::filesystem::permissions(helper, std::filesystem::perms::owner_all);
  const ProgramRun run =
      runProgram({alone, "check", document({pageFile("a")}), "--at", kNow, "--json"});
  EXPECT_EQ(run.code, 0) << run.out << run.err;
  EXPECT_THAT(problems(run), ElementsAre("hint  the scripts of the pages were not checked: " +
                                         helper + " exited with status 7"));
}

TEST_F(CheckPage, APageInAnEncodingThatIsNotKnownSaysThatItsScriptsWereNotChecked) {
  EXPECT_THAT(problemsOfPage(pageIn("x-own", "<script>let b = ;</script>")),
              ElementsAre("hint /popups/0 the scripts of the page a.html were not checked: its "
                          "encoding is not known"));
}

TEST_F(CheckPage, AHintIsNoErrorEvenIfWarningsAre) {
  boost::json::object entry = pageFile("a");
  std::string page = pageWith("<!--");
  page.resize(300 * 1024, 'x');
  page += "-->";
  write("a.html", page);
  entry["sig"] = md5Hex(page);
  EXPECT_EQ(check(document({entry}), {"--strict"}).code, 0);
}

TEST_F(CheckPage, DeepPagesAreReadToTheEnd) {
  std::string page = pageText("a");
  for (int i = 0; i < 100000; ++i) page += "<b>";
  EXPECT_GE(check(document({[&] {
              boost::json::object entry = pageFile("a");
              write("a.html", page);
              entry["sig"] = md5Hex(page);
              return entry;
            }()}))
                .code,
            0);
}

// Rules that only the authors of documents can follow.
class CheckScene : public DocumentTest {};

TEST_F(CheckScene, AnOrdinaryPopupHasATypeAboveZero) {
  EXPECT_THAT(problemsOf(with(webPage("a"), "scene_type", 0)),
              ElementsAre(HasSubstr("scene_type is 0, which is for the policy")));
  EXPECT_THAT(problemsOf(with(webPage("a"), "scene_type", -1)),
              ElementsAre(HasSubstr("scene_type is -1")));
  EXPECT_THAT(problemsOf(with(webPage("a"), "scene_type", "1")),
              ElementsAre(HasSubstr("is a text and counts as 1")));
  EXPECT_THAT(problemsOf(with(webPage("ZOVKPolicy"), "scene_type", 0)), IsEmpty());
}

TEST_F(CheckScene, ASceneHasNoBlanks) {
  EXPECT_THAT(problemsOf(with(webPage("a"), "scene", "a ")),
              ElementsAre(HasSubstr("scene has blanks: \"a \"")));
}

TEST_F(CheckScene, ASiteMayTakeAPopupBack) {
  const std::string file = document({with(webPage("a"), "expire_time", 999)});
  EXPECT_EQ(check(file, {"--strict"}).code, 1);
  const ProgramRun run = check(file, {"--strict", "--as", "site"});
  EXPECT_EQ(run.code, 0);
  EXPECT_THAT(problems(run), ElementsAre(HasSubstr("hint /popups/0/expire_time is past")));
}

// The usual reasons why a text is not JSON.
class CheckNoJson : public DocumentTest {
 protected:
  std::string problemOf(const std::string& text) const {
    return runTool({"check", write("bad.json", text)}).out;
  }
};

TEST_F(CheckNoJson, TheLineIsShownWithTheCause) {
  EXPECT_THAT(
      problemOf("{\"popups\": [\n  {\"scene\": \"a\",},\n]}"),
      HasSubstr("bad.json:2:17: error: is no JSON: syntax error. There is a comma after the "
                "last one.\n    {\"scene\": \"a\",},\n                  ^\n"));
  EXPECT_THAT(problemOf("{\n// why\n\"popups\": []}"), HasSubstr("JSON has no comments."));
  EXPECT_THAT(problemOf("{'popups': []}"), HasSubstr("Texts stand in double quotes."));
  EXPECT_THAT(problemOf("{\xe2\x80\x9cpopups\xe2\x80\x9d: []}"), HasSubstr("curly quotes"));
  EXPECT_THAT(problemOf("<!doctype html>"), HasSubstr("It is an HTML file"));
  EXPECT_THAT(problemOf(std::string("\xff\xfe{\0}\0", 6)), HasSubstr("It is UTF-16"));
  EXPECT_THAT(problemOf(" \n"), HasSubstr("It is empty."));
}

TEST_F(CheckNoJson, ALongLineIsCut) {
  const std::string out = problemOf("[" + std::string(5000, ' ') + "'" + std::string(5000, 'x'));
  EXPECT_LT(out.size(), 500U);
  EXPECT_THAT(out, HasSubstr("Texts stand in double quotes."));
}

}  // namespace
}  // namespace zovk
