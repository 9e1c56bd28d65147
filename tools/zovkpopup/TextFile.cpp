#include "zovkpopup/TextFile.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>

#include "zovkpopup/ToolError.h"

namespace zovk::tool {
namespace {

[[noreturn]] void failReading(const std::filesystem::path& path, const char* why, ExitCode code) {
  throw ToolError(path.string() + ": cannot be read: " + why, code);
}

}  // namespace

std::string readFile(const std::filesystem::path& path) {
  std::error_code ignored;
  if (std::filesystem::is_directory(path, ignored)) failReading(path, "it is a folder", kNoInput);
  std::ifstream file(path, std::ios::binary);
  if (!file) failReading(path, std::strerror(errno), kNoInput);
  std::string bytes(std::istreambuf_iterator<char>(file), {});
  if (file.bad()) failReading(path, std::strerror(errno), kInputOutput);
  return bytes;
}

void writeFile(const std::filesystem::path& path, std::string_view bytes) {
  std::ofstream file(path, std::ios::binary);
  file << bytes;
  file.close();
  if (!file) {
    throw ToolError(path.string() + ": cannot be written: " + std::strerror(errno), kCannotCreate);
  }
}

bool isAddress(std::string_view target) {
  return target.find("://") != std::string_view::npos;
}

}  // namespace zovk::tool
