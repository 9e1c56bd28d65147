#pragma once

#include <optional>
#include <string_view>

#include <gtk/gtk.h>
#include <webkit/webkit.h>

#include "helper/pad/PadQueue.h"
#include "helper/pad/PadSteps.h"

namespace zovk::helper {

/// Returns the direction of that name, or nothing for another name.
std::optional<PadDirection> padDirection(std::string_view name);

// In each of these, `page` may be null. `done` is called once: at once, or when the page has
// answered.

/// Moves the focus among the links and fields of the page and the buttons of the window.
void movePad(GtkWindow* window, WebKitWebView* page, PadDirection direction,
             const PadQueue::Done& done);
/// Presses the element that has the focus.
void pressPad(GtkWindow* window, WebKitWebView* page, const PadQueue::Done& done);
/// Does what the escape key does.
void leavePad(GtkWindow* window, WebKitWebView* page, const PadQueue::Done& done);

}  // namespace zovk::helper
