#pragma once

namespace game {
inline constexpr bool kOwnBridge = true;
}
