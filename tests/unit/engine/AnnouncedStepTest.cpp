#include "fixtures/EngineFixture.h"
#include "fixtures/LineWatch.h"

namespace zovk {
namespace {

constexpr const char* kPolicyKey = "zovk_policy_publish_time";

// A line that announces a step is written before the step is taken.
class AnnouncedStep : public EngineFixture {
 protected:
  AnnouncedStep() { engine(); }
  /// Runs `work` and expects `isUndone` to hold at the first line that contains `line`, and no
  /// longer afterwards.
  void expectAnnounced(const std::string& line, const std::function<bool()>& isUndone,
                       const std::function<void()>& work) {
    std::optional<bool> undone;
    {
      const LineWatch watch(memory(), line, [&] {
        if (!undone) undone = isUndone();
      });
      work();
    }
    EXPECT_EQ(undone, true) << line;
    EXPECT_FALSE(isUndone()) << line;
  }
  std::optional<std::string> cached(const std::string& name) {
    return memory().files.text(std::string(kCache) + "/" + name);
  }
};

TEST_F(AnnouncedStep, ThePolicysVersionIsKept) {
  ZOVKPopupModel policy = webPage("ZOVKPolicy", 0);
  policy.publish_time = 6;
  engine().setMergePopupArr(listOf({policy}));
  expectAnnounced(
      "lastestPublishTime:6", [this] { return engine().policyPublishTime() == std::nullopt; },
      [this] { engine().needToShowPolicy(); });
  expectAnnounced(
      "Save policy state", [this] { return !memory().settings.value(kPolicyKey); },
      [this] { engine().savePolicyState(); });
}

TEST_F(AnnouncedStep, TheTimeOfARequestIsTaken) {
  expectAnnounced(
      "Request remote config", [this] { return engine().startTime() == 0; },
      [this] { engine().startPopup("https://service.example", "1001", "secret"); });
}

TEST_F(AnnouncedStep, TheDocumentIsSaved) {
  expectAnnounced(
      "Save remote config file", [this] { return !log().contains("Save internal file"); },
      [this] { engine().handleRemoteConfigResponse(R"({"popups":[{"scene":"a"}]})"); });
}

TEST_F(AnnouncedStep, APageIsSaved) {
  ZOVKPopupModel page = pageFile("a");
  page.uri = "https://files.example/a";
  engine().downloadRemotePopupFile(listOf({page}));
  log().clear();
  expectAnnounced(
      "Save file ZOVKPopup_", [this] { return !log().contains("Save internal file"); },
      [this] {
        memory().urlSession.answer("files.example", 200, "page");
        settle();
      });
}

TEST_F(AnnouncedStep, TheWindowIsMadeAndReleased) {
  expectAnnounced(
      "Init Popup window", [this] { return engine().window() == nullptr; },
      [this] { engine().initPopupWindow(); });
  expectAnnounced(
      "Release Popup window", [this] { return engine().window() != nullptr; },
      [this] { engine().releasePopupWindow(); });
}

TEST_F(AnnouncedStep, TheKeyWindowIsCheckedAndNoLongerChecked) {
  expectAnnounced(
      "Start check key window", [this] { return engine().timer() == nullptr; },
      [this] { engine().startCheckKeyWindow(); });
  const auto timer = engine().timer();
  expectAnnounced(
      "Stop check key window", [&] { return timer->isValid(); },
      [this] { engine().stopCheckKeyWindow(); });
}

TEST_F(AnnouncedStep, AResultWithoutAMessageIsTold) {
  engine().doCallback(std::make_shared<const ZOVKPopupComplete>(recordAnswer()), -1, "");
  expectAnnounced(
      "Do callback", [this] { return answers().empty(); }, [this] { settle(); });
}

TEST_F(AnnouncedStep, AnyOtherResultIsTold) {
  expectAnnounced(
      "Do callback", [this] { return answers().empty(); },
      [this] {
        engine().doCallback(std::make_shared<const ZOVKPopupComplete>(recordAnswer()), 0, "text");
      });
}

TEST_F(AnnouncedStep, ARecordIsWritten) {
  expectAnnounced(
      "File:once not exist, write directly", [this] { return !cached("once"); },
      [this] { fileManager().saveInternalFile("once", "1", true); });
  expectAnnounced(
      "Text:2 not exist, do append", [this] { return cached("once") == "1"; },
      [this] { fileManager().saveInternalFile("once", "2", true); });
  expectAnnounced(
      "Start save once", [this] { return cached("once") == "1,2"; },
      [this] { fileManager().saveInternalFile("once", "3", false); });
}

TEST_F(AnnouncedStep, AFileIsDeleted) {
  addCacheFile("old.html", "x");
  expectAnnounced(
      "Delete file:old.html", [this] { return cached("old.html") == "x"; },
      [this] { fileManager().deleteInternalFileWithout("kept"); });
}

}  // namespace
}  // namespace zovk
