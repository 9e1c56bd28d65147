#include "service/console/ConsoleRequest.h"

#include <charconv>
#include <utility>

#include "service/Folder.h"
#include "service/console/ConsoleError.h"
#include "service/console/EntryFields.h"
#include "service/console/LiveDocument.h"

namespace zovk::service {

boost::json::object bodyOf(const std::string& text) {
  if (text.empty()) return {};
  try {
    return objectOf(text, "the request");
  } catch (const FolderError& error) {
    throw ConsoleError(400, error.what());
  }
}

std::string nameOf(const boost::json::object& body) {
  std::string who = textIn(body, "who");
  if (who.empty()) return "somebody";
  if (who.size() > kLongestName) throw ConsoleError(400, "a name may have 64 bytes");
  return who;
}

boost::json::object entryIn(const boost::json::object& body) {
  const auto* const entry = body.if_contains("entry");
  if (entry == nullptr || !entry->is_object()) throw ConsoleError(400, "\"entry\" is no object");
  return entry->get_object();
}

std::optional<std::string> pageIn(const boost::json::object& body) {
  const auto* const page = body.if_contains("page_text");
  if (page == nullptr || !page->is_string()) return std::nullopt;
  return std::string(page->get_string());
}

std::vector<std::int64_t> idsIn(const boost::json::object& body) {
  const auto* const ids = body.if_contains("ids");
  if (ids == nullptr || !ids->is_array()) throw ConsoleError(400, "\"ids\" is no array");
  if (ids->get_array().size() > LiveFolder::kMostPopups) throw ConsoleError(413, "too many popups");
  std::vector<std::int64_t> result;
  for (const auto& id : ids->get_array()) {
    if (!id.is_int64()) throw ConsoleError(400, "\"ids\" are numbers");
    result.push_back(id.get_int64());
  }
  return result;
}

std::int64_t numberOf(const std::string& text) {
  std::int64_t number = 0;
  const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
  return read.ec == std::errc() && read.ptr == text.data() + text.size() ? number : 0;
}

AnswerFilter filterOf(const httplib::Request& request) {
  return {numberOf(request.get_param_value("popup")), numberOf(request.get_param_value("from")),
          numberOf(request.get_param_value("until")), request.get_param_value("text"),
          request.get_param_value("zone") == "utc"};
}

Answer done(boost::json::object members) {
  members["code"] = 0;
  return jsonAnswer(members);
}

}  // namespace zovk::service
