#include "zovkpopup/PageConsole.h"

#include "bridge/ZOVKPopupWebviewMessageHandler.h"

namespace zovk::tool {
namespace {

constexpr std::string_view kMark = "CONSOLE ";

std::string_view takeWord(std::string_view& text) {
  const std::size_t end = std::min(text.find(' '), text.size());
  const std::string_view word = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  return word;
}

std::string levelOf(std::string_view source, std::string_view level) {
  if (source == "CONTENTBLOCKER" || source == "SECURITY") return "blocked";
  if (level == "WARN") return "warning";
  if (level == "ERROR") return "error";
  if (level == "INFO") return "info";
  return level == "DEBUG" ? "debug" : "log";
}

bool isLevel(std::string_view word) {
  return word == "LOG" || word == "INFO" || word == "DEBUG" || word == "WARN" || word == "ERROR";
}

void replaceAll(std::string& text, const std::string& what, const std::string& by) {
  if (what.empty()) return;
  for (std::size_t at = text.find(what); at != std::string::npos;
       at = text.find(what, at + by.size())) {
    text.replace(at, what.size(), by);
  }
}

std::string hintForBlocked(std::string_view text) {
  if (!text.starts_with("Content blocker")) return "";
  return "\n  A page file loads no other file: put styles, scripts and pictures into the page.";
}

// Finds "window.webkit.messageHandlers.NAME.postMessage" with a name that no handler has.
std::string hintFor(std::string_view text) {
  constexpr std::string_view kHandlers = "messageHandlers.";
  const std::size_t at = text.find(kHandlers);
  if (at == std::string_view::npos) return "";
  std::string_view rest = text.substr(at + kHandlers.size());
  const std::string_view name = rest.substr(0, rest.find_first_of(".[( ')"));
  const bool isHandler = name == ZOVKPopupWebviewMessageHandler::kPopupChannel ||
                         name == ZOVKPopupWebviewMessageHandler::kOpenSdkChannel;
  if (name.empty() || isHandler) return "";
  return "\n  There is no handler " + std::string(name) + "; the game listens to " +
         ZOVKPopupWebviewMessageHandler::kPopupChannel + ".";
}

}  // namespace

std::string ConsoleMessage::line() const {
  const std::string head = place.empty() ? level : place + ": " + level;
  return head + ": " + text + (level == "blocked" ? hintForBlocked(text) : hintFor(text));
}

std::optional<ConsoleMessage> PageConsole::read(std::string_view line) const {
  std::size_t mark = 0;
  if (!line.starts_with(kMark)) {
    mark = line.find(": CONSOLE ");
    if (mark == std::string_view::npos) return std::nullopt;
    mark += 2;
  }
  std::string_view rest = line.substr(mark + kMark.size());
  std::string_view source = takeWord(rest);
  const std::string_view level = isLevel(source) ? source : takeWord(rest);
  if (!isLevel(level)) return std::nullopt;
  ConsoleMessage message;
  message.level = levelOf(source, level);
  message.place = mark < 2 ? "" : shortened(line.substr(0, mark - 2));
  message.text = shortened(rest);
  return message;
}

std::string PageConsole::shortened(std::string_view text) const {
  std::string result(text);
  replaceAll(result, address_, name_);
  const std::size_t folder = address_.rfind('/');
  if (address_.starts_with("file:") && folder != std::string::npos) {
    replaceAll(result, address_.substr(0, folder + 1), "");
  }
  return result;
}

}  // namespace zovk::tool
