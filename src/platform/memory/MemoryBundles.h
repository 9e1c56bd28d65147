#pragma once

#include <memory>
#include <string>
#include <string_view>

#include <boost/json/object.hpp>

#include "platform/memory/MemoryFileSystem.h"
#include "zovkpopup/platform/Bundles.h"

namespace zovk {

/// Bundles that are directories of the memory file system, with "Info.json" as info dictionary. Any
/// thread. Refers to the file system, which must outlive this object and the bundles it opened.
/// Each call opens the bundle in its present state.
class MemoryBundles final : public Bundles {
 public:
  static constexpr const char* kMainPath = "/app";
  static constexpr const char* kResourcePath = "/app/ZOVKPopupResource.bundle";

  explicit MemoryBundles(MemoryFileSystem& files);
  std::shared_ptr<const Bundle> mainBundle() const override;
  std::shared_ptr<const Bundle> bundleWithPath(const std::string& path) const override;

  /// Replaces the main bundle's info dictionary.
  void setMainInfo(const boost::json::object& info);
  /// Puts a file into the resource bundle.
  void addResource(const std::string& name, std::string_view text);
  /// Removes the resource bundle.
  void removeResourceBundle();

 private:
  MemoryFileSystem& files_;
};

}  // namespace zovk
