#include "fixtures/ControllerFixture.h"
#include "fixtures/LogLines.h"
#include "network/ZOVKPopupNetwork.h"
#include "text/ZOVKPopupCommonTool.h"

namespace zovk {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;

// A line names the class and the operation that wrote it, with a line number behind them.
class LineOwner : public EngineFixture {
 protected:
  /// Expects every line whose message begins so to be from these operations of a class, and at
  /// least one to be there for each.
  void expectOwner(const std::string& owner, const std::string& operation,
                   const std::vector<std::string>& messageStarts) {
    for (const std::string& start : messageStarts) {
      EXPECT_THAT(ownersOf(log(), start), ElementsAre(owner + " " + owner + "::" + operation))
          << start;
    }
  }
  void expectManager(const std::string& operation, const std::vector<std::string>& messageStarts) {
    expectOwner("ZOVKPopupManager", operation, messageStarts);
  }
  void expectFileManager(const std::string& operation,
                         const std::vector<std::string>& messageStarts) {
    expectOwner("ZOVKPopupFileManager", operation, messageStarts);
  }
  void expectNetwork(const std::string& operation, const std::vector<std::string>& messageStarts) {
    expectOwner("ZOVKPopupNetwork", operation, messageStarts);
  }
  static constexpr const char* kDocument =
      R"({"popups":[{"scene":"a","content_type":1,"uri":"https://files.example/a","sig":"1"}]})";
};

TEST_F(LineOwner, OfTheEnginesStart) {
  addResource("ZOVKPopupLocal.config", kDocument);
  engine();
  engine().startPopup("https://service.example", "1001", "secret");
  engine().startPopup("https://service.example", "1001", "secret");
  engine().setChannelID(7, "", "", "");
  memory().urlSession.answer("get_info", 200, kDocument);
  settle();
  memory().urlSession.answer("files.example", 200, "page");
  settle();
  expectManager("init", {"ZOVKPopup start, version:"});
  expectManager("loadConfigFile", {"Start load config file"});
  expectManager("loadRemoteConfig", {"Load remote config"});
  expectManager("loadLocalConfig", {"Load local config"});
  expectManager("mergeConfig", {"Start merge config",
                                "Same scene:", "Remote config publishTime:", "Merge config done"});
  expectManager("parseConfigFile",
                {"Parse config file, ", "Config file:", "code:", "Parse config file done"});
  expectManager("deleteExpiredPopup", {"Delete expired Popup"});
  expectManager("deleteExpirePopupFile", {"Delete expire Popup file"});
  expectManager("deleteExpirePopupOnceRecord", {"Delete expire Popup once record"});
  expectManager("startPopup", {"Start Popup, ", "Popup had started"});
  expectManager("setChannelID", {"Set state ID1:7"});
  expectManager("requestRemoteConfig", {"Request remote config", "Request time:"});
  expectManager(
      "handleRemoteConfigResponse",
      {"Handle remote config response:", "Parse config file success", "Save remote config file"});
  expectManager("downloadRemotePopupFile",
                {"Start to download remote Popup file", "Download file success, ", "Save file "});
}

TEST_F(LineOwner, OfTheSelections) {
  ZOVKPopupModel elsewhere = webPage("a");
  elsewhere.valid_platform = "9";
  const ZOVKPopupModel shown = pageFile("shown");
  addCacheFile(kOnceRecordFile, shown.sig);
  ZOVKPopupModel missing = pageFile("missing");
  memory().files.take(missing.getPopupFilePath());
  engine();
  engine().setMergePopupArr(
      listOf({webPage("web"), shown, missing, elsewhere, webPage("other", 2)}));
  addCacheFile(shown.getPopupFileName(), "page of shown");
  addCacheFile(kOnceRecordFile, shown.sig);
  log().clear();
  engine().havePopup(1);
  engine().havePopup(9);
  expectManager("havePopup",
                {"sceneType:", "Have Popup for sceneType:", "No Popup for sceneType:"});
  expectManager(
      "getValidPopupForSceneType",
      {"Get valid Popup, sceneType:", "Popup fileName:", "SceneType not same",
       "Invalid for channel:", "Content type remote", "Content type local", "Had already Popuped"});
  log().clear();
  for (const char* scene : {"web", "shown", "missing"}) {
    engine().getValidPopupForScene(scene, engine().mergePopupArr());
  }
  addCacheFile(shown.getPopupFileName(), "changed");
  engine().getValidPopupForScene("shown", engine().mergePopupArr());
  engine().getValidPopupForScene("web", {});
  expectManager("getValidPopupForScene",
                {"Get valid Popup, scene:", "Scene not same", "Content type remote",
                 "Content type local", "File ZOVKPopup_", "MD5 different, ", "srcPopups empty"});
}

TEST_F(LineOwner, OfARun) {
  engine().setMergePopupArr(listOf({webPage("lobby")}));
  log().clear();
  engine().showPopup("nowhere", 0, nullptr);
  engine().showPopup("lobby", 0, recordAnswer());
  engine().showPopup("lobby", 0, nullptr);
  settle();
  engine().doCallback(std::make_shared<const ZOVKPopupComplete>(recordAnswer()), -1, "");
  settle();
  expectManager("showPopup", {"Show Popup, scene:", "No valid Popup for scene:", "Start show Popup",
                              "Be Popuping now, waiting for last Popup finish"});
  expectManager("doCallback", {"Do callback"});
  choose("skip");
  choose("skip");
  expectManager("showPopup", {"Show Popup", "No Popup to show"});
  expectManager("doCallback", {"Do callback"});
  expectManager("cachePopup", {"Cache Popup, ", "complete is NULL", "Cache callback done"});
  expectManager("getPopupFromCache", {"Get Popup from cache"});
  expectManager("initPopupWindow", {"Init Popup window"});
  expectManager("releasePopupWindow", {"Release Popup window"});
  expectManager("startCheckKeyWindow", {"Start check key window"});
  expectManager("makePopupToKeyWindow", {"Make Popup to key window"});
  expectManager("stopCheckKeyWindow", {"Stop check key window"});
}

TEST_F(LineOwner, OfPopupsThatAreHeldBack) {
  engine().setMergePopupArr(listOf({webPage("lobby")}));
  engine().setHeldBack(true);
  engine().showPopup("lobby", 0, nullptr);
  settle();
  EXPECT_THAT(debugMessages(log()), Contains("Popups are held back, the queue waits"));
  expectManager("setHeldBack", {"Hold Popups back:1"});
  expectManager("showPopup", {"Popups are held back, the queue waits"});
}

TEST_F(LineOwner, OfThePolicy) {
  ZOVKPopupModel policy = webPage("ZOVKPolicy", 0);
  policy.publish_time = 6;
  engine().setMergePopupArr(listOf({policy}));
  engine().showPolicy(nullptr);
  settle();
  choose("skip");
  EXPECT_FALSE(engine().needToShowPolicy());
  expectManager("showPolicy", {"Start Policy, complete:", "Show Policy", "Show Policy done"});
  expectManager("needToShowPolicy", {"savedPublishTime:", "lastestPublishTime:",
                                     "Have new Policy version", "No need to show Policy"});
  expectManager("savePolicyState", {"Save policy state", "Save policy done"});
  log().clear();
  engine().showPolicy(nullptr);
  EXPECT_THAT(ownersOf(log(), "No need to show Policy"),
              ElementsAre("ZOVKPopupManager ZOVKPopupManager::needToShowPolicy",
                          "ZOVKPopupManager ZOVKPopupManager::showPolicy"));
}

TEST_F(LineOwner, OfAConditionQuery) {
  engine().setMergePopupArr(listOf({conditional("asked")}));
  for (const char* body : {R"({"need_popup":0})", R"({"need_popup":1})"}) {
    engine().showPopup("asked", 0, nullptr);
    memory().urlSession.answer("check.example", 200, body);
    memory().urlSession.deliver();
  }
  expectManager("queryConditionPopup",
                {"Query condition Popup",
                 "Query condition Popup result:", "Query condition Popup request success",
                 "Need to show condition Popup", "No need to show condition Popup"});
  expectManager("parseConditionPopupResp", {"jsonInfo:"});
}

TEST_F(LineOwner, OfTheFileManager) {
  addResource("there", "x");
  fileManager().saveInternalFile("record", "1", true);
  for (const char* record : {"1", "2"}) fileManager().saveInternalFile("record", record, true);
  for (int i = 0; i < 2; ++i) fileManager().saveInternalFile("page", "x", false);
  fileManager().readInternalFile("page", nullptr, nullptr);
  fileManager().readResourceFile("there", nullptr, nullptr);
  fileManager().getInternalFilePath("page");
  fileManager().getFileMD5(std::string(kCache) + "/page");
  fileManager().getUUID();
  fileManager().getUUID();
  fileManager().saveValue("", "gone");
  fileManager().fileExistAtPath(kCache);
  expectFileManager("init", {"Create directory:"});
  expectFileManager(
      "saveInternalFile",
      {"Save internal file, ", "File:record not exist, write directly",
       "File:record exist, do append", "Text:1 is already exist", "Text:2 not exist, do append",
       "page exist, delete the old one", "Start save page", "Save page done"});
  expectFileManager("readInternalFile", {"Read internal file:", "Read page success"});
  expectFileManager("readResourceFile", {"Read resource file:", "Read there success"});
  expectFileManager("getInternalFilePath", {"Get internal file path, "});
  expectFileManager("textExistInFile", {"Text exist in file, ", "Exist", "Not exist"});
  expectFileManager("getFileMD5", {"Get file MD5, ", "MD5:"});
  expectFileManager("fileExistAtPath", {"File exist at path:"});
  expectFileManager("valueForKey", {"Get value for key:", "No value for key:", "Got value:"});
  expectFileManager("saveValue", {"Save value:", "Remove value for key:"});
  expectFileManager("getUUID", {"UUID:"});
  fileManager().deleteInternalFileWithout("");
  expectFileManager("deleteInternalFileWithout",
                    {"Delete internal file without:", "Delete file:", "Delete internal file done"});
}

TEST_F(LineOwner, OfRequestsAndDownloads) {
  engine().startPopup("https://service.example", "1001", "secret");
  engine().downloadRemotePopupFile(listOf({pageFile("a")}));
  memory().urlSession.answer("get_info", 200, "x");
  ZOVKPopupModel page = pageFile("a");
  page.uri = "https://files.example/a";
  engine().downloadRemotePopupFile(listOf({page}));
  memory().urlSession.answer("files.example", 200, "x");
  settle();
  expectNetwork("startRequest", {"Start request, ", "sigSource:", "Request url:"});
  expectNetwork("startDownload", {"Start download, ", "Url illegal", "Download from url:"});
  ZOVKPopupCommonTool::jsonStringToDictionary(std::nullopt);
  expectOwner("ZOVKPopupCommonTool", "jsonStringToDictionary", {"jsonString nil to dictionary"});
}

class ControllerLineOwner : public ControllerFixture {
 protected:
  void expectController(const std::string& operation,
                        const std::vector<std::string>& messageStarts) {
    for (const std::string& start : messageStarts) {
      EXPECT_THAT(ownersOf(log(), start),
                  ElementsAre("ZOVKPopupViewController ZOVKPopupViewController::" + operation))
          << start;
    }
  }
};

TEST_F(ControllerLineOwner, OfAPagesLife) {
  show({webPage("a"), webPage("b")});
  controller().didStartProvisionalNavigation(*page());
  controller().didFailProvisionalNavigation(*page(), "first");
  controller().didFailNavigation(*page(), "second");
  controller().didFinishNavigation(*page());
  page()->navigate("https://elsewhere.example");
  choose("cancel");
  expectController("setLoginState", {"Set state ID1:"});
  expectController("showPopup", {"Popup count:", "Start show a"});
  expectController("finishShow", {"Finish show a"});
  expectController("handleCallbackMessage", {"the user operation is: "});
  expectController("didStartProvisionalNavigation", {"Did start provisional navigation"});
  expectController("didFailProvisionalNavigation", {"Did fail provisional navigation, "});
  expectController("didFailNavigation", {"Did fail navigation, "});
  expectController("didFinishNavigation", {"Did finish navigation"});
  expectController("decidePolicyForNavigationAction", {"Decide policy for navigation action, "});
}

TEST_F(ControllerLineOwner, OfACommitAndItsReport) {
  ZOVKPopupModel reported = webPage("a");
  reported.report_url = "https://report.example/a";
  show({reported, webPage("b")});
  choose("commit");
  memory().urlSession.answer("report.example", 200, "{}");
  settle();
  choose("commit");
  controller().handleWebViewJsMessage(1, boost::json::value("text"));
  expectController("startReportData",
                   {"Report user data result:", "Report user data request success"});
  expectController("handleCallbackMessage", {"The currentModel report_url is illegal: "});
  expectController("handleWebViewJsMessage", {"Handle webview js message, "});
}

TEST_F(ControllerLineOwner, OfAConditionalPage) {
  for (const char* body : {R"({"need_popup":0})", R"({"need_popup":1})"}) {
    show({conditional("asked")});
    memory().urlSession.answer("check.example", 200, body);
    settle();
  }
  expectController("queryConditionPopup",
                   {"Query condition Popup",
                    "Query condition Popup result:", "Query condition Popup request success",
                    "No need to show condition Popup", "Need to show condition Popup"});
}

TEST_F(ControllerLineOwner, OfATurnOfTheScreen) {
  show({webPage("a")});
  window()->resize({1920, 1080});
  settle();
  expectController("viewWillTransitionToSize",
                   {"viewWillTransitionToSize called", "did remove the viewToRemove"});
}

}  // namespace
}  // namespace zovk
