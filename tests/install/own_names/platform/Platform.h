#pragma once

namespace game {
inline constexpr bool kOwnPlatform = true;
}
