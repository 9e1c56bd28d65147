#pragma once

namespace game {
inline constexpr bool kOwnExport = true;
}
