#pragma once

#include <webkit/webkit.h>

namespace zovk {

/// Turns down what a page could put in front of the user or take from the system: dialogs, file
/// choosers, menus, prints, passwords, permissions.
void guardPage(WebKitWebView* view, bool developerTools);

}  // namespace zovk
