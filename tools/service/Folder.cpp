#include "service/Folder.h"

#include <fstream>
#include <iterator>

#include <sys/stat.h>

#include "text/JsonRead.h"

namespace zovk::service {
namespace {

constexpr off_t kLargestFile = 64 << 20;

bool cannotStandInName(char c) {
  return c == '/' || c == '\\' || static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
}

}  // namespace

bool isPlainName(std::string_view name) {
  if (name.empty() || name.front() == '.') return false;
  for (char c : name) {
    if (cannotStandInName(c)) return false;
  }
  return true;
}

std::optional<FolderFile> Folder::read(const std::filesystem::path& name) const {
  const std::filesystem::path file = path(name);
  struct stat facts {};
  if (::stat(file.c_str(), &facts) != 0 || !S_ISREG(facts.st_mode)) return std::nullopt;
  if (facts.st_size > kLargestFile) throw FolderError(name.string() + ": too large");
  std::ifstream stream(file, std::ios::binary);
  FolderFile result{std::string(std::istreambuf_iterator<char>(stream), {}), facts.st_mtime};
  if (!stream) throw FolderError(name.string() + ": cannot be read");
  return result;
}

std::optional<boost::json::object> Folder::readObject(const std::string& name) const {
  const auto file = read(name);
  if (!file) return std::nullopt;
  return objectOf(file->bytes, name);
}

boost::json::object objectOf(const std::string& text, const std::string& what) {
  boost::json::error_code error;
  boost::json::value value = readJson(withoutByteOrderMark(text), error);
  if (error) throw FolderError(what + ": not JSON: " + error.message());
  if (!value.is_object()) throw FolderError(what + ": not a JSON object");
  return std::move(value.get_object());
}

}  // namespace zovk::service
