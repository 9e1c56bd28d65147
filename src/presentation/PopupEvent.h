#pragma once

#include <string>

#include "record/ZOVKPopupModel.h"
#include "zovkpopup/Hooks.h"

namespace zovk {

/// Makes an event of a popup.
inline ZOVKPopupEvent eventOf(const ZOVKPopupModel& popup, ZOVKPopupEvent::Kind kind) {
  ZOVKPopupEvent event;
  event.kind = kind;
  event.scene = popup.scene;
  event.pop_id = popup.pop_id;
  return event;
}

/// Makes the event of a request without a popup.
inline ZOVKPopupEvent nothingShown(const std::string& scene, const std::string& reason,
                                   const std::string& sentence) {
  ZOVKPopupEvent event;
  event.scene = scene;
  event.reason = reason;
  event.sentence = sentence;
  return event;
}

/// Makes the event of a popup that is not shown, or not until an answer.
inline ZOVKPopupEvent notShown(const ZOVKPopupModel& popup, const std::string& reason,
                               const std::string& sentence) {
  ZOVKPopupEvent event = nothingShown(popup.scene, reason, sentence);
  event.pop_id = popup.pop_id;
  return event;
}

/// Makes the event of a popup whose request ended before its turn.
inline ZOVKPopupEvent requestEnded(const ZOVKPopupModel& popup) {
  return notShown(popup, "request_ended", "Its request ended with another popup before its turn.");
}

}  // namespace zovk
