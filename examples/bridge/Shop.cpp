#include "Shop.h"

#include <array>
#include <cstdio>
#include <utility>

#include <boost/json/array.hpp>
#include <boost/json/serialize.hpp>

namespace harbour {
namespace {

std::string cssColour(unsigned colour) {
  std::array<char, 8> text{};
  std::snprintf(text.data(), text.size(), "#%06x", colour & 0xFFFFFFU);
  return text.data();
}

boost::json::array stockFor(const Purse& purse) {
  boost::json::array list;
  for (const Lantern& lantern : kStock) {
    list.push_back({{"id", lantern.id},
                    {"name", lantern.name},
                    {"about", lantern.about},
                    {"price", lantern.price},
                    {"colour", cssColour(lantern.colour)},
                    {"owned", purse.owns(lantern)}});
  }
  return list;
}

/// Returns null if the page orders something that does not exist. A page may send anything.
const Lantern* lanternOf(const std::optional<boost::json::value>& order) {
  const auto* const id = order ? order->if_string() : nullptr;
  return id == nullptr ? nullptr : lanternNamed({id->data(), id->size()});
}

}  // namespace

Shop::Shop(std::string pageFile, std::string player, Purse& purse, Listener listener)
    : pageFile_(std::move(pageFile)),
      player_(std::move(player)),
      purse_(purse),
      listener_(std::move(listener)) {}

void Shop::open() {
  if (window_) return;
  zovk::ZOVKPopupWebWindowSettings settings;
  settings.pageFile = pageFile_;
  settings.opaque = false;  // the harbour is seen around the shop
  settings.failed = [this](const std::string& reason) { close("the shop is gone: " + reason); };
  window_ = zovk::ZOVKPopupWebWindow::open(settings);
  if (!window_) return listener_("the shop cannot be opened");
  answerPage();
  listener_("the shop opens");
}

void Shop::answerPage() {
  auto& bridge = window_->bridge();
  bridge.registerHandler("player", [this](const Value&, const Respond& respond) {
    listener_("the page asks who plays");
    respond(boost::json::value(player_));
  });
  bridge.registerHandler("coins", [this](const Value&, const Respond& respond) {
    listener_("the page asks for the coins");
    respond(boost::json::value(purse_.coins()));
  });
  bridge.registerHandler(
      "stock", [this](const Value&, const Respond& respond) { respond(stockFor(purse_)); });
  bridge.registerHandler(
      "buy", [this](const Value& order, const Respond& respond) { respond(buy(order)); });
  bridge.registerHandler("close",
                         [this](const Value&, const Respond&) { close("the shop closes"); });
}

boost::json::object Shop::buy(const Value& order) {
  const Lantern* const lantern = lanternOf(order);
  const std::string reason = lantern ? purse_.buy(*lantern) : "There is no such lantern";
  if (!reason.empty()) {
    listener_("not sold: " + reason);
    return {{"bought", false}, {"reason", reason}};
  }
  listener_("sold " + std::string(lantern->id) + ", " + std::to_string(purse_.coins()) +
            " coins left");
  return {{"bought", true}};
}

void Shop::coinsChanged(int coins) {
  if (!window_) return;
  window_->bridge().callHandler(
      "coinsChanged", boost::json::value(coins), [this](const Value& shown) {
        listener_("the page shows " + boost::json::serialize(shown.value_or(nullptr)));
      });
}

void Shop::look(const std::string& script, std::function<void(const std::string&)> found) {
  if (!window_) return found({});
  window_->evaluate(script, [found = std::move(found)](const zovk::ScriptResult& result) {
    const auto* const text = result.value ? result.value->if_string() : nullptr;
    found(text == nullptr ? std::string() : std::string(*text));
  });
}

void Shop::close(const std::string& line) {
  window_.reset();
  listener_(line);
}

}  // namespace harbour
