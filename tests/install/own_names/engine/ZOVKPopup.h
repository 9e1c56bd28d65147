#pragma once

namespace game {
inline constexpr bool kOwnEngine = true;
}
