#include "record/PlayerRequest.h"

#include "storage/ZOVKPopupFileManager.h"
#include "support/Version.h"

namespace zovk {

ZOVKPopupUrlParams serviceRequest(const std::string& gameID, const std::string& gameKey) {
  constexpr std::int32_t kThisPlatform = 2;
  ZOVKPopupUrlParams params;
  params.gameID = gameID;
  params.gameKey = gameKey;
  params.os = kThisPlatform;
  params.version = kPopupVersion;
  auto* const files = ZOVKPopupFileManager::sharedInstance();
  if (files != nullptr) params.installID = files->getUUID().value_or("");
  return params;
}

ZOVKPopupUrlParams playerRequest(const std::string& url, const PlayerIdentity& player,
                                 const ZOVKPopupModel& popup) {
  ZOVKPopupUrlParams params = serviceRequest(player.gameID, player.gameKey);
  params.urlStr = url;
  const ZOVKPopupLoginStateModel loginState = player.loginState->get();
  params.postInfo = boost::json::object{{"channel_id", loginState.channelID},
                                        {"gopenid", loginState.openID},
                                        {"token", loginState.token},
                                        {"jwt_token", loginState.jwtToken},
                                        {"pop_id", popup.pop_id},
                                        {"scene", popup.scene}};
  return params;
}

}  // namespace zovk
