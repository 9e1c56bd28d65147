#pragma once

namespace game {
inline constexpr bool kOwnWindow = true;
}
