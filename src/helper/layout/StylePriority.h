#pragma once

#include <gtk/gtk.h>

namespace zovk::helper {

/// The priorities of styles, from weak to strong. The colours that the engine sets come last: even
/// a restyled page area darkens while a page loads. The least one is for what is needed without any
/// style sheet of a bundle, as in a web window.
inline constexpr guint kLeastStylePriority = GTK_STYLE_PROVIDER_PRIORITY_APPLICATION - 1;
inline constexpr guint kOwnStylePriority = GTK_STYLE_PROVIDER_PRIORITY_APPLICATION;
inline constexpr guint kStudioStylePriority = kOwnStylePriority + 1;
inline constexpr guint kEngineStylePriority = kOwnStylePriority + 2;

}  // namespace zovk::helper
