#include "zovkpopup/TextFile.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>

#include "zovkpopup/ToolError.h"

namespace zovk::tool {
namespace {

[[noreturn]] void fail(const std::filesystem::path& path, const char* doing, const char* why) {
  throw ToolError(path.string() + ": cannot be " + doing + ": " + why);
}

}  // namespace

std::string readFile(const std::filesystem::path& path) {
  std::error_code ignored;
  if (std::filesystem::is_directory(path, ignored)) fail(path, "read", "it is a folder");
  std::ifstream file(path, std::ios::binary);
  if (!file) fail(path, "read", std::strerror(errno));
  std::string bytes(std::istreambuf_iterator<char>(file), {});
  if (file.bad()) fail(path, "read", std::strerror(errno));
  return bytes;
}

void writeFile(const std::filesystem::path& path, std::string_view bytes) {
  std::ofstream file(path, std::ios::binary);
  file << bytes;
  file.close();
  if (!file) fail(path, "written", std::strerror(errno));
}

bool isAddress(std::string_view target) {
  return target.find("://") != std::string_view::npos;
}

}  // namespace zovk::tool
