#include "zovkpopup/PreviewMatrix.h"

#include <cstdio>
#include <optional>
#include <vector>

#include <fmt/format.h>
#include <openssl/evp.h>

#include "zovkpopup/Preview.h"
#include "zovkpopup/PreviewLook.h"
#include "zovkpopup/TextFile.h"
#include "zovkpopup/ToolError.h"

namespace zovk::tool {
namespace {

struct Picture {
  std::string caption;
  std::string png;
};

// Returns what was asked for, or else everything.
std::vector<std::string> those(const std::string& asked, std::vector<std::string> all) {
  if (asked.empty()) return all;
  return {asked};
}

std::string base64(const std::string& bytes) {
  std::string text(4 * ((bytes.size() + 2) / 3) + 1, '\0');
  const int length = EVP_EncodeBlock(reinterpret_cast<unsigned char*>(text.data()),
                                     reinterpret_cast<const unsigned char*>(bytes.data()),
                                     static_cast<int>(bytes.size()));
  text.resize(static_cast<std::size_t>(length));
  return text;
}

std::string escaped(const std::string& text) {
  std::string result;
  for (const char c : text) {
    if (c == '&') {
      result += "&amp;";
    } else if (c == '<') {
      result += "&lt;";
    } else if (c == '"') {
      result += "&quot;";
    } else {
      result += c;
    }
  }
  return result;
}

constexpr const char* kHead = R"(<!doctype html>
<html lang="en">
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<meta name="color-scheme" content="light dark">
<style>
  body { margin: 24px; background: Canvas; color: CanvasText; font: 15px/1.4 system-ui, sans-serif; }
  section { display: flex; flex-wrap: wrap; gap: 16px; align-items: flex-end; }
  figure { margin: 0; }
  img { display: block; max-height: 320px; max-width: 420px; border: 1px solid #8888; }
  figcaption { color: gray; }
</style>
)";

class Sheet {
 public:
  explicit Sheet(const std::string& page) {
    const std::string name = escaped(page);
    text_ = fmt::format("{}<title>{}</title>\n<h1>{}</h1>\n", kHead, name, name);
  }
  void begin(const std::string& heading) {
    text_ += fmt::format("<h2>{}</h2>\n<section>\n", heading);
  }
  void add(const Picture& picture) {
    text_ += fmt::format(
        "<figure><img alt=\"{}\" src=\"data:image/png;base64,{}\"><figcaption>{}</figcaption>"
        "</figure>\n",
        picture.caption, base64(picture.png), picture.caption);
  }
  void end() { text_ += "</section>\n"; }
  const std::string& text() const { return text_; }

 private:
  std::string text_;
};

std::string takePicture(const PreviewOptions& options, const StopSignals& signals) {
  setLook(options);
  const OwnFolder folder;
  const std::string file = (folder.path() / "picture.png").string();
  const PreviewBundle bundle(options);
  Preview preview(bundle, sizeOf(options.size), signals);
  if (!preview.takePicture(file))
    throw ToolError("ended before all pictures were taken", kUnavailable);
  return readFile(file);
}

}  // namespace

int writeMatrix(const PreviewOptions& options, const StopSignals& signals) {
  Sheet sheet(options.target);
  for (const auto& kind : those(options.kind, {"ordinary", "game", "policy", "permission"})) {
    for (const auto& theme : those(options.theme, {"light", "dark"})) {
      sheet.begin(kind + ", " + theme);
      for (const auto& size : those(options.size, {"360x640", "640x360", "600x800", "1280x720"})) {
        PreviewOptions one = options;
        one.kind = kind;
        one.theme = theme;
        one.size = size;
        sheet.add({size, takePicture(one, signals)});
      }
      sheet.end();
    }
  }
  writeFile(options.matrix, sheet.text());
  std::puts(options.matrix.c_str());
  return kSuccess;
}

}  // namespace zovk::tool
