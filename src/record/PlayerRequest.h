#pragma once

#include <memory>
#include <string>

#include "network/ZOVKPopupUrlParams.h"
#include "record/LoginStateRecord.h"
#include "record/ZOVKPopupModel.h"

namespace zovk {

/// Who asks: the game and its player, whose login state is read when a request is made. There is
/// always one, if only of nobody.
struct PlayerIdentity {
  std::string gameID;
  std::string gameKey;
  std::shared_ptr<const LoginStateRecord> loginState = std::make_shared<LoginStateRecord>();
};

/// The parameters that every request to the popup service carries; no address and no body yet.
ZOVKPopupUrlParams serviceRequest(const std::string& gameID, const std::string& gameKey);

/// A request to `url` about one popup, with the player and the popup in its body.
ZOVKPopupUrlParams playerRequest(const std::string& url, const PlayerIdentity& player,
                                 const ZOVKPopupModel& popup);

}  // namespace zovk
