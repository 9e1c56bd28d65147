#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "zovkpopup/platform/Bundles.h"
#include "zovkpopup/platform/FileSystem.h"

namespace zovk {

/// A directory with resources and, in "Info.json", its info dictionary. A broken dictionary is
/// logged once.
class DirectoryBundle : public Bundle {
 public:
  /// `elsewhere` has, by file name, the paths of resources that the directory lacks.
  DirectoryBundle(const FileSystem& files, std::string path,
                  std::map<std::string, std::string> elsewhere = {});

  std::string resourcePath() const override;
  const boost::json::object& infoDictionary() const override;
  std::optional<std::string> pathForResource(const std::string& name,
                                             const std::string& type) const override;

 private:
  boost::json::object readInfo() const;

  const FileSystem& files_;
  const std::string path_;
  const std::map<std::string, std::string> elsewhere_;
  mutable std::once_flag infoRead_;
  mutable boost::json::object info_;
};

/// Bundles in directories. The main bundle is the host's resource directory. If the host ships no
/// resource bundle, the one installed with the library is used. The file system must outlive this
/// object and its bundles.
class LinuxBundles : public Bundles {
 public:
  /// An empty directory means the program's directory.
  LinuxBundles(const FileSystem& files, const std::string& resourceDirectory);

  std::shared_ptr<const Bundle> mainBundle() const override { return main_; }
  std::shared_ptr<const Bundle> bundleWithPath(const std::string& path) const override;

 private:
  const FileSystem& files_;
  std::shared_ptr<const Bundle> main_;
};

}  // namespace zovk
