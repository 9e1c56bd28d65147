#include <filesystem>
#include <memory>

#include <sys/stat.h>

#include "WebPageFixture.h"

namespace zovk {
namespace {

namespace fs = std::filesystem;

unsigned modeOf(const fs::path& path) {
  struct stat facts {};
  return ::stat(path.c_str(), &facts) == 0 ? facts.st_mode & 0777U : 0;
}

/// Data of pages that the next helper finds.
class HelperStore : public testing::Test {
 protected:
  /// Returns what the page posts in a new helper that keeps its data in `directory` and then ends.
  std::string tellsIn(const fs::path& directory, const std::string& script) {
    HelperUnderTest helper(HelperUnderTest::Start::kSilent,
                           {"HOME=" + home_.path().string(), "XDG_DATA_HOME", "XDG_CACHE_HOME"});
    HelperMessage greeting = helper.greeting();
    greeting["dataDirectory"] = directory.string();
    helper.send(greeting);
    helper.await("ready");
    PopupScreen screen(helper);
    screen.open();
    screen.load(site_.handle("/page", [](const httplib::Request&, httplib::Response& response) {
      response.set_content("<!doctype html><title>Page</title>", "text/html");
    }));
    const std::string told(screen.evaluate(script).as_string());
    helper.closeSocket();
    helper.awaitEnd();
    return told;
  }
  static constexpr const char* kStore =
      "document.cookie = 'a=1; max-age=3600'; localStorage.setItem('b', '2');"
      "document.cookie + localStorage.getItem('b')";
  static constexpr const char* kRead = "document.cookie + localStorage.getItem('b')";

  LoopbackServer site_;
  ScratchDirectory home_;
  ScratchDirectory game_;
  ScratchDirectory otherGame_;
};

TEST_F(HelperStore, KeepsCookiesAndDataOfPagesInTheDirectoryOfTheGame) {
  EXPECT_EQ(tellsIn(game_.path(), kStore), "a=12");
  EXPECT_EQ(tellsIn(game_.path(), kRead), "a=12");
  EXPECT_EQ(tellsIn(otherGame_.path(), kRead), "null");
}

TEST_F(HelperStore, IsClosedToOthers) {
  const fs::path data = game_.path() / "webhost/data";
  tellsIn(game_.path(), kStore);
  EXPECT_EQ(modeOf(data), 0700U);
  EXPECT_EQ(modeOf(data / "cookies.sqlite"), 0600U);
  fs::permissions(data, fs::perms(0755));
  fs::permissions(data / "cookies.sqlite", fs::perms(0644));
  EXPECT_EQ(tellsIn(game_.path(), kRead), "a=12");
  EXPECT_EQ(modeOf(data), 0700U);
  EXPECT_EQ(modeOf(data / "cookies.sqlite"), 0600U);
}

}  // namespace
}  // namespace zovk
