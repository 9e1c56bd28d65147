#pragma once

#include <cstdint>
#include <string>

namespace zovk {

/// The player's login state. An empty text means that there is none.
struct ZOVKPopupLoginStateModel {
  std::int32_t channelID = 1;  ///< Compared with a popup's `valid_platform`.
  std::string openID;
  std::string token;
  std::string jwtToken;
};

}  // namespace zovk
