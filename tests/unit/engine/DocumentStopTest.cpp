#include <algorithm>

#include "unit/engine/ConfigFixture.h"

namespace zovk {
namespace {

// The end of the platform waits for the session's thread, so that thread stops its work early.
class DocumentStop : public ConfigFixture {
 protected:
  DocumentStop() { engine(); }
  ~DocumentStop() override { ZPLogger::setEnvironment({}); }
  /// Has the work stopped by the line that begins so, from within it.
  void stopAtLine(const std::string& begin) {
    LogEnvironment environment;
    environment.infoFlag = [](std::string_view) { return true; };
    environment.writeLine = [this, begin](std::string_view line) {
      lines_.emplace_back(line);
      if (line.find(begin) != std::string_view::npos) engine().stopWork();
    };
    ZPLogger::setEnvironment(environment);
  }
  bool wasLogged(const std::string& text) const {
    return std::any_of(lines_.begin(), lines_.end(), [&](const std::string& line) {
      return line.find(text) != std::string::npos;
    });
  }
  std::vector<std::string> lines_;
};

TEST_F(DocumentStop, LeavesAnAnswerUnreadAndTheOldDocumentInPlace) {
  addCacheFile(kRemoteFile, documentOf({entryOf("old")}));
  stopAtLine("Parse config file, configType");
  engine().handleRemoteConfigResponse(documentOf({entryOf("new")}));
  EXPECT_EQ(cacheText(kRemoteFile), documentOf({entryOf("old")}));
  EXPECT_TRUE(engine().remotePopupArr().empty());
  EXPECT_FALSE(wasLogged("[Error]")) << "it is nobody's fault";
}

TEST_F(DocumentStop, StartsNoFurtherDownloads) {
  std::vector<ZOVKPopupModel> pages;
  for (const char* scene : {"a", "b", "c"}) {
    pages.push_back(pageFile(scene));
    pages.back().uri = std::string("https://popups.example/") + scene;
  }
  stopAtLine("Start download");
  engine().downloadRemotePopupFile(listOf(pages));
  EXPECT_EQ(memory().urlSession.requestCount(), 1U);
}

}  // namespace
}  // namespace zovk
