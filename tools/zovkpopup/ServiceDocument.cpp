#include "zovkpopup/ServiceDocument.h"

#include <boost/json/array.hpp>
#include <boost/url/encode.hpp>
#include <boost/url/rfc/pchars.hpp>

#include "text/Md5.h"

namespace zovk::tool {
namespace {

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

void completeFromPage(boost::json::object& entry, const std::string& page, const std::string& base,
                      const PageSource& pages) {
  const auto bytes = pages(page);
  entry.stable_erase("page");
  addMissing(entry, "content_type", 1);
  addMissing(entry, "uri", base + "/pages/" + boost::urls::encode(page, boost::urls::pchars));
  if (isPageFile(entry) && bytes) addMissing(entry, "sig", md5Hex(*bytes));
}

void complete(boost::json::object& entry, const std::string& base, const PageSource& pages) {
  const auto* page = entry.if_contains("page");
  if (page != nullptr && page->is_string()) {
    completeFromPage(entry, std::string(page->get_string()), base, pages);
  }
  const auto* uri = entry.if_contains("uri");
  if (uri != nullptr && uri->is_string() && !isPageFile(entry)) {
    addMissing(entry, "sig", md5Hex(std::string_view(uri->get_string())));
  }
}

}  // namespace

std::string withBase(std::string text, const std::string& base) {
  constexpr std::string_view kBase = "{{base}}";
  std::size_t position = 0;
  while ((position = text.find(kBase, position)) != std::string::npos) {
    text.replace(position, kBase.size(), base);
    position += base.size();
  }
  return text;
}

void completePopups(boost::json::object& document, const std::string& base,
                    const PageSource& pages) {
  auto* const popups = document.if_contains("popups");
  if (popups == nullptr || !popups->is_array()) return;
  for (boost::json::value& entry : popups->get_array()) {
    if (entry.is_object()) complete(entry.get_object(), base, pages);
  }
}

}  // namespace zovk::tool
