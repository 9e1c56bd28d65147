#include "service/console/Judge.h"

#include <ctime>
#include <filesystem>
#include <stdexcept>

#include <stdlib.h>

#include "service/console/WholeFile.h"
#include "text/Md5.h"
#include "zovkpopup/DocumentCheck.h"
#include "zovkpopup/DocumentEngine.h"
#include "zovkpopup/TextFile.h"

namespace zovk::service {
namespace {

// A check looks for pages in a folder. This one is gone with the object.
class ScratchFolder {
 public:
  ScratchFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "zovkpopup-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr)
      throw std::runtime_error(pattern + ": cannot be made");
    path_ = pattern;
  }
  ~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

/// A document as games get it, and the pages that it names.
struct Finished {
  std::string text;
  std::map<std::string, std::string> pages;

  std::string digest(std::time_t minute) const {
    std::string all = std::to_string(minute) + md5Hex(text);
    for (const auto& [name, bytes] : pages) all += name + '/' + md5Hex(bytes);
    return md5Hex(all);
  }
  tool::OpenDocument in(const ScratchFolder& folder, double now) const {
    for (const auto& [name, bytes] : pages) tool::writeFile(folder.path() / name, bytes);
    return {text, kConfigRemote, tool::PageFolder(folder.path()), now, true};
  }
};

Finished finish(const ConfigDocument& config, const std::string& document,
                const ConfigDocument::PageSource& pages) {
  Finished result;
  result.text = config.completed(document, "the document", [&](const std::string& name) {
    auto bytes = isPlainName(name) ? pages(name) : std::nullopt;
    if (bytes) result.pages[name] = *bytes;
    return bytes;
  });
  return result;
}

}  // namespace

std::vector<tool::Problem> Judge::problems(const std::string& document,
                                           const ConfigDocument::PageSource& pages) {
  Finished finished;
  try {
    finished = finish(config_, document, pages);
  } catch (const FolderError& error) {
    return {{tool::Severity::kError, "", error.what()}};
  }
  const std::time_t now = std::time(nullptr);
  const std::string key = finished.digest(now / 60);
  const LockGuard lock(mutex_);
  const auto found = remembered_.find(key);
  if (found != remembered_.end()) return found->second;
  const ScratchFolder folder;
  auto problems = tool::problemsIn(finished.in(folder, static_cast<double>(now))).list();
  if (remembered_.size() >= kMostRemembered) remembered_.clear();
  return remembered_.emplace(key, std::move(problems)).first->second;
}

ZOVKPopupExplanation Judge::explain(const std::string& document,
                                    const ConfigDocument::PageSource& pages,
                                    const PlayerQuestion& question) {
  const Finished finished = finish(config_, document, pages);
  const LockGuard lock(mutex_);
  const ScratchFolder folder;
  const tool::OpenDocument opened = finished.in(folder, question.moment);
  tool::DocumentEngine engine(opened.now);
  if (const auto rejection = engine.load(opened.text, opened.configType, opened.pages)) {
    throw FolderError("games reject the document: " + *rejection);
  }
  return engine.explain(question.scene, question.sceneType, question.channel);
}

}  // namespace zovk::service
