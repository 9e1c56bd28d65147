#include "bridge/ZOVKPopupWebviewMessageHandler.h"

#include <utility>

#include "support/ActionNames.h"
#include "text/ZOVKPopupCommonTool.h"
#include "zovkpopup/Result.h"

namespace zovk {
namespace {

std::string_view actionOf(const boost::json::object& message) {
  const auto* action = message.if_contains("action");
  return action != nullptr && action->is_string() ? std::string_view(action->get_string())
                                                  : std::string_view();
}

std::optional<ZOVKPopupResult> popupCode(std::string_view action) {
  if (action == actions::kSkip) return ZOVKPopupResultSkip;
  if (action == actions::kCommit) return ZOVKPopupResultCommit;
  if (action == actions::kCancel) return ZOVKPopupResultCancel;
  return std::nullopt;
}

// All three words are a commit: on this channel the choice itself travels in the message.
std::optional<ZOVKPopupResult> openSdkCode(std::string_view action) {
  if (action == actions::kConfirm || action == actions::kReject || action == actions::kCancel) {
    return ZOVKPopupResultCommit;
  }
  return std::nullopt;
}

boost::json::value messageOf(const boost::json::object& body) {
  const auto* text = body.if_contains("msg");
  return text != nullptr ? *text : boost::json::value("");
}

/// A message may be a mebibyte long, and this is the game's thread.
boost::json::value takeMessage(boost::json::object& body) {
  auto* text = body.if_contains("msg");
  return text != nullptr ? std::move(*text) : boost::json::value("");
}

}  // namespace

void ZOVKPopupWebviewMessageHandler::didReceiveScriptMessage(
    const std::string& name, const std::optional<boost::json::value>& body) {
  if (!body) return;
  if (const auto* text = body->if_string()) {
    if (name != kPopupChannel) return;
    auto parsed = ZOVKPopupCommonTool::jsonStringToDictionary(std::string(*text));
    if (!parsed || !parsed->is_object()) return;
    const auto code = popupCode(actionOf(parsed->get_object()));
    if (code) deliver(*code, takeMessage(parsed->get_object()));
  } else if (body->is_object() && name == kOpenSdkChannel) {
    const auto code = openSdkCode(actionOf(body->get_object()));
    if (code) deliver(*code, messageOf(body->get_object()));
  }
}

void ZOVKPopupWebviewMessageHandler::deliver(std::int32_t code,
                                             const boost::json::value& message) const {
  if (!callback_) return;
  const Callback callback = callback_;  // the call may replace or drop the handler's own
  callback(code, message);
}

}  // namespace zovk
