#pragma once

#include <functional>
#include <string>

#include <webkit/webkit.h>

namespace zovk::helper {

/// Runs `next` once the page's present picture is on its way to the window, or after a while if the
/// page does not paint.
void whenPagePainted(WebKitWebView* view, std::function<void()> next);

/// Writes a picture of a shown window to a PNG file. Returns whether that succeeded.
bool writeSnapshot(GtkWidget* window, const std::string& path);

}  // namespace zovk::helper
