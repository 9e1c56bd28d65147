#pragma once

#include "logging/ZPLogger.h"

namespace zovk {

/// The debug lines of one operation of the file manager.
constexpr DebugLog fileManagerLog(const char* function) {
  return {"ZOVKPopupFileManager", function};
}

}  // namespace zovk
