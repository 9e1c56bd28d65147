#pragma once

#include <webkit/webkit.h>

namespace zovk::helper {

/// Turns down what a page could put in front of the user: dialogs, choosers, menus, prints,
/// questions for passwords. Permissions the engine itself denies when nobody is asked.
void guardPage(WebKitWebView* view, bool developerTools);

}  // namespace zovk::helper
