#pragma once

#include <memory>
#include <string>

#include "record/ZOVKPopupModel.h"

namespace zovk {

/// The popups that the documents gave, and what they make together. A list never changes; it is
/// exchanged as a whole.
struct PopupLists {
  PopupListPointer remote = std::make_shared<const PopupList>();
  PopupListPointer local = std::make_shared<const PopupList>();
  PopupListPointer merged = std::make_shared<const PopupList>();
};

/// The game as it started the popups.
struct StartedGame {
  bool isStarted = false;
  std::string popUrl;
  std::string gameID;
  std::string gameKey;
};

/// The times of the request for the document, in seconds: when it began and how long it took, by
/// the device's uptime; and the service's own clock, since 1970.
struct ServiceTimes {
  double startTime = 0;
  double requestTime = 0;
  double serverTime = 0;
};

}  // namespace zovk
