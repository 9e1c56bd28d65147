// Opens a web window and calls its page over the bridge once the page has called the game.
//   game PAGE_FILE DATA_DIRECTORY
#include <iostream>
#include <optional>

#include <boost/json/serialize.hpp>
#include <poll.h>
#include <zovkpopup/Bridge.h>
#include <zovkpopup/Host.h>
#include <zovkpopup/WebWindow.h>

using Bridge = zovk::ZOVKPopupWKWebViewJavascriptBridge;
using Value = std::optional<boost::json::value>;

int main(int count, char** arguments) {
  if (count != 3) return 2;
  zovk::ZOVKPopupHostSettings host;
  host.applicationId = "com.example.installed";
  host.dataDirectory = arguments[2];
  if (!zovk::ZOVKPopupHost::setUp(host)) return 1;
  zovk::ZOVKPopupWebWindowSettings page;
  page.pageFile = arguments[1];
  const auto window = zovk::ZOVKPopupWebWindow::open(page);
  if (!window) return 1;

  bool answered = false;
  Bridge& bridge = window->bridge();
  bridge.registerHandler("ready", [&](const Value&, const Bridge::ResponseCallback&) {
    bridge.callHandler("double", 21, [&](const Value& data) {
      std::cout << "answer " << boost::json::serialize(*data) << "\n";
      answered = true;
    });
  });
  while (!answered) {
    pollfd wake{zovk::ZOVKPopupHost::pollDescriptor(), POLLIN, 0};
    poll(&wake, 1, -1);
    zovk::ZOVKPopupHost::pump();
  }
  zovk::ZOVKPopupHost::shutDown();
  return 0;
}
