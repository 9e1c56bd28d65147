#pragma once

#include <webkit/webkit.h>

namespace zovk::helper {

/// The type of the web views here: those of the engine, which also know when they were painted.
/// Where GL draws, a page's pictures come late, from a process that does not say when.
GType pageViewType();

/// Whether the view has a page, and was not painted with any yet.
bool waitsForPicture(WebKitWebView* view);
/// Whether the view shows what a page that answered at that time (of the monotonic clock) had drawn
/// until then, as far as can be told: its pictures have come to rest, or never do.
bool showsAnswer(WebKitWebView* view, gint64 answered);

}  // namespace zovk::helper
