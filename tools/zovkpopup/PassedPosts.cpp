#include "zovkpopup/PassedPosts.h"

#include <array>

#include <boost/json/serialize.hpp>
#include <fmt/format.h>

#include "bridge/ZOVKPopupWebviewMessageHandler.h"
#include "support/ActionNames.h"
#include "support/Utf8.h"
#include "text/LowerCase.h"
#include "text/ZOVKPopupCommonTool.h"
#include "zovkpopup/Spelling.h"

namespace zovk::tool {
namespace {

using Handler = ZOVKPopupWebviewMessageHandler;

constexpr const char* kForm = "JSON.stringify({action: 'skip', msg: 'later'})";

// The library's own handler decides; the words below only say why.
bool isAnswer(const std::string& handler, const boost::json::value& body) {
  bool heard = false;
  Handler own;
  own.setCallback([&heard](std::int32_t, const boost::json::value&) { heard = true; });
  own.didReceiveScriptMessage(handler, body);
  return heard;
}

std::string shown(const boost::json::value& value) {
  constexpr std::size_t kLongest = 80;
  std::string text = boost::json::serialize(value);
  if (text.size() > kLongest) text = repairedUtf8(text.substr(0, kLongest)) + "…";
  return text;
}

std::string whyNoAction(const boost::json::object& message,
                        const std::vector<std::string_view>& words) {
  const std::string all = fmt::format("{}, {} or {}", words[0], words[1], words[2]);
  const auto* const action = message.if_contains("action");
  if (action == nullptr) return "has no \"action\"; it is one of " + all;
  const std::string found = "has the \"action\" " + shown(*action);
  if (!action->is_string()) return found + "; it is a text, one of " + all;
  const auto near = nearestWord(lowerCase(std::string(action->get_string())), words);
  if (near.empty()) return found + "; it is one of " + all;
  return fmt::format("{}; write \"{}\", which counts as it is written", found, near);
}

std::string whyNoPopupAnswer(const boost::json::value& body) {
  if (body.is_object()) return fmt::format("is an object where a text is needed: {}", kForm);
  if (!body.is_string()) return fmt::format("is no text; post {}", kForm);
  const auto parsed = ZOVKPopupCommonTool::jsonStringToDictionary(std::string(body.get_string()));
  if (!parsed) return fmt::format("is a text that is no JSON; post {}", kForm);
  if (!parsed->is_object()) return fmt::format("is JSON, but no object; post {}", kForm);
  return whyNoAction(parsed->get_object(), {actions::kSkip, actions::kCommit, actions::kCancel});
}

std::string whyNoOpenSdkAnswer(const boost::json::value& body) {
  if (!body.is_object()) return "is no object, which this handler needs: {action: 'confirm'}";
  return whyNoAction(body.get_object(), {actions::kConfirm, actions::kReject, actions::kCancel});
}

// Returns what an answer loses on its way to the game.
std::string lossOf(const std::string& handler, const boost::json::value& body) {
  auto message = body;
  if (handler == Handler::kPopupChannel) {
    message = *ZOVKPopupCommonTool::jsonStringToDictionary(std::string(body.get_string()));
  }
  const auto* const text = message.get_object().if_contains("msg");
  if (text == nullptr) return "";
  if (!text->is_string()) return "has a \"msg\" that is no text, and arrives as an empty one";
  if (text->get_string().find_first_of(" \t\r\n") == boost::json::string::npos) return "";
  return "has blanks in \"msg\", which are lost on the way";
}

}  // namespace

std::string remarkOn(const std::string& handler, const std::optional<boost::json::value>& body) {
  const std::string post = "the post to " + handler + " ";
  if (!body) return fmt::format("{}was passed over: it holds nothing; post {}", post, kForm);
  if (isAnswer(handler, *body)) {
    const std::string loss = lossOf(handler, *body);
    return loss.empty() ? "" : post + loss;
  }
  const bool isPopup = handler == Handler::kPopupChannel;
  return fmt::format("{}was passed over: {} {}", post, shown(*body),
                     isPopup ? whyNoPopupAnswer(*body) : whyNoOpenSdkAnswer(*body));
}

}  // namespace zovk::tool
