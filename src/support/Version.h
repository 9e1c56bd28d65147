#pragma once

namespace zovk {

/// The engine's version, as the popup service gets it.
inline constexpr const char* kPopupVersion = "1.0.0";

}  // namespace zovk
