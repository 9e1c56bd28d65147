#pragma once

#include <memory>

#include "capi/WebWindowEvents.h"
#include "zovkpopup/Host.h"
#include "zovkpopup/WebWindow.h"

/// The object behind a window's handle.
struct zovkpopup_web_window {
  std::shared_ptr<zovk::WebWindowEvents> events;
  std::unique_ptr<zovk::ZOVKPopupWebWindow> window;  ///< Destroyed first; never null.
};
