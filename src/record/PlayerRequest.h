#pragma once

#include <memory>
#include <string>

#include "network/ZOVKPopupUrlParams.h"
#include "record/LoginStateRecord.h"
#include "record/ZOVKPopupModel.h"

namespace zovk {

/// The sender of a request: the game and its player. The player's login state is read when a
/// request is made. It always exists, even if it is empty.
struct PlayerIdentity {
  std::string gameID;
  std::string gameKey;
  std::shared_ptr<const LoginStateRecord> loginState = std::make_shared<LoginStateRecord>();
};

/// Returns the parameters that every request to the popup service carries; no address and no body
/// yet.
ZOVKPopupUrlParams serviceRequest(const std::string& gameID, const std::string& gameKey);

/// Returns a request to `url` about one popup, with the player and the popup in its body.
ZOVKPopupUrlParams playerRequest(const std::string& url, const PlayerIdentity& player,
                                 const ZOVKPopupModel& popup);

}  // namespace zovk
