#include "service/ConfigDocument.h"

#include <boost/json/array.hpp>
#include <boost/json/serialize.hpp>

#include "service/Pages.h"
#include "zovkpopup/ServiceDocument.h"

namespace zovk::service {
namespace {

void refuseOddPages(const boost::json::object& document) {
  const auto* const popups = document.if_contains("popups");
  if (popups == nullptr || !popups->is_array()) return;
  for (const boost::json::value& entry : popups->get_array()) {
    const auto* const page = entry.is_object() ? entry.get_object().if_contains("page") : nullptr;
    if (page != nullptr && !page->is_string()) {
      throw FolderError("\"page\" of a popup is not a text");
    }
  }
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
  boost::json::object document = objectOf(tool::withBase(std::move(text), base_), what);
  refuseOddPages(document);
  tool::completePopups(document, base_, [&pages](const std::string& name) {
    auto bytes = pages(name);
    if (!bytes) throw FolderError("no page file pages/" + name);
    return bytes;
  });
  return boost::json::serialize(document);
}

}  // namespace zovk::service
