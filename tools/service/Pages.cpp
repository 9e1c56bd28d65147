#include "service/Pages.h"

#include <map>

#include "service/HttpDate.h"
#include "text/Md5.h"

namespace zovk::service {
namespace {

std::string typeOf(const std::string& name) {
  static const std::map<std::string, std::string> kTypes{{".html", "text/html; charset=utf-8"},
                                                         {".htm", "text/html; charset=utf-8"},
                                                         {".css", "text/css; charset=utf-8"},
                                                         {".js", "text/javascript; charset=utf-8"},
                                                         {".json", "application/json"},
                                                         {".png", "image/png"},
                                                         {".jpg", "image/jpeg"},
                                                         {".svg", "image/svg+xml"}};
  const auto found = kTypes.find(std::filesystem::path(name).extension().string());
  return found == kTypes.end() ? "application/octet-stream" : found->second;
}

std::string_view trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

// Returns whether one of the listed tags is this one. A weak tag counts, too, because a page is
// only read.
bool listHasTag(std::string_view list, std::string_view tag) {
  while (!list.empty()) {
    const std::size_t end = list.find(',');
    std::string_view candidate = trimmed(list.substr(0, end));
    if (candidate.starts_with("W/")) candidate.remove_prefix(2);
    if (candidate == "*" || candidate == tag) return true;
    if (end == std::string_view::npos) break;
    list.remove_prefix(end + 1);
  }
  return false;
}

// The tag decides alone when there is one: a date cannot tell two changes within a second.
bool isStillGood(const Validators& validators, const std::string& tag, std::time_t changed) {
  if (!validators.ifNoneMatch.empty()) return listHasTag(validators.ifNoneMatch, tag);
  if (validators.ifModifiedSince.empty()) return false;
  const auto since = parseHttpDate(validators.ifModifiedSince);
  return since && changed <= *since;
}

}  // namespace

std::optional<FolderFile> readPage(const Folder& folder, const std::string& name) {
  if (!isPlainName(name)) return std::nullopt;
  return folder.read(std::filesystem::path("pages") / name);
}

Answer answerPage(const Folder& folder, const std::string& name, const Validators& validators) {
  auto page = readPage(folder, name);
  if (!page) return problem(404, "no such page");
  const std::string tag = '"' + md5Hex(page->bytes) + '"';
  Answer answer;
  answer.headers = {
      {"ETag", tag}, {"Last-Modified", httpDate(page->changed)}, {"Cache-Control", "no-cache"}};
  if (isStillGood(validators, tag, page->changed)) {
    answer.status = 304;
    return answer;
  }
  answer.type = typeOf(name);
  answer.body = std::move(page->bytes);
  return answer;
}

}  // namespace zovk::service
