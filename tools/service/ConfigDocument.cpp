#include "service/ConfigDocument.h"

#include <boost/json/array.hpp>
#include <boost/json/serialize.hpp>
#include <boost/url/encode.hpp>
#include <boost/url/rfc/pchars.hpp>

#include "service/Pages.h"
#include "text/Md5.h"

namespace zovk::service {
namespace {

void replaceAll(std::string& text, std::string_view what, std::string_view with) {
  std::size_t position = 0;
  while ((position = text.find(what, position)) != std::string::npos) {
    text.replace(position, what.size(), with);
    position += with.size();
  }
}

// Content types 1 and 2 are page files; every other one is a web page.
bool isPageFile(const boost::json::object& entry) {
  const auto* type = entry.if_contains("content_type");
  if (type == nullptr) return false;
  if (const auto* text = type->if_string()) return *text == "1" || *text == "2";
  const auto* number = type->if_int64();
  return number != nullptr && (*number == 1 || *number == 2);
}

void addMissing(boost::json::object& entry, std::string_view name, const auto& value) {
  if (!entry.contains(name)) entry[name] = value;
}

}  // namespace

std::string ConfigDocument::text(const std::string& fileName) const {
  auto file = folder_.read(fileName);
  if (!file) throw FolderError(fileName + ": not in the folder");
  return completed(std::move(file->bytes), fileName, pages());
}

ConfigDocument::PageSource ConfigDocument::pages() const {
  return [this](const std::string& name) -> std::optional<std::string> {
    auto file = readPage(folder_, name);
    if (!file) return std::nullopt;
    return std::move(file->bytes);
  };
}

std::string ConfigDocument::completed(std::string text, const std::string& what,
                                      const PageSource& pages) const {
  replaceAll(text, "{{base}}", base_);
  boost::json::object document = objectOf(text, what);
  auto* popups = document.if_contains("popups");
  if (popups != nullptr && popups->is_array()) {
    for (boost::json::value& entry : popups->get_array()) {
      if (entry.is_object()) complete(entry.get_object(), pages);
    }
  }
  return boost::json::serialize(document);
}

void ConfigDocument::complete(boost::json::object& entry, const PageSource& pages) const {
  if (const auto* page = entry.if_contains("page")) {
    if (!page->is_string()) throw FolderError("\"page\" of a popup is not a text");
    completeFromPage(entry, std::string(page->get_string()), pages);
  }
  const auto* uri = entry.if_contains("uri");
  if (uri != nullptr && uri->is_string() && !isPageFile(entry)) {
    addMissing(entry, "sig", md5Hex(std::string_view(uri->get_string())));
  }
}

void ConfigDocument::completeFromPage(boost::json::object& entry, const std::string& page,
                                      const PageSource& pages) const {
  const auto bytes = pages(page);
  if (!bytes) throw FolderError("no page file pages/" + page);
  entry.stable_erase("page");
  addMissing(entry, "content_type", 1);
  addMissing(entry, "uri", base_ + "/pages/" + boost::urls::encode(page, boost::urls::pchars));
  if (isPageFile(entry)) addMissing(entry, "sig", md5Hex(*bytes));
}

}  // namespace zovk::service
