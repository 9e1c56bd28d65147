#pragma once

#include <atomic>
#include <utility>

#include "zovkpopup/BridgeBase.h"

/// The object behind a response's handle.
struct zovkpopup_response {
  explicit zovkpopup_response(
      zovk::ZOVKPopupWebViewJavascriptBridgeBase::ResponseCallback givenRespond)
      : respond(std::move(givenRespond)) {}

  const zovk::ZOVKPopupWebViewJavascriptBridgeBase::ResponseCallback respond;
  std::atomic<bool> isSent{false};
};
