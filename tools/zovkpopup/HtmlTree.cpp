#include "zovkpopup/HtmlTree.h"

namespace zovk::tool {
namespace {

// Takes a text that the library allocated.
std::string taken(xmlChar* text) {
  std::string result(htmlText(text));
  xmlFree(text);
  return result;
}

}  // namespace

HtmlTree readHtml(const std::string& page) {
  const int options =
      HTML_PARSE_RECOVER | HTML_PARSE_NOERROR | HTML_PARSE_NOWARNING | HTML_PARSE_NONET;
  return HtmlTree(
      htmlReadMemory(page.data(), static_cast<int>(page.size()), nullptr, "UTF-8", options));
}

std::string_view htmlText(const xmlChar* text) {
  return text == nullptr ? std::string_view() : reinterpret_cast<const char*>(text);
}

std::string htmlAttribute(xmlNode* node, const char* name) {
  return taken(xmlGetProp(node, reinterpret_cast<const xmlChar*>(name)));
}

std::string htmlContent(xmlNode* node) {
  return taken(xmlNodeGetContent(node));
}

}  // namespace zovk::tool
