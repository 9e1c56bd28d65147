#pragma once

#include <string>

namespace zovk {

/// Returns the page's half of the bridge, a script that can be run in a page any number of times.
/// Any thread. Its source is resources/ZOVKPopupWebViewJavascriptBridge.js.
std::string ZOVKPopupWebViewJavascriptBridge_js();

}  // namespace zovk
