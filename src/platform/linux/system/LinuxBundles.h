#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "zovkpopup/platform/Bundles.h"
#include "zovkpopup/platform/FileSystem.h"

namespace zovk {

/// A directory with resources and, in "Info.json", its info dictionary. A dictionary that is there
/// but broken is logged once.
class DirectoryBundle : public Bundle {
 public:
  /// `elsewhere` gives, by file name, the paths of resources for when the directory lacks them.
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

/// Bundles in directories. The main bundle is the host's resource directory; the resource bundle
/// installed with the library stands in when the host ships none. The file system must outlive it
/// and its bundles.
class LinuxBundles : public Bundles {
 public:
  /// An empty directory stands for that of the program.
  LinuxBundles(const FileSystem& files, const std::string& resourceDirectory);

  std::shared_ptr<const Bundle> mainBundle() const override { return main_; }
  std::shared_ptr<const Bundle> bundleWithPath(const std::string& path) const override;

 private:
  const FileSystem& files_;
  std::shared_ptr<const Bundle> main_;
};

}  // namespace zovk
