#pragma once

#include <functional>
#include <string>

#include <webkit/webkit.h>

namespace zovk::helper {

/// Runs `next` once what the page shows now is on its way to the window, or after a while when the
/// page does not paint.
void whenPagePainted(WebKitWebView* view, std::function<void()> next);

/// Writes what a shown window looks like as a PNG file. Whether it could.
bool writeSnapshot(GtkWidget* window, const std::string& path);

}  // namespace zovk::helper
