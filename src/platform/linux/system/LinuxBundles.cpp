#include "platform/linux/system/LinuxBundles.h"

#include <filesystem>
#include <system_error>
#include <utility>

#include "logging/ZPLogger.h"
#include "platform/linux/system/Paths.h"
#include "text/JsonRead.h"

namespace zovk {
namespace {

namespace fs = std::filesystem;

constexpr const char* kResourceBundle = "ZOVKPopupResource.bundle";

std::map<std::string, std::string> installedResources() {
  std::map<std::string, std::string> resources;
  const std::string name = kResourceBundle;
  if (auto path = findInstalled(name)) resources.emplace(name, *path);
  return resources;
}

std::string programDirectory() {
  return fs::path(programPath()).parent_path().string();
}

}  // namespace

DirectoryBundle::DirectoryBundle(const FileSystem& files, std::string path,
                                 std::map<std::string, std::string> elsewhere)
    : files_(files), path_(std::move(path)), elsewhere_(std::move(elsewhere)) {}

std::string DirectoryBundle::resourcePath() const {
  return path_;
}

const boost::json::object& DirectoryBundle::infoDictionary() const {
  std::call_once(infoRead_, [this] { info_ = readInfo(); });
  return info_;
}

boost::json::object DirectoryBundle::readInfo() const {
  const auto text = files_.read(path_ + "/Info.json");
  if (!text) return {};
  boost::system::error_code error;
  boost::json::value value = readJson(*text, error);
  if (!error && value.is_object()) return std::move(value.get_object());
  logError("Info dictionary of %@ is broken", path_);
  return {};
}

std::optional<std::string> DirectoryBundle::pathForResource(const std::string& name,
                                                            const std::string& type) const {
  const std::string fileName = type.empty() ? name : name + "." + type;
  if (name.empty()) return std::nullopt;
  std::string path = path_ + "/" + fileName;
  if (files_.exists(path)) return path;
  const auto found = elsewhere_.find(fileName);
  return found == elsewhere_.end() ? std::nullopt : std::optional(found->second);
}

LinuxBundles::LinuxBundles(const FileSystem& files, const std::string& resourceDirectory)
    : files_(files),
      main_(std::make_shared<DirectoryBundle>(
          files, absolutePath(resourceDirectory.empty() ? programDirectory() : resourceDirectory),
          installedResources())) {}

std::shared_ptr<const Bundle> LinuxBundles::bundleWithPath(const std::string& path) const {
  std::error_code error;
  if (path.empty() || path.find('\0') != std::string::npos) return nullptr;
  if (!fs::is_directory(path, error)) return nullptr;
  return std::make_shared<DirectoryBundle>(files_, absolutePath(path));
}

}  // namespace zovk
