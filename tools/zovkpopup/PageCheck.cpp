#include "zovkpopup/PageCheck.h"

#include <array>
#include <string_view>

#include <fmt/format.h>

#include "support/Utf8.h"
#include "zovkpopup/HtmlTree.h"
#include "zovkpopup/PageText.h"

namespace zovk::tool {
namespace {

constexpr std::size_t kGood = 200U * 1024U;
constexpr std::size_t kLong = 8U * 1024U * 1024U;

bool isBlank(const std::string& text) {
  return text.find_first_not_of(" \t\r\n") == std::string::npos;
}

std::string shortened(const std::string& text) {
  constexpr std::size_t kLongest = 60;
  return text.size() > kLongest ? repairedUtf8(text.substr(0, kLongest)) + "…" : text;
}

bool isFromNet(const std::string& address) {
  return address.starts_with("http:") || address.starts_with("https:") || address.starts_with("//");
}

// Returns whether an address leads neither to the net nor to a place within the page.
bool isRelative(const std::string& address) {
  const std::size_t colon = address.find(':');
  const bool hasScheme = colon != std::string::npos && colon < address.find_first_of("/?#");
  return !address.empty() && !address.starts_with('#') && !hasScheme && !isFromNet(address);
}

/// Walks through a page once and keeps what the questions below are about.
class PageReader {
 public:
  explicit PageReader(const std::string& page) {
    const HtmlTree tree = readHtml(page);
    if (tree) walk(xmlDocGetRootElement(tree.get()));
  }

  bool hasTitle = false;
  bool hasViewport = false;
  bool hasCharset = false;
  bool hasBackground = false;
  bool answers = false;
  bool hasForeignScript = false;
  std::vector<PageProblem> loads;

 private:
  void walk(xmlNode* first) {
    for (xmlNode* node = first; node != nullptr; node = node->next) {
      if (node->type == XML_ELEMENT_NODE) look(node, htmlText(node->name));
      walk(node->children);
    }
  }

  void look(xmlNode* node, std::string_view name) {
    if (name == "title") hasTitle = hasTitle || !isBlank(htmlContent(node));
    if (name == "meta") {
      hasViewport = hasViewport || htmlAttribute(node, "name") == "viewport";
      hasCharset = hasCharset || !htmlAttribute(node, "charset").empty() ||
                   htmlAttribute(node, "content").find("charset=") != std::string::npos;
    }
    if (name == "style" || name == "script") lookAtText(name, htmlContent(node));
    for (xmlAttr* attribute = node->properties; attribute != nullptr; attribute = attribute->next) {
      lookAtAttribute(node, name, std::string(htmlText(attribute->name)));
    }
  }

  void lookAtText(std::string_view name, const std::string& text) {
    if (name == "style") {
      hasBackground = hasBackground || text.find("background") != std::string::npos;
      if (text.find("@import") != std::string::npos)
        warn("<style> has @import, which loads nothing");
    } else {
      answers = answers || text.find("postMessage") != std::string::npos;
    }
  }

  void lookAtAttribute(xmlNode* node, std::string_view name, const std::string& attribute) {
    const std::string value = htmlAttribute(node, attribute.c_str());
    if (attribute.starts_with("on")) {
      answers = answers || value.find("postMessage") != std::string::npos;
    }
    if (attribute == "style" || attribute == "bgcolor" || attribute == "background") {
      hasBackground =
          hasBackground || attribute != "style" || value.find("background") != std::string::npos;
    }
    const bool loadsIt = attribute == "src" || attribute == "srcset" || attribute == "poster" ||
                         (attribute == "href" && name == "link");
    if (!loadsIt && attribute != "href") return;
    hasForeignScript = hasForeignScript || (loadsIt && name == "script");
    const std::string what = fmt::format("<{} {}=\"{}\">", name, attribute, shortened(value));
    if (isRelative(value)) {
      warn(what + (loadsIt ? " is another file, which a page file never loads; put it into the page"
                           : " leads to a file, which does not open"));
    } else if (loadsIt && isFromNet(value)) {
      warn(what + " is loaded from the net, so that it is missing without, or comes late");
    }
  }

  void warn(std::string message) { loads.push_back({Severity::kWarning, std::move(message)}); }
};

std::string sizeText(std::size_t bytes) {
  constexpr double kMebi = 1024.0 * 1024.0;
  return bytes < kLong ? fmt::format("{} KB", bytes / 1024)
                       : fmt::format("{:.1f} MiB", static_cast<double>(bytes) / kMebi);
}

void checkSize(std::size_t bytes, std::vector<PageProblem>& problems) {
  const std::string is = "is " + sizeText(bytes) + " large";
  if (bytes > kLargestPage) {
    problems.push_back({Severity::kError, is + "; 64 MiB are the most"});
  } else if (bytes > kLong) {
    problems.push_back({Severity::kWarning, is + ", which many players wait for too long"});
  } else if (bytes > kGood) {
    problems.push_back({Severity::kHint, is + "; below 200 KB it is there at once"});
  }
}

}  // namespace

std::vector<PageProblem> pageProblems(const std::string& page) {
  std::vector<PageProblem> problems;
  const auto warn = [&problems](const char* message) {
    problems.push_back({Severity::kWarning, message});
  };
  checkSize(page.size(), problems);
  if (page.size() > kLargestPage) return problems;
  if (page.starts_with("\xff\xfe") || page.starts_with("\xfe\xff")) {
    warn("is UTF-16; save it as UTF-8");
    return problems;
  }
  if (!isUtf8(page)) warn("is not UTF-8, so that letters come out wrong; save it as UTF-8");
  PageReader reader(pageText(page).value_or(page));
  if (!reader.hasCharset && !page.starts_with("\xef\xbb\xbf")) {
    warn("does not say its encoding: <meta charset=\"utf-8\">");
  }
  if (!reader.hasTitle) warn("has no <title>, by which screen readers call the popup");
  if (!reader.hasViewport) {
    warn(
        "has no viewport, so that phones show it small: <meta name=\"viewport\" "
        "content=\"width=device-width, initial-scale=1, viewport-fit=cover\">");
  }
  problems.insert(problems.end(), reader.loads.begin(), reader.loads.end());
  if (!reader.answers && !reader.hasForeignScript) {
    warn("posts nothing, so that the player can only use the game's own buttons");
  }
  if (!reader.hasBackground) {
    warn("has no background anywhere, so that the game is seen through it, or black");
  }
  return problems;
}

}  // namespace zovk::tool
