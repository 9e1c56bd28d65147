#include "platform/linux/system/Container.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include <fmt/format.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/linux/system/Paths.h"
#include "platform/linux/system/PrivateFile.h"

namespace zovk {
namespace {

namespace fs = std::filesystem;

bool belongsInName(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '.' ||
         c == '-' || c == '_';
}

// Relative paths in the environment are to be ignored.
std::string absoluteVariable(const char* name) {
  const char* const value = std::getenv(name);
  return value != nullptr && *value == '/' ? value : "";
}

std::string userHome() {
  if (std::string home = absoluteVariable("HOME"); !home.empty()) return home;
  passwd entry{};
  passwd* found = nullptr;
  std::array<char, 4096> buffer;
  ::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found);
  return found != nullptr && found->pw_dir != nullptr ? found->pw_dir : "/";
}

std::string userDataDirectory() {
  const std::string data = absoluteVariable("XDG_DATA_HOME");
  return data.empty() ? userHome() + "/.local/share" : data;
}

void makeDirectory(const fs::path& path, PlatformLog& log) {
  std::error_code ignored;
  if (path.empty() || fs::is_directory(path, ignored)) return;
  if (path.has_relative_path()) makeDirectory(path.parent_path(), log);
  if (::mkdir(path.c_str(), 0700) == 0) return makePrivateDirectory(path.string());
  if (errno == EEXIST) return;
  const std::string reason = std::generic_category().message(errno);
  log.writeLine(
      fmt::format("[Error] Create container directory:{} failed, error:{}", path.string(), reason));
}

}  // namespace

std::string applicationId(const ZOVKPopupHostSettings& settings) {
  std::string name = settings.applicationId;
  if (name.empty()) name = fs::path(programPath()).filename().string();
  std::replace_if(
      name.begin(), name.end(), [](char c) { return !belongsInName(c); }, '_');
  // A name of nothing but dots would be a directory above.
  const bool usable = name.find_first_not_of('.') != std::string::npos;
  return usable ? name : "zovkpopup-game";
}

std::string containerDirectory(const ZOVKPopupHostSettings& settings) {
  if (!settings.dataDirectory.empty()) return absolutePath(settings.dataDirectory);
  return absolutePath(userDataDirectory() + "/" + applicationId(settings));
}

void makeContainer(const std::string& home, PlatformLog& log) {
  const fs::path library = fs::path(home) / "Library";
  makeDirectory(library / "Caches", log);
  makeDirectory(library / "Preferences", log);
  for (const fs::path& part : {library, library / "Caches", library / "Preferences"}) {
    makePrivateDirectory(part.string());
  }
  std::error_code error;
  for (fs::directory_iterator cache(library / "Caches", error), end; !error && cache != end;
       cache.increment(error)) {
    makePrivateDirectory(cache->path().string());
  }
}

}  // namespace zovk
