#pragma once

namespace zovk {

/// What the engine calls itself towards the popup service.
inline constexpr const char* kPopupVersion = "1.0.0";

}  // namespace zovk
