#pragma once

namespace game {
inline constexpr bool kOwnHost = true;
}
