#pragma once

#include <memory>
#include <string>
#include <string_view>

#include <libxml/HTMLparser.h>

namespace zovk::tool {

struct HtmlTreeFree {
  void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
};
using HtmlTree = std::unique_ptr<xmlDoc, HtmlTreeFree>;

/// Reads a page in UTF-8 as browsers do: whatever is wrong with it. Null if nothing can be read.
/// The parser bounds how deep elements lie in one another.
HtmlTree readHtml(const std::string& page);
/// Reads a page in the encoding that it names. The tree's `encoding` is that name.
HtmlTree readHtmlBytes(const std::string& page);

std::string_view htmlText(const xmlChar* text);
/// Returns the value of an attribute, or nothing.
std::string htmlAttribute(xmlNode* node, const char* name);
/// Returns the text within an element.
std::string htmlContent(xmlNode* node);

}  // namespace zovk::tool
