#include "engine/Explanation.h"

#include <fmt/chrono.h>
#include <fmt/format.h>

namespace zovk {
namespace {

struct Words {
  const char* verdict;
  std::string wanted;
  std::string found;
  std::string sentence;
};

std::string momentText(double seconds) {
  constexpr double kYear9999 = 253'402'300'799;
  if (!(seconds >= 0 && seconds <= kYear9999)) return fmt::format("{}", seconds);
  return fmt::format("{} ({:%Y-%m-%d %H:%M:%S} UTC)", seconds,
                     fmt::gmtime(static_cast<std::time_t>(seconds)));
}

Words passedWords(const ZOVKPopupModel& popup) {
  if (popup.pop_freq != kPopFreqConditional) return {"passed", "", "", "It passes every rule."};
  return {"passed", "", "",
          fmt::format("It passes every rule, but is conditional: the service at \"{}\" is asked "
                      "before it is shown, and may say no.",
                      popup.check_url)};
}

Words otherSceneWords(const std::string& its, const std::string& wanted) {
  return {"other_scene", its, wanted,
          fmt::format("It belongs to the scene \"{}\"; asked for is \"{}\".", its, wanted)};
}

// Only the low 32 bits are compared.
Words otherSceneTypeWords(const ZOVKPopupModel& popup, std::uint64_t wanted) {
  const auto its = std::to_string(static_cast<std::uint32_t>(popup.scene_type));
  const auto asked = std::to_string(static_cast<std::uint32_t>(wanted));
  return {"other_scene_type", its, asked,
          fmt::format("Its scene type is {}; asked for is {}.", its, asked)};
}

Words otherChannelWords(const ZOVKPopupModel& popup, const SelectionContext& context) {
  const std::string channel = std::to_string(context.loginState.channelID);
  return {"other_channel", popup.valid_platform, channel,
          fmt::format("It is for the login channels \"{}\"; the player's channel is {}.",
                      popup.valid_platform, channel)};
}

Words timeWords(const char* verdict, const char* sentence, double bound, double now) {
  return {verdict, fmt::format("{}", bound), fmt::format("{}", now),
          fmt::format(fmt::runtime(sentence), momentText(bound), momentText(now))};
}

Words missingWords(const ZOVKPopupModel& popup) {
  const std::string path = popup.getPopupFilePath();
  if (path.empty()) return {"file_missing", "", "", "Its page file has no place to be in."};
  return {"file_missing", path, "", fmt::format("There is no page file at {}.", path)};
}

Words alreadyShownWords(const ZOVKPopupModel& popup) {
  return {"already_shown", "", popup.sig,
          fmt::format("It was shown before: {} holds its key {}.", kOnceRecordFile, popup.sig)};
}

Words digestWords(const ZOVKPopupModel& popup, const std::string& digest) {
  const bool isFile = popup.isPageFile();
  const std::string unknown = isFile ? "unknown, as it cannot be read" : "unknown, as it has none";
  return {"digest_differs", popup.sig, digest,
          fmt::format("Its sig is {}, but the MD5 of {} is {}.",
                      popup.sig.empty() ? "missing" : "\"" + popup.sig + "\"",
                      isFile ? "its page file" : "its address",
                      digest.empty() ? unknown : "\"" + digest + "\"")};
}

Words wordsFor(const ZOVKPopupModel& popup, const Judgement& judgement,
               const SelectionRequest& request, const SelectionContext& context) {
  switch (judgement.verdict) {
    case Verdict::kPassed:
      return passedWords(popup);
    case Verdict::kOtherScene:
      return otherSceneWords(popup.scene, request.scene);
    case Verdict::kOtherSceneType:
      return otherSceneTypeWords(popup, request.sceneType);
    case Verdict::kOtherChannel:
      return otherChannelWords(popup, context);
    case Verdict::kNotYetValid:
      return timeWords("not_yet_valid", "It is valid from {} on; now it is {}.", popup.valid_time,
                       context.now);
    case Verdict::kExpired:
      return timeWords("expired", "It expired at {}; now it is {}.", popup.expire_time,
                       context.now);
    case Verdict::kFileMissing:
      return missingWords(popup);
    case Verdict::kAlreadyShown:
      return alreadyShownWords(popup);
    case Verdict::kDigestDiffers:
      return digestWords(popup, judgement.digest);
  }
  return {};
}

ZOVKPopupExplainedPopup inWords(const ZOVKPopupModel& popup, Words words) {
  return {popup.scene,
          popup.pop_id,
          popup.isPageFile() ? popup.getPopupFileName() : popup.uri,
          words.verdict,
          std::move(words.wanted),
          std::move(words.found),
          std::move(words.sentence),
          0};
}

}  // namespace

ZOVKPopupExplainedPopup explained(const ZOVKPopupModel& popup, const Judgement& judgement,
                                  const SelectionRequest& request,
                                  const SelectionContext& context) {
  return inWords(popup, wordsFor(popup, judgement, request, context));
}

ZOVKPopupExplainedPopup explainedUnreached(const ZOVKPopupModel& popup,
                                           const ZOVKPopupModel& standing) {
  return inWords(popup, {"not_reached", "", "",
                         fmt::format("It is not looked at: the popup {} before it stands for the "
                                     "scene \"{}\".",
                                     standing.pop_id, standing.scene)});
}

std::string requestText(const SelectionRequest& request) {
  if (!request.scene.empty()) return fmt::format("scene \"{}\"", request.scene);
  return fmt::format("scene type {}", request.sceneType);
}

}  // namespace zovk
