#include <zovkpopup/Bridge.h>
#include <zovkpopup/Explain.h>
#include <zovkpopup/Host.h>
#include <zovkpopup/WebWindow.h>
#include <zovkpopup/ZOVKPopup.h>
#include <zovkpopup/platform/HostedPlatform.h>

#include "bridge/BridgeBase.h"
#include "engine/ZOVKPopup.h"
#include "host/Host.h"
#include "platform/Platform.h"
#include "platform/Window.h"
#include "support/Export.h"

// The game's own headers were read, and the library's, too.
static_assert(game::kOwnBridge && game::kOwnEngine && game::kOwnHost && game::kOwnPlatform &&
              game::kOwnWindow && game::kOwnExport);

int main() {
  return zovk::ZOVKPopup::havePopup(1) ? 1 : 0;
}
