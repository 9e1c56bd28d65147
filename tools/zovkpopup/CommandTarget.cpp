#include "zovkpopup/CommandTarget.h"

#include <algorithm>
#include <map>

#include "zovkpopup/Shell.h"
#include "zovkpopup/ToolError.h"

namespace zovk::tool {
namespace {

constexpr const char* kForEver = "max-age=31536000, immutable";
constexpr const char* kAskAgain = "no-cache";
constexpr const char* kDocument = "s-maxage=60, max-age=0";

using Words = std::map<std::string, std::string>;

std::string typeOf(const std::string& key) {
  static const Words types = {
      {".html", "text/html"},        {".css", "text/css"},      {".js", "text/javascript"},
      {".json", "application/json"}, {".svg", "image/svg+xml"}, {".png", "image/png"},
      {".jpg", "image/jpeg"},        {".webp", "image/webp"},   {".woff2", "font/woff2"}};
  if (key == "popup/get_info") return "application/json";
  const auto found = types.find(std::filesystem::path(key).extension().string());
  return found == types.end() ? "application/octet-stream" : found->second;
}

// Inserted text is not searched again, so a file's name may hold any sign.
std::string filledIn(const std::string& line, const Words& words) {
  std::string result;
  for (std::size_t at = 0; at < line.size();) {
    const auto word = std::find_if(words.begin(), words.end(), [&](const auto& one) {
      return line.compare(at, one.first.size(), one.first) == 0;
    });
    if (word == words.end()) {
      result += line[at++];
    } else {
      result += word->second;
      at += word->first.size();
    }
  }
  return result;
}

bool isCompressed(const std::string& key) {
  return key.ends_with(".gz");
}

}  // namespace

CommandTarget::CommandTarget(std::string line) : line_(std::move(line)) {
  for (const char* word : {"{file}", "{key}"}) {
    if (line_.find(word) == std::string::npos) {
      throw ToolError("command:" + line_ + ": has no " + word + " in it");
    }
  }
}

void CommandTarget::store(const Release& release, const std::string& file, const std::string& key,
                          const char* cache) const {
  runShell(filledIn(line_, {{"{file}", shellWord((release.folder / file).string())},
                            {"{key}", shellWord(key)},
                            {"{type}", shellWord(typeOf(key))},
                            {"{cache}", shellWord(cache)}}));
}

void CommandTarget::upload(const Release& release) {
  for (const std::string& key : filesOf(release, "pages")) {
    if (!isCompressed(key)) store(release, key, key, kForEver);
  }
}

void CommandTarget::activate(const Release& release) {
  const std::string below = "releases/" + release.id + "/";
  const std::string document = below + "popup/get_info";
  for (const std::string& file : filesOf(release, below)) {
    if (isCompressed(file) || file == document) continue;
    store(release, file, file.substr(below.size()), kAskAgain);
  }
  store(release, document, "popup/get_info", kDocument);
}

}  // namespace zovk::tool
