#include "ProgramRun.h"
#include "text/Md5.h"

namespace zovk {
namespace {

using SigCommand = ToolTest;

TEST_F(SigCommand, OfAFileIsTheDigestOfItsBytes) {
  const std::string bytes("page\0with a zero", 16);
  const ProgramRun run = runTool({"sig", write("page.html", bytes)});
  EXPECT_EQ(run.code, 0) << run.err;
  EXPECT_EQ(run.out, md5Hex(bytes) + "\n");
}

TEST_F(SigCommand, OfAnAddressIsTheDigestOfItsText) {
  const std::string address = "https://popups.example/größe?a=1";
  EXPECT_EQ(runTool({"sig", address}).out, md5Hex(address) + "\n");
}

TEST_F(SigCommand, SpeaksJson) {
  const auto file = runTool({"sig", write("page.html", "x"), "--json"}).json();
  EXPECT_EQ(file.at("kind").as_string(), "file");
  EXPECT_EQ(file.at("sig").as_string(), md5Hex("x"));
  const auto address = runTool({"sig", "https://a.example", "--json"}).json();
  EXPECT_EQ(address.at("kind").as_string(), "address");
  EXPECT_EQ(address.at("target").as_string(), "https://a.example");
}

TEST_F(SigCommand, OfNoFileSaysWhichAndWhy) {
  const ProgramRun run = runTool({"sig", path("nothing.html")});
  EXPECT_EQ(run.code, 66);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err,
            "zovkpopup: " + path("nothing.html") + ": cannot be read: No such file or directory\n");
}

TEST_F(SigCommand, OfAFolderSaysSo) {
  const ProgramRun run = runTool({"sig", path("")});
  EXPECT_EQ(run.code, 66);
  EXPECT_NE(run.err.find("it is a folder"), std::string::npos) << run.err;
}

}  // namespace
}  // namespace zovk
