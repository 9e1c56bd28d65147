#include "engine/Selection.h"

#include <algorithm>
#include <tuple>

#include "logging/ZPLogger.h"
#include "storage/ZOVKPopupFileManager.h"
#include "text/ZOVKPopupCommonTool.h"

namespace zovk {
namespace {

constexpr DebugLog kSceneTypeLog{"ZOVKPopupManager", "ZOVKPopupManager::getValidPopupForSceneType"};
constexpr DebugLog kSceneLog{"ZOVKPopupManager", "ZOVKPopupManager::getValidPopupForScene"};
constexpr const char* kDigestText = "MD5 different, config sig:%@, file MD5:%@";

// By substring on purpose: the service writes lists such as 1,2 and every channel in it counts.
bool isForChannel(const ZOVKPopupModel& popup, const std::string& channelText) {
  return popup.valid_platform.empty() ||
         popup.valid_platform.find(channelText) != std::string::npos;
}

Verdict judgeTime(const ZOVKPopupModel& popup, double now) {
  if (popup.valid_time != 0 && popup.valid_time > now) return Verdict::kNotYetValid;
  if (popup.expire_time != 0 && now >= popup.expire_time) return Verdict::kExpired;
  return Verdict::kPassed;
}

// The configured digest may be in lower or in upper case, but not in a mixture. An empty digest
// matches nothing, not even an address or a file without a digest.
bool digestMatches(const std::string& sig, const std::string& digest) {
  if (sig.empty()) return false;
  if (sig == digest) return true;
  return std::equal(sig.begin(), sig.end(), digest.begin(), digest.end(), [](char s, char d) {
    return s == (d >= 'a' && d <= 'f' ? static_cast<char>(d - 'a' + 'A') : d);
  });
}

Judgement judgePageFile(const ZOVKPopupModel& popup, SelectionContext& context) {
  kSceneTypeLog("Content type local");
  const std::string path = popup.getPopupFilePath();
  if (!context.files.fileExistAtPath(path, &context.glance)) {
    logError("File %@ not exist", popup.getPopupFileName());
    return {Verdict::kFileMissing, ""};
  }
  if (context.files.textExistInFile(popup.sig, context.files.getInternalFilePath(kOnceRecordFile),
                                    &context.glance)) {
    kSceneTypeLog("Had already Popuped");
    return {Verdict::kAlreadyShown, ""};
  }
  const std::string digest = context.files.getFileMD5(path, &context.glance);
  if (digestMatches(popup.sig, digest)) return {};
  logError(kDigestText, popup.sig, digest);
  return {Verdict::kDigestDiffers, digest};
}

Judgement judgeWebPage(const ZOVKPopupModel& popup, const DebugLog& debug) {
  debug("Content type remote");
  const std::string digest = ZOVKPopupCommonTool::getTextMD5(popup.uri);
  if (digestMatches(popup.sig, digest)) return {};
  logError(kDigestText, popup.sig, digest);
  return {Verdict::kDigestDiffers, digest};
}

Judgement judgeOneForSceneType(const ZOVKPopupModel& popup, std::uint64_t sceneType,
                               SelectionContext& context) {
  kSceneTypeLog(
      "Popup fileName:%@, sceneType:%d, contentType:%d, frequency:%d",
      [&] { return popup.getPopupFileName(); }, popup.scene_type, popup.content_type,
      popup.pop_freq);
  if (static_cast<std::uint32_t>(popup.scene_type) != static_cast<std::uint32_t>(sceneType)) {
    kSceneTypeLog("SceneType not same");
    return {Verdict::kOtherSceneType, ""};
  }
  const std::string channel = std::to_string(context.loginState.channelID);
  if (!isForChannel(popup, channel)) {
    kSceneTypeLog("Invalid for channel:%@", channel);
    return {Verdict::kOtherChannel, ""};
  }
  const Verdict time = judgeTime(popup, context.now);
  if (time == Verdict::kNotYetValid) logError("Popup is not valid");
  if (time == Verdict::kExpired) logError("Popup is expired");
  if (time != Verdict::kPassed) return {time, ""};
  return popup.isPageFile() ? judgePageFile(popup, context) : judgeWebPage(popup, kSceneTypeLog);
}

// Judges everything but the content.
Verdict judgeOneForScene(const ZOVKPopupModel& popup, const std::string& scene,
                         const SelectionContext& context) {
  if (popup.scene != scene) {
    kSceneLog("Scene not same");
    return Verdict::kOtherScene;
  }
  const std::string channel = std::to_string(context.loginState.channelID);
  if (!isForChannel(popup, channel)) {
    logError("Invalid for channel:%@", channel);
    return Verdict::kOtherChannel;
  }
  const Verdict time = judgeTime(popup, context.now);
  if (time == Verdict::kNotYetValid) logError("Popup is not valid");
  if (time == Verdict::kExpired) logError("Popup had expired");
  return time;
}

}  // namespace

void judgeForSceneType(const PopupList& popups, std::uint64_t sceneType, SelectionContext& context,
                       const JudgementSink& judged) {
  for (const PopupPointer& popup : popups) {
    judged(popup, judgeOneForSceneType(*popup, sceneType, context));
  }
}

void judgeForScene(const PopupList& popups, const std::string& scene, SelectionContext& context,
                   const JudgementSink& judged) {
  for (const PopupPointer& popup : popups) {
    const Verdict verdict = judgeOneForScene(*popup, scene, context);
    if (verdict == Verdict::kPassed) return judged(popup, judgeContentForScene(*popup, context));
    judged(popup, {verdict, ""});
  }
}

Judgement judgeContentForScene(const ZOVKPopupModel& popup, SelectionContext& context) {
  if (!popup.isPageFile()) return judgeWebPage(popup, kSceneLog);
  kSceneLog("Content type local");
  const std::string path = popup.getPopupFilePath();
  if (!context.files.fileExistAtPath(path, &context.glance)) {
    kSceneLog("File %@ not exist", popup.getPopupFileName());
    return {Verdict::kFileMissing, ""};
  }
  const std::string digest = context.files.getFileMD5(path, &context.glance);
  if (digestMatches(popup.sig, digest)) return {};
  kSceneLog(kDigestText, popup.sig, digest);
  return {Verdict::kDigestDiffers, digest};
}

bool ranksBefore(const ZOVKPopupModel& a, const ZOVKPopupModel& b) {
  return std::tie(a.priority, a.publish_time, a.scene) >
         std::tie(b.priority, b.publish_time, b.scene);
}

void rankPopups(PopupList& popups) {
  std::stable_sort(popups.begin(), popups.end(), [](const PopupPointer& a, const PopupPointer& b) {
    return ranksBefore(*a, *b);
  });
}

}  // namespace zovk
