#include "zovkpopup/HtmlTree.h"

#include <libxml/SAX2.h>

namespace zovk::tool {
namespace {

constexpr int kOptions =
    HTML_PARSE_RECOVER | HTML_PARSE_NOERROR | HTML_PARSE_NOWARNING | HTML_PARSE_NONET;

struct ParserFree {
  void operator()(htmlParserCtxt* parser) const { htmlFreeParserCtxt(parser); }
};

// Takes a text that the library allocated.
std::string taken(xmlChar* text) {
  std::string result(htmlText(text));
  xmlFree(text);
  return result;
}

std::string& rawText(htmlParserCtxt* parser) {
  return *static_cast<std::string*>(parser->_private);
}

// The library gets scripts and styles in pieces of a kilobyte. Its own way to put them together
// copies all that is there for each piece, which takes minutes for some megabytes.
void keepRaw(void* context, const xmlChar* piece, int length) {
  rawText(static_cast<htmlParserCtxt*>(context))
      .append(reinterpret_cast<const char*>(piece), static_cast<std::size_t>(length));
}

void endElement(void* context, const xmlChar* name) {
  auto* const parser = static_cast<htmlParserCtxt*>(context);
  std::string& text = rawText(parser);
  if (!text.empty() && parser->node != nullptr) {
    const auto* const bytes = reinterpret_cast<const xmlChar*>(text.data());
    xmlAddChild(parser->node, xmlNewTextLen(bytes, static_cast<int>(text.size())));
  }
  text.clear();
  xmlSAX2EndElement(context, name);
}

HtmlTree read(const std::string& page, const char* encoding) {
  const std::unique_ptr<htmlParserCtxt, ParserFree> parser(htmlNewParserCtxt());
  if (parser == nullptr) return nullptr;
  std::string raw;
  parser->_private = &raw;
  parser->sax->cdataBlock = &keepRaw;
  parser->sax->endElement = &endElement;
  return HtmlTree(htmlCtxtReadMemory(parser.get(), page.data(), static_cast<int>(page.size()),
                                     nullptr, encoding, kOptions));
}

}  // namespace

HtmlTree readHtml(const std::string& page) {
  return read(page, "UTF-8");
}

HtmlTree readHtmlBytes(const std::string& page) {
  return read(page, nullptr);
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
