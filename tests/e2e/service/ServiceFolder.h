#pragma once

#include <filesystem>
#include <string>

namespace zovk {

/// A temporary folder to serve; removed with the object.
class ServiceFolder {
 public:
  ServiceFolder();
  ~ServiceFolder();
  ServiceFolder(const ServiceFolder&) = delete;
  ServiceFolder& operator=(const ServiceFolder&) = delete;

  void write(const std::string& name, const std::string& text) const;
  std::string read(const std::string& name) const;
  std::string path(const std::string& name = "") const { return (root_ / name).string(); }

 private:
  std::filesystem::path root_;
};

}  // namespace zovk
