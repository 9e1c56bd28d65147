#pragma once

#include <glib.h>

#include "helper/GObjectPtr.h"

namespace zovk::helper {

/// Puts the messages of the web engine's processes before the display's events and the toolkit's
/// layout and painting, for the moment in which a page loads. Otherwise each of a load's steps
/// would wait until the popup's window is built, mapped and painted. Afterwards the player's events
/// come first again, whatever a page sends.
class LoadHaste {
 public:
  LoadHaste() = default;
  ~LoadHaste();
  LoadHaste(const LoadHaste&) = delete;
  LoadHaste& operator=(const LoadHaste&) = delete;

  /// Begins, or begins anew. It ends by itself.
  void begin();

 private:
  static gboolean onOver(gpointer self);

  SourceGuard over_;  // while in haste
};

}  // namespace zovk::helper
