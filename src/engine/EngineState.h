#pragma once

#include <memory>
#include <string>

#include "record/ZOVKPopupModel.h"

namespace zovk {

/// The popups of the documents, and their merged list. A list never changes; it is replaced as a
/// whole.
struct PopupLists {
  PopupListPointer remote = std::make_shared<const PopupList>();
  PopupListPointer local = std::make_shared<const PopupList>();
  PopupListPointer merged = std::make_shared<const PopupList>();
};

/// The arguments with which the game started the popups.
struct StartedGame {
  bool isStarted = false;
  std::string popUrl;
  std::string gameID;
  std::string gameKey;
};

/// The times of the request for the document, in seconds: its start and its length by the device's
/// uptime, and the service's clock since 1970.
struct ServiceTimes {
  double startTime = 0;
  double requestTime = 0;
  double serverTime = 0;
};

}  // namespace zovk
