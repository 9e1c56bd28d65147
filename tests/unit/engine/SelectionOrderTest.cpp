#include <gmock/gmock.h>

#include "fixtures/EngineFixture.h"
#include "fixtures/LogLines.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;

constexpr std::int32_t kNow = 1'000'000;

// A popup that every test turns down meets only the first of them: what is logged, and nothing of
// what would come behind it.
class SelectionOrder : public EngineFixture {
 protected:
  SelectionOrder() {
    engine();
    memory().scheduler.setTime(kNow);
  }
  static ZOVKPopupModel bad(ZOVKPopupModel popup) {
    popup.valid_platform = "9";
    popup.valid_time = kNow + 1;
    popup.expire_time = kNow;
    popup.sig = "wrong";
    return popup;
  }
  /// The lines behind the two that every candidate of a scene type begins with.
  std::vector<std::string> byType(const ZOVKPopupModel& popup, std::uint64_t sceneType) {
    log().clear();
    EXPECT_TRUE(engine().getValidPopupForSceneType(sceneType, listOf({popup})).empty());
    return linesBehind(2);
  }
  /// The lines behind the one that every selection by scene begins with.
  std::vector<std::string> byScene(const ZOVKPopupModel& popup, const std::string& scene) {
    log().clear();
    EXPECT_TRUE(engine().getValidPopupForScene(scene, listOf({popup})).empty());
    return linesBehind(1);
  }
  static std::string type(const std::string& message) {
    return "D getValidPopupForSceneType: " + message;
  }
  static std::string scene(const std::string& message) {
    return "D getValidPopupForScene: " + message;
  }

 private:
  std::vector<std::string> linesBehind(std::size_t count) {
    auto lines = shortLines(log());
    EXPECT_GT(lines.size(), count);
    lines.erase(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(count));
    return lines;
  }
};

TEST_F(SelectionOrder, OfASceneTypeIsTypeChannelStartEndContent) {
  ZOVKPopupModel popup = bad(webPage("a", 2));
  EXPECT_THAT(byType(popup, 1), ElementsAre(type("SceneType not same")));
  EXPECT_THAT(byType(popup, 2), ElementsAre(type("Invalid for channel:1")));
  popup.valid_platform = "";
  EXPECT_THAT(byType(popup, 2), ElementsAre("E Popup is not valid"));
  popup.valid_time = 0;
  EXPECT_THAT(byType(popup, 2), ElementsAre("E Popup is expired"));
  popup.expire_time = 0;
  EXPECT_THAT(byType(popup, 2), ElementsAre(type("Content type remote"),
                                            "E MD5 different, config sig:wrong, file MD5:" +
                                                md5Hex(webPage("a").uri)));
}

TEST_F(SelectionOrder, OfASceneIsSceneChannelStartEndContent) {
  ZOVKPopupModel popup = bad(webPage("a"));
  EXPECT_THAT(byScene(popup, "b"), ElementsAre(scene("Scene not same")));
  EXPECT_THAT(byScene(popup, "a"), ElementsAre("E Invalid for channel:1"));
  popup.valid_platform = "";
  EXPECT_THAT(byScene(popup, "a"), ElementsAre("E Popup is not valid"));
  popup.valid_time = 0;
  EXPECT_THAT(byScene(popup, "a"), ElementsAre("E Popup had expired"));
  popup.expire_time = 0;
  EXPECT_THAT(byScene(popup, "a"), ElementsAre(scene("Content type remote"),
                                               "E MD5 different, config sig:wrong, file MD5:" +
                                                   md5Hex(webPage("a").uri)));
}

