#pragma once

#include <webkit/webkit.h>

namespace zovk::helper {

/// The type of our web views: those of the web engine, which also know when they were painted.
/// Where GL draws, a page's pictures come late, from a process that does not say when.
GType pageViewType();

/// Call it when a page has come: from then on the view's pictures are of a page.
void expectPicture(WebKitWebView* view);
/// Shows what the page looks like until the engine has composed its picture. Call the first when a
/// page has come, and the second when it has loaded.
void showPosterEarly(WebKitWebView* view);
void showPoster(WebKitWebView* view);
bool showsPoster(WebKitWebView* view);
/// Returns whether the view has a page, but was not painted with any yet.
bool waitsForPicture(WebKitWebView* view);
/// Returns whether the view shows everything that the page had drawn when it answered, at that time
/// of the monotonic clock, as far as that can be known: its pictures have stopped changing, or
/// never do.
bool showsAnswer(WebKitWebView* view, gint64 answered);

}  // namespace zovk::helper
