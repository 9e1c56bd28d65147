#pragma once

#include <webkit/webkit.h>

namespace zovk::helper {

/// Refuses everything that a page could put in front of the user: dialogs, choosers, menus, prints,
/// questions for passwords. The web engine itself denies permissions if nobody asks the user.
void guardPage(WebKitWebView* view, bool developerTools);

}  // namespace zovk::helper
