#include "platform/memory/MemoryBundles.h"

#include <boost/json/serialize.hpp>

#include "text/JsonRead.h"

namespace zovk {
namespace {

class MemoryBundle final : public Bundle {
 public:
  MemoryBundle(const MemoryFileSystem& files, std::string path)
      : files_(files), path_(std::move(path)), info_(readInfo()) {}

  std::string resourcePath() const override { return path_; }
  const boost::json::object& infoDictionary() const override { return info_; }

  std::optional<std::string> pathForResource(const std::string& name,
                                             const std::string& type) const override {
    std::string path = path_ + "/" + name;
    if (!type.empty()) path += "." + type;
    if (name.empty() || !files_.exists(path)) return std::nullopt;
    return path;
  }

 private:
  boost::json::object readInfo() const {
    const auto text = files_.read(path_ + "/Info.json");
    boost::json::error_code error;
    auto value = readJson(text.value_or(""), error);
    return !error && value.is_object() ? std::move(value.as_object()) : boost::json::object();
  }

  const MemoryFileSystem& files_;
  const std::string path_;
  const boost::json::object info_;
};

}  // namespace

MemoryBundles::MemoryBundles(MemoryFileSystem& files) : files_(files) {
  files_.addDirectory(kResourcePath);
}

std::shared_ptr<const Bundle> MemoryBundles::mainBundle() const {
  return std::make_shared<MemoryBundle>(files_, kMainPath);
}

std::shared_ptr<const Bundle> MemoryBundles::bundleWithPath(const std::string& path) const {
  if (!files_.isDirectory(path)) return nullptr;
  return std::make_shared<MemoryBundle>(files_, path);
}

void MemoryBundles::setMainInfo(const boost::json::object& info) {
  files_.addFile(std::string(kMainPath) + "/Info.json", boost::json::serialize(info));
}

void MemoryBundles::addResource(const std::string& name, std::string_view text) {
  files_.addFile(std::string(kResourcePath) + "/" + name, text);
}

void MemoryBundles::removeResourceBundle() {
  files_.take(kResourcePath);
}

}  // namespace zovk
