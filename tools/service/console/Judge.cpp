#include "service/console/Judge.h"

#include <ctime>

#include "service/console/WholeFile.h"
#include "text/Md5.h"
#include "zovkpopup/DocumentCheck.h"
#include "zovkpopup/DocumentEngine.h"
#include "zovkpopup/OwnFolder.h"
#include "zovkpopup/TextFile.h"

namespace zovk::service {

/// A document as games get it, and the pages that it names.
struct Judge::Finished {
  std::string text;
  std::map<std::string, std::string> pages;

  std::string digest(std::time_t minute) const {
    std::string all = std::to_string(minute) + md5Hex(text);
    for (const auto& [name, bytes] : pages) all += name + '/' + md5Hex(bytes);
    return md5Hex(all);
  }
  tool::OpenDocument in(const tool::OwnFolder& folder, double now) const {
    for (const auto& [name, bytes] : pages) tool::writeFile(folder.path() / name, bytes);
    return {text, kConfigRemote, tool::PageFolder(folder.path()), now, true};
  }
};

Judge::Finished Judge::finish(const std::string& document,
                              const ConfigDocument::PageSource& pages) const {
  Finished result;
  result.text = config_.completed(document, "the document", [&](const std::string& name) {
    auto bytes = isPlainName(name) ? pages(name) : std::nullopt;
    if (bytes) result.pages[name] = *bytes;
    return bytes;
  });
  return result;
}

std::vector<tool::Problem> Judge::problems(const std::string& document,
                                           const ConfigDocument::PageSource& pages) {
  Finished finished;
  try {
    finished = finish(document, pages);
  } catch (const FolderError& error) {
    return {{tool::Severity::kError, "", error.what()}};
  }
  tool::Problems problems = judged(finished);
  const std::vector<tool::ReadPage> read = problems.pages();
  for (const tool::ReadPage& page : read) {
    const std::string& bytes = finished.pages[page.file.filename().string()];
    for (const tool::ScriptFault& fault : scripts_.faultsOf(bytes)) {
      problems.add(tool::problemOf(fault, page));
    }
  }
  return problems.list();
}

// The verdicts depend on the time, which counts in minutes here.
tool::Problems Judge::judged(const Finished& finished) {
  const std::time_t now = std::time(nullptr);
  const std::string key = finished.digest(now / 60);
  const LockGuard lock(mutex_);
  const auto found = remembered_.find(key);
  if (found != remembered_.end()) return found->second;
  const tool::OwnFolder folder;
  tool::Problems problems = tool::problemsIn(finished.in(folder, static_cast<double>(now)));
  if (remembered_.size() >= kMostRemembered) remembered_.clear();
  return remembered_.emplace(key, std::move(problems)).first->second;
}

ZOVKPopupExplanation Judge::explain(const std::string& document,
                                    const ConfigDocument::PageSource& pages,
                                    const PlayerQuestion& question) {
  const Finished finished = finish(document, pages);
  const LockGuard lock(mutex_);
  const tool::OwnFolder folder;
  const tool::OpenDocument opened = finished.in(folder, question.moment);
  tool::DocumentEngine engine(opened.now);
  if (const auto rejection = engine.load(opened.text, opened.configType, opened.pages)) {
    throw FolderError("games reject the document: " + *rejection);
  }
  return engine.explain(question.scene, question.sceneType, question.channel);
}

}  // namespace zovk::service
