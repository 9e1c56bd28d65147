#include <cstdio>
#include <ctime>
#include <filesystem>

#include <fmt/format.h>

#include "engine/ZOVKPopupManager.h"
#include "zovkpopup/Commands.h"
#include "zovkpopup/OpenDocument.h"
#include "zovkpopup/PublishRecord.h"
#include "zovkpopup/PublishTarget.h"
#include "zovkpopup/ToolError.h"

namespace zovk::tool {
namespace {

namespace fs = std::filesystem;

fs::path recordFolder(const PublishOptions& options) {
  if (!options.record.empty()) return options.record;
  return fs::path(options.document.file).parent_path() / "published";
}

// One folder is one target, however it is written.
std::string targetName(const std::string& text) {
  const bool isFolder = !text.starts_with("ssh:") && !text.starts_with("command:");
  if (!isFolder) return text;
  const fs::path folder = fs::weakly_canonical(fs::absolute(text));
  return folder.has_filename() ? folder.string() : folder.parent_path().string();
}

int rollBack(PublishTarget& target, PublishRecord& record, const std::string& where) {
  const auto release = record.before();
  if (!release)
    throw ToolError("nothing was published to " + where + " before what is live", kNoInput);
  target.activate(*release);
  record.setLive(*release);
  std::puts(fmt::format("{}: back to {}", where, release->id).c_str());
  return kSuccess;
}

int publish(const PublishOptions& options, PublishTarget& target, PublishRecord& record) {
  const OpenDocument opened = openDocument(options.document);
  if (opened.configType != kConfigRemote) {
    throw ToolError(options.document.file + ": is a document of a bundle, which games ship",
                    kBadData);
  }
  fs::create_directories(record.folder());
  const Release release = makeRelease(opened, options, record.nextTime(std::time(nullptr)),
                                      fs::absolute(record.folder()));
  target.upload(release);
  target.activate(release);
  record.add(release, options.document.file);
  std::puts(fmt::format("{}: {} with {} page file{}", options.to, release.id, release.pages.size(),
                        release.pages.size() == 1 ? "" : "s")
                .c_str());
  return kSuccess;
}

}  // namespace

int runPublish(const PublishOptions& options) {
  try {
    const auto target = publishTarget(options.to);
    PublishRecord record(recordFolder(options), targetName(options.to));
    if (options.rollback) return rollBack(*target, record, options.to);
    const int code = runCheck({.document = options.document, .strict = options.strict});
    return code == kSuccess ? publish(options, *target, record) : code;
  } catch (const fs::filesystem_error& error) {
    throw ToolError(error.what(), kInputOutput);
  }
}

}  // namespace zovk::tool
