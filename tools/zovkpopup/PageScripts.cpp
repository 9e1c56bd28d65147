#include "zovkpopup/PageScripts.h"

#include <algorithm>
#include <array>

#include "text/LowerCase.h"
#include "zovkpopup/HtmlTree.h"

namespace zovk::tool {
namespace {

bool isScriptType(const std::string& type) {
  constexpr std::array<std::string_view, 6> kTypes{"",
                                                   "module",
                                                   "text/javascript",
                                                   "application/javascript",
                                                   "text/ecmascript",
                                                   "application/x-javascript"};
  return std::find(kTypes.begin(), kTypes.end(), type) != kTypes.end();
}

std::size_t lineOf(xmlNode* node) {
  return static_cast<std::size_t>(std::max(xmlGetLineNo(node), 1L));
}

void addElement(xmlNode* node, std::vector<PageScript>& scripts) {
  const std::string type = lowerCase(htmlAttribute(node, "type"));
  const bool isForeign = xmlHasProp(node, reinterpret_cast<const xmlChar*>("src")) != nullptr;
  if (isForeign || !isScriptType(type)) return;
  scripts.push_back({htmlContent(node), lineOf(node), type == "module"});
}

// The text of such an attribute is the body of a function.
void addHandlers(xmlNode* node, std::vector<PageScript>& scripts) {
  for (xmlAttr* attribute = node->properties; attribute != nullptr; attribute = attribute->next) {
    const std::string name(htmlText(attribute->name));
    if (!name.starts_with("on")) continue;
    scripts.push_back({"function " + name + "(event) {" + htmlAttribute(node, name.c_str()) + "\n}",
                       lineOf(node), false});
  }
}

void addAll(xmlNode* first, std::vector<PageScript>& scripts) {
  for (xmlNode* node = first; node != nullptr; node = node->next) {
    if (node->type == XML_ELEMENT_NODE) {
      if (htmlText(node->name) == "script") addElement(node, scripts);
      addHandlers(node, scripts);
    }
    addAll(node->children, scripts);
  }
}

}  // namespace

std::vector<PageScript> scriptsOf(const std::string& page) {
  std::vector<PageScript> scripts;
  const HtmlTree tree = readHtml(page);
  if (tree) addAll(xmlDocGetRootElement(tree.get()), scripts);
  return scripts;
}

}  // namespace zovk::tool
