#include "e2e/remote/PrivateMounts.h"

#include <fstream>

#include <curl/curl.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

namespace zovk {
namespace {

void writeText(const char* path, const std::string& text) {
  std::ofstream(path) << text;
}

// In a user namespace of its own a process may mount without being root.
bool enterUserNamespace() {
  const std::string user = std::to_string(::getuid());
  const std::string group = std::to_string(::getgid());
  if (::unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) return false;
  writeText("/proc/self/setgroups", "deny");
  writeText("/proc/self/uid_map", user + " " + user + " 1");
  writeText("/proc/self/gid_map", group + " " + group + " 1");
  return true;
}

bool leaveCommonMounts() {
  if (::unshare(CLONE_NEWNS) != 0 && !enterUserNamespace()) return false;
  return ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

}  // namespace

SmallDisk::SmallDisk(const std::filesystem::path& directory, int kilobytes)
    : directory_(directory) {
  const std::string options = "size=" + std::to_string(kilobytes) + "k";
  mounted_ =
      leaveCommonMounts() && ::mount("tmpfs", directory.c_str(), "tmpfs", 0, options.c_str()) == 0;
}

SmallDisk::~SmallDisk() {
  if (mounted_) ::umount2(directory_.c_str(), MNT_DETACH);
}

bool trustOnly(const std::filesystem::path& certificates) {
  const char* const store = curl_version_info(CURLVERSION_NOW)->cainfo;
  return store != nullptr && leaveCommonMounts() &&
         ::mount(certificates.c_str(), store, nullptr, MS_BIND, nullptr) == 0;
}

}  // namespace zovk
