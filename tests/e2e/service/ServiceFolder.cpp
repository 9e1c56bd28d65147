#include "e2e/service/ServiceFolder.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace zovk {

ServiceFolder::ServiceFolder() {
  std::string name = (std::filesystem::temp_directory_path() / "popup-service-XXXXXX").string();
  if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
  root_ = name;
  std::filesystem::create_directory(root_ / "pages");
}

ServiceFolder::~ServiceFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(root_, ignored);
}

void ServiceFolder::write(const std::string& name, const std::string& text) const {
  std::ofstream(root_ / name, std::ios::binary) << text;
}

std::string ServiceFolder::read(const std::string& name) const {
  std::ifstream file(root_ / name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace zovk
