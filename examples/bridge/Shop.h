#pragma once

#include <functional>
#include <memory>
#include <string>

#include <boost/json/object.hpp>
#include <zovkpopup/Bridge.h>
#include <zovkpopup/WebWindow.h>

#include "Purse.h"

namespace harbour {

/// The game's half of the shop. The other half is resources/shop.html. Main thread only.
class Shop {
 public:
  /// Receives each event as one line of text.
  using Listener = std::function<void(const std::string& line)>;

  Shop(std::string pageFile, std::string player, Purse& purse, Listener listener);

  /// Opens the shop, unless it is open.
  void open();
  /// Runs a script in the page and passes on its text; empty if the shop is closed or there is
  /// none.
  void look(const std::string& script, std::function<void(const std::string& text)> found);
  /// Tells the page that the coins have changed.
  void coinsChanged(int coins);

 private:
  using Value = std::optional<boost::json::value>;
  using Respond = zovk::ZOVKPopupWKWebViewJavascriptBridge::ResponseCallback;

  void answerPage();
  boost::json::object buy(const Value& order);
  void close(const std::string& line);

  const std::string pageFile_;
  const std::string player_;
  Purse& purse_;
  const Listener listener_;
  std::unique_ptr<zovk::ZOVKPopupWebWindow> window_;
};

}  // namespace harbour
