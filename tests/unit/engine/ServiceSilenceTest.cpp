#include "fixtures/EngineFixture.h"
#include "fixtures/LogMessages.h"

namespace zovk {
namespace {

using ::testing::Contains;
using ::testing::Not;

// Ends every request at once without an error and without data.
class SilentSession final : public UrlSession {
 public:
  std::shared_ptr<UrlTask> dataTask(UrlRequest,
                                    std::function<void(const DataResult&)> completion) override {
    return std::make_shared<Task>([completion] { completion({}); });
  }
  std::shared_ptr<UrlTask> downloadTask(
      std::string, std::function<void(const DownloadResult&)> completion) override {
    return std::make_shared<Task>([completion] { completion({}); });
  }

 private:
  class Task final : public UrlTask {
   public:
    explicit Task(std::function<void()> end) : end_(std::move(end)) {}
    void resume() override { end_(); }
    void cancel() override {}

   private:
    std::function<void()> end_;
  };
};

// The engine on a session of which nothing comes back.
class ServiceSilence : public EngineFixture {
 protected:
  ServiceSilence() {
    fileManager();
    log().clear();
  }
  ZOVKPopupManager& silent() { return *silent_; }

 private:
  SilentSession session_;
  const std::shared_ptr<Platform> platform_ = std::make_shared<Platform>(Platform{
      memory().log, memory().scheduler, memory().scheduler, memory().scheduler, memory().files,
      memory().bundles, memory().settings, memory().device, session_, memory().userInterface});
  std::shared_ptr<ZOVKPopupManager> silent_ = std::make_shared<ZOVKPopupManager>(platform_);
};

TEST_F(ServiceSilence, CountsAsAFailedConditionQuery) {
  silent().setMergePopupArr(listOf({conditional("asked")}));
  silent().showPopup("asked", 0, recordAnswer());
  settle();
  EXPECT_EQ(answers(), (std::vector<Answer>{{0, "reatin complete"}}));
  EXPECT_THAT(debugMessages(log()), Contains("Query condition Popup result:1, respData length:0"));
  EXPECT_THAT(debugMessages(log()), Not(Contains("Query condition Popup request success")));
  EXPECT_THAT(errorMessages(log()), Contains("Query condition Popup request failed"));
}

TEST_F(ServiceSilence, IsAnEmptyConfiguration) {
  silent().startPopup("https://service.example", "1001", "secret");
  EXPECT_EQ(debugMessages(log()).back(), "Handle remote config response:0");
  EXPECT_TRUE(errorMessages(log()).empty());
}

TEST_F(ServiceSilence, SavesNoPage) {
  silent().downloadRemotePopupFile(listOf({pageFile("lobby")}));
  EXPECT_EQ(debugMessages(log()).back(), "Download file success, uri:");
}

}  // namespace
}  // namespace zovk