TEST_F(SelectionOrder, OfAPageFileByTypeIsFileOnceRecordDigest) {
  const ZOVKPopupModel popup = pageFile("a");
  const std::string path = popup.getPopupFilePath();
  const std::string record = fileManager().getInternalFilePath(kOnceRecordFile);
  const std::string exists = "D fileExistAtPath: File exist at path:" + path;
  const std::string recordPath =
      "D getInternalFilePath: Get internal file path, fileName:" + std::string(kOnceRecordFile);
  const std::string pagePath =
      "D getInternalFilePath: Get internal file path, fileName:" + popup.getPopupFileName();
  const std::string asksRecord =
      "D textExistInFile: Text exist in file, text:" + popup.sig + " filePath:" + record;
  memory().files.take(path);
  addCacheFile(kOnceRecordFile, popup.sig);
  EXPECT_THAT(byType(popup, 1), ElementsAre(type("Content type local"), pagePath, exists,
                                            "E File " + popup.getPopupFileName() + " not exist"));
  addCacheFile(popup.getPopupFileName(), "changed");
  EXPECT_THAT(byType(popup, 1),
              ElementsAre(type("Content type local"), pagePath, exists, recordPath, asksRecord,
                          "D textExistInFile: Exist", type("Had already Popuped")));
  addCacheFile(kOnceRecordFile, "other");
  EXPECT_THAT(
      byType(popup, 1),
      ElementsAre(type("Content type local"), pagePath, exists, recordPath, asksRecord,
                  "D textExistInFile: Not exist", "D getFileMD5: Get file MD5, filePath:" + path,
                  "D getFileMD5: MD5:" + md5Hex("changed"),
                  "E MD5 different, config sig:" + popup.sig + ", file MD5:" + md5Hex("changed")));
}

TEST_F(SelectionOrder, OfAPageFileBySceneIsFileDigest) {
  const ZOVKPopupModel popup = pageFile("a");
  const std::string path = popup.getPopupFilePath();
  const std::string exists = "D fileExistAtPath: File exist at path:" + path;
  const std::string pagePath =
      "D getInternalFilePath: Get internal file path, fileName:" + popup.getPopupFileName();
  memory().files.take(path);
  EXPECT_THAT(byScene(popup, "a"),
              ElementsAre(scene("Content type local"), pagePath, exists,
                          scene("File " + popup.getPopupFileName() + " not exist")));
  addCacheFile(popup.getPopupFileName(), "changed");
  EXPECT_THAT(byScene(popup, "a"), ElementsAre(scene("Content type local"), pagePath, exists,
                                               "D getFileMD5: Get file MD5, filePath:" + path,
                                               "D getFileMD5: MD5:" + md5Hex("changed"),
                                               scene("MD5 different, config sig:" + popup.sig +
                                                     ", file MD5:" + md5Hex("changed"))));
}

TEST_F(SelectionOrder, OfTwoMissingArgumentsIsTheSceneBeforeThePopups) {
  log().clear();
  EXPECT_TRUE(engine().getValidPopupForScene("", {}).empty());
  EXPECT_THAT(shortLines(log()), ElementsAre(scene("Get valid Popup, scene:, srcPopups count:0"),
                                             "E Param scene illegal"));
}

TEST_F(SelectionOrder, OfHavePopupIsQuestionSelectionAnswer) {
  for (const auto& [popups, found] :
       {std::pair(listOf({webPage("a", 4)}), true), std::pair(listOf({webPage("a", 5)}), false)}) {
    engine().setMergePopupArr(popups);
    log().clear();
    EXPECT_EQ(engine().havePopup(4), found);
    EXPECT_THAT(
        shortLines(log()),
        ElementsAre("D havePopup: sceneType:4",
                    type("Get valid Popup, sceneType:4, srcPopups "
                         "count:1"),
                    type(found ? "Popup fileName:, sceneType:4, contentType:3, frequency:2"
                               : "Popup fileName:, sceneType:5, contentType:3, frequency:2"),
                    type(found ? "Content type remote" : "SceneType not same"),
                    found ? "D havePopup: Have Popup for sceneType:4"
                          : "D havePopup: No Popup for sceneType:4"));
  }
}

}  // namespace
}  // namespace zovk
