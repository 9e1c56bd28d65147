#include <filesystem>

#include "PublishTest.h"

namespace zovk {
namespace {

namespace fs = std::filesystem;

class PublishTargets : public PublishTest {
 protected:
  std::string script(const std::string& name, const std::string& text) const {
    const std::string file = write(name, "#!/bin/sh\n" + text + "\n");
    fs::permissions(file, fs::perms::owner_all);
    return file;
  }
  /// Runs the tool where "ssh" is the script: it gets the host, and a command line for a shell.
  ProgramRun publishOverSsh(const std::string& ssh, const std::string& folder,
                            const std::vector<std::string>& more = {}) const {
    fs::create_directories(path("programs"));
    script("programs/ssh", ssh);
    std::vector<std::string> words{"/usr/bin/env",
                                   "PATH=" + path("programs") + ":/usr/bin:/bin",
                                   ZOVKPOPUP_TOOL,
                                   "publish",
                                   path("popups.json"),
                                   "--to",
                                   "ssh:edge.example:" + folder};
    words.insert(words.end(), more.begin(), more.end());
    return runProgram(words);
  }
  std::vector<std::string> log() const {
    std::vector<std::string> result;
    const std::string text = read(path("log"));
    for (std::size_t start = 0; start < text.size();) {
      const std::size_t end = text.find('\n', start);
      result.push_back(text.substr(start, end - start));
      start = end + 1;
    }
    return result;
  }
};

constexpr const char* kHere = "test \"$1\" = -- && test \"$2\" = edge.example && exec sh -c \"$3\"";

TEST_F(PublishTargets, AFolderOfAnotherMachineIsLikeOneOfThis) {
  const std::string folder = path("a site's place");
  documentWith("one");
  ProgramRun run = publishOverSsh(kHere, folder);
  ASSERT_EQ(run.code, 0) << run.err;
  const std::string first = read(folder + "/current/popup/get_info");
  EXPECT_EQ(popupOf(first).at("sig").as_string(), md5Hex("one"));
  EXPECT_EQ(read(folder + "/" + key("one")), "one");
  EXPECT_EQ(fs::last_write_time(folder + "/" + key("one")),
            fs::last_write_time(path("published/") +
                                fs::read_symlink(folder + "/current").filename().string() + "/" +
                                key("one")));
  documentWith("two");
  ASSERT_EQ(publishOverSsh(kHere, folder).code, 0);
  EXPECT_NE(read(folder + "/current/popup/get_info"), first);
  ASSERT_EQ(publishOverSsh(kHere, folder, {"--rollback"}).code, 0);
  EXPECT_EQ(read(folder + "/current/popup/get_info"), first);
}

TEST_F(PublishTargets, AnotherMachineThatCannotBeReachedChangesNothing) {
  const std::string folder = path("site");
  documentWith("one");
  ASSERT_EQ(publishOverSsh(kHere, folder).code, 0);
  const std::string first = read(folder + "/current/popup/get_info");
  documentWith("two");
  const ProgramRun run = publishOverSsh("cat >/dev/null; exit 255", folder);
  EXPECT_EQ(run.code, 69);
  EXPECT_NE(run.err.find("failed with 255"), std::string::npos) << run.err;
  EXPECT_EQ(read(folder + "/current/popup/get_info"), first);
}

TEST_F(PublishTargets, AnObjectStoreGetsThePagesFirstAndTheDocumentLast) {
  fs::create_directories(path("web"));
  write("web/it's {key}.html", "come");
  const std::string store = script(
      "store", "echo \"$2|$3|$4\" >>'" + path("log") + "'; mkdir -p \"$(dirname '" +
                   path("bucket") + "'/\"$2\")\"; cp \"$1\" '" + path("bucket") + "'/\"$2\"");
  const std::string target = "command:'" + store + "' {file} {key} {type} {cache}";
  documentWith("one");
  const ProgramRun run = publish(path("popups.json"), target, {"--lasting", path("web")});
  ASSERT_EQ(run.code, 0) << run.err;
  EXPECT_THAT(log(),
              ::testing::ElementsAre(key("one") + "|text/html|max-age=31536000, immutable",
                                     "pages/it's {key}.html|text/html|no-cache",
                                     "popup/get_info|application/json|s-maxage=60, max-age=0"));
  EXPECT_EQ(read(path("bucket/") + key("one")), "one");
  const std::string first = read(path("bucket/popup/get_info"));
  EXPECT_EQ(popupOf(first).at("sig").as_string(), md5Hex("one"));
  documentWith("two");
  ASSERT_EQ(publish(path("popups.json"), target).code, 0);
  ASSERT_EQ(publish(path("popups.json"), target, {"--rollback"}).code, 0);
  EXPECT_EQ(read(path("bucket/popup/get_info")), first);
}

TEST_F(PublishTargets, AnObjectThatCannotBeStoredKeepsTheDocumentBack) {
  const std::string store = script("store", "echo \"$2\" >>'" + path("log") + "'; exit 3");
  documentWith("one");
  const ProgramRun run = publish(path("popups.json"), "command:'" + store + "' {file} {key}");
  EXPECT_EQ(run.code, 69);
  EXPECT_NE(run.err.find("failed with 3"), std::string::npos) << run.err;
  EXPECT_THAT(log(), ::testing::ElementsAre(key("one")));
  EXPECT_FALSE(fs::exists(path("published/record.json")));
}

}  // namespace
}  // namespace zovk
