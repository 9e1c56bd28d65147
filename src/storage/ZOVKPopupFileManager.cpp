#include "storage/ZOVKPopupFileManager.h"

#include <filesystem>
#include <utility>

#include "storage/ContainedNames.h"
#include "support/Utf8.h"
#include "zovkpopup/platform/CurrentPlatform.h"

namespace zovk {
namespace {

constexpr std::string_view kInternalDirectory = "/Library/Caches/ZOVKPopup";
constexpr std::string_view kRecordSeparator = ",";

/// The debug lines of one operation of the file manager.
constexpr DebugLog fileManagerLog(const char* function) {
  return {"ZOVKPopupFileManager", function};
}

}  // namespace

ZOVKPopupFileManager* ZOVKPopupFileManager::sharedInstance() {
  return Shared::holder().shared();
}

ZOVKPopupFileManager* ZOVKPopupFileManager::sharedInstanceSynch() {
  return Shared::holder().sharedSynch();
}

ZOVKPopupFileManager* ZOVKPopupFileManager::sharedInstanceNoSynch() {
  return Shared::holder().sharedNoSynch();
}

ZOVKPopupFileManager* ZOVKPopupFileManager::allocWithZone() {
  return Shared::holder().allocate();
}

void ZOVKPopupFileManager::purgeSharedInstance() {
  Shared::holder().purge();
}

std::shared_ptr<ZOVKPopupFileManager> ZOVKPopupFileManager::make() {
  auto platform = currentPlatform();
  if (platform == nullptr) return nullptr;
  return std::make_shared<ZOVKPopupFileManager>(std::move(platform));
}

ZOVKPopupFileManager::ZOVKPopupFileManager(std::shared_ptr<Platform> platform)
    : platform_(std::move(platform)),
      digests_(platform_->files, platform_->clock),
      texts_(platform_->files, platform_->clock) {}

void ZOVKPopupFileManager::init() {
  constexpr DebugLog debug = fileManagerLog("ZOVKPopupFileManager::init");
  filePath_ = platform_->device.homeDirectory() + std::string(kInternalDirectory);
  if (platform_->files.exists(filePath_)) return;
  debug("Create directory:%@", filePath_);
  if (const auto error = platform_->files.createDirectory(filePath_)) {
    logError("Create directory failed, error:%@", error.message());
  }
}

std::string ZOVKPopupFileManager::getInternalFilePath(const std::string& fileName) const {
  constexpr DebugLog debug = fileManagerLog("ZOVKPopupFileManager::getInternalFilePath");
  debug("Get internal file path, fileName:%@", fileName);
  if (fileName.empty()) {
    logError("Param fileName illegal");
    return "";
  }
  return filePath_ + "/" + fileName;
}

std::shared_ptr<const Bundle> ZOVKPopupFileManager::getResourceBundle() {
  const LockGuard lock(mutex_);
  if (rescBundle_ != nullptr) return rescBundle_;
  const auto path = platform_->bundles.mainBundle()->pathForResource("ZOVKPopupResource", "bundle");
  if (path) rescBundle_ = platform_->bundles.bundleWithPath(*path);
  return rescBundle_;
}

const boost::json::object* ZOVKPopupFileManager::getResourceInfo() {
  const auto bundle = getResourceBundle();  // never let go once found, so its dictionary stays
  if (bundle == nullptr) {
    logError("No resource bundle found!");
    return nullptr;
  }
  return &bundle->infoDictionary();
}

std::string ZOVKPopupFileManager::getResourceFilePath(const std::string& fileName) {
  const auto bundle = getResourceBundle();
  if (bundle == nullptr) {
    logError("No resource bundle found!");
    return "";
  }
  return bundle->resourcePath() + "/" + fileName;
}

bool ZOVKPopupFileManager::readInternalFile(const std::string& fileName, std::string* filePath,
                                            std::string* fileData) {
  constexpr DebugLog debug = fileManagerLog("ZOVKPopupFileManager::readInternalFile");
  debug("Read internal file:%@", fileName);
  if (fileName.empty()) {
    logError("Param fileName illegal");
    return false;
  }
  return readWholeFile(debug, fileName, filePath_ + "/" + fileName, filePath, fileData);
}

bool ZOVKPopupFileManager::readResourceFile(const std::string& fileName, std::string* filePath,
                                            std::string* fileData) {
  constexpr DebugLog debug = fileManagerLog("ZOVKPopupFileManager::readResourceFile");
  debug("Read resource file:%@", fileName);
  if (fileName.empty()) {
    logError("Param fileName illegal");
    return false;
  }
  return readWholeFile(debug, fileName, getResourceFilePath(fileName), filePath, fileData);
}

bool ZOVKPopupFileManager::readWholeFile(const DebugLog& debug, const std::string& fileName,
                                         const std::string& fullPath, std::string* filePath,
                                         std::string* fileData) const {
  if (!platform_->files.exists(fullPath)) {
    logError("%@ not exist", fileName);
    return false;
  }
  auto bytes = platform_->files.read(fullPath);
  if (!bytes || bytes->empty()) {
    debug("%@ file is empty", fileName);
    return false;
  }
  debug("Read %@ success, data length:%d", fileName, bytes->size());
  if (filePath != nullptr) *filePath = fullPath;
  if (fileData != nullptr) *fileData = std::move(*bytes);
  return true;
}

bool ZOVKPopupFileManager::saveInternalFile(const std::string& fileName,
                                            std::optional<std::string_view> fileData, bool append) {
  constexpr DebugLog debug = fileManagerLog("ZOVKPopupFileManager::saveInternalFile");
  debug("Save internal file, fileName:%@, data length:%d, append:%d", fileName,
        fileData.value_or("").size(), append);
  const std::string fullPath = filePath_ + "/" + fileName;
  // Names are made from remote texts: one that leads out of the directory is never written.
  if (fileName.empty() || !fileData || !staysInside(fullPath)) {
    logError("Param illegal");
    return false;
  }
  const bool exists = platform_->files.exists(fullPath);
  bool result = true;
  if (append && exists) {
    result = appendRecord(fileName, fullPath, *fileData);
  } else if (append) {
    debug("File:%@ not exist, write directly", fileName);
    result = !platform_->files.writeAtomically(fullPath, *fileData);
  } else {
    result = replaceFile(fileName, fullPath, *fileData);
  }
  debug("Save %@ done, result:%d", fileName, result);
  return result;
}

bool ZOVKPopupFileManager::staysInside(const std::string& fullPath) const {
  if (filePath_.empty()) return false;
  const std::string normal = std::filesystem::path(fullPath).lexically_normal().string();
  const std::string root = std::filesystem::path(filePath_).lexically_normal().string() + "/";
  return normal.starts_with(root) && normal.size() > root.size();
}

bool ZOVKPopupFileManager::appendRecord(const std::string& fileName, const std::string& fullPath,
                                        std::string_view record) {
  constexpr DebugLog debug = fileManagerLog("ZOVKPopupFileManager::saveInternalFile");
  debug("File:%@ exist, do append", fileName);
  const auto text = isUtf8(record) ? std::optional(std::string(record)) : std::nullopt;
  if (textExistInFile(text, fullPath)) {
    debug("Text:%@ is already exist", text);
    return true;
  }
  debug("Text:%@ not exist, do append", text);
  platform_->files.append(fullPath, std::string(kRecordSeparator).append(record));
  return true;  // a record that could not be kept does not stop a popup from ending
}

bool ZOVKPopupFileManager::replaceFile(const std::string& fileName, const std::string& fullPath,
                                       std::string_view bytes) {
  constexpr DebugLog debug = fileManagerLog("ZOVKPopupFileManager::saveInternalFile");
  if (platform_->files.exists(fullPath)) {
    debug("%@ exist, delete the old one", fileName);
    // The write below replaces a file in one step, so that a crash never leaves none. Only a
    // directory in its place has to go first.
    const bool isDirectory = platform_->files.listRecursively(fullPath).has_value();
    const auto error = isDirectory ? platform_->files.remove(fullPath) : std::error_code();
    if (error) logError("Delete old %@ failed, error:%@", fileName, error.message());
  }
  debug("Start save %@", fileName);
  return !platform_->files.writeAtomically(fullPath, bytes);
}

bool ZOVKPopupFileManager::fileExistAtPath(const std::string& path, FileGlance* glance) const {
  constexpr DebugLog debug = fileManagerLog("ZOVKPopupFileManager::fileExistAtPath");
  debug("File exist at path:%@", path);
  if (path.empty()) {
    logError("path illegal");
    return false;
  }
  return glance != nullptr ? glance->identity(path).has_value() : platform_->files.exists(path);
}

bool ZOVKPopupFileManager::textExistInFile(const std::optional<std::string>& text,
                                           const std::string& filePath, FileGlance* glance) {
  constexpr DebugLog debug = fileManagerLog("ZOVKPopupFileManager::textExistInFile");
  debug("Text exist in file, text:%@ filePath:%@", text, filePath);
  if (!text || text->empty() || filePath.empty()) {
    logError("Param illegal");
    return false;
  }
  FileGlance fresh = newGlance();
  const auto content = texts_.text(filePath, glance != nullptr ? *glance : fresh);
  const bool found = content != nullptr && content->contains(*text);
  debug(found ? "Exist" : "Not exist");
  return found;
}

std::string ZOVKPopupFileManager::getFileMD5(const std::string& filePath, FileGlance* glance) {
  constexpr DebugLog debug = fileManagerLog("ZOVKPopupFileManager::getFileMD5");
  debug("Get file MD5, filePath:%@", filePath);
  if (filePath.empty()) {
    logError("filePath illegal");
    return "";
  }
  FileGlance fresh = newGlance();
  auto digest = digests_.digest(filePath, glance != nullptr ? *glance : fresh);
  if (!digest) {
    logError("File not exist, filePaht:%@", filePath);
    return "";
  }
  debug("MD5:%@", *digest);
  return *std::move(digest);
}

void ZOVKPopupFileManager::deleteInternalFileWithout(const std::optional<std::string>& keepList) {
  constexpr DebugLog debug = fileManagerLog("ZOVKPopupFileManager::deleteInternalFileWithout");
  debug("Delete internal file without:%@", keepList);
  const auto entries =
      platform_->files.listRecursively(filePath_).value_or(std::vector<std::string>());
  const auto kept = containedNames(entries, keepList.value_or(""));
  for (const std::string& entry : entries) {
    if (keepList && kept.contains(entry)) continue;
    debug("Delete file:%@", entry);
    const auto error = platform_->files.remove(filePath_ + "/" + entry);
    debug("Delete file:%@ result:%d", entry, !error);
  }
  debug("Delete internal file done");
}

std::string ZOVKPopupFileManager::valueForKey(const std::string& key) const {
  constexpr DebugLog debug = fileManagerLog("ZOVKPopupFileManager::valueForKey");
  debug("Get value for key:%@", key);
  if (key.empty()) return "";
  std::string value = platform_->settings.value(key).value_or("");
  if (value.empty()) {
    debug("No value for key:%@", key);
  } else {
    debug("Got value:%@ for key:%@", value, key);
  }
  return value;
}

void ZOVKPopupFileManager::saveValue(const std::optional<std::string>& value,
                                     const std::string& key) {
  constexpr DebugLog debug = fileManagerLog("ZOVKPopupFileManager::saveValue");
  debug("Save value:%@ for key:%@", value, key);
  if (key.empty()) {
    logError("key illegal");
    return;
  }
  if (value && !value->empty()) {
    platform_->settings.set(key, *value);
    platform_->settings.synchronize();
    debug("Save value:%@ for key:%@ done", value, key);
  } else {
    platform_->settings.remove(key);
    platform_->settings.synchronize();
    debug("Remove value for key:%@ done", key);
  }
}

std::optional<std::string> ZOVKPopupFileManager::getUUID() {
  constexpr DebugLog debug = fileManagerLog("ZOVKPopupFileManager::getUUID");
  constexpr const char* kInstallKey = "uuid";
  std::optional<std::string> identifier = valueForKey(kInstallKey);
  if (identifier->empty()) {
    identifier = platform_->device.identifierForVendor();
    // One that cannot be read now stays what it is.
    if (platform_->settings.isReadable()) saveValue(identifier, kInstallKey);
  }
  debug("UUID:%@", identifier);
  return identifier;
}

}  // namespace zovk
