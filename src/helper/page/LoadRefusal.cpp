#include "helper/page/LoadRefusal.h"

#include <memory>

#include <glib.h>
#include <sys/stat.h>

namespace zovk::helper {
namespace {

/// Returns the path that a file's address names; empty if it names none.
std::string pathOf(const std::string& address) {
  const std::unique_ptr<GUri, decltype(&g_uri_unref)> parsed(
      g_uri_parse(address.c_str(), G_URI_FLAGS_NONE, nullptr), &g_uri_unref);
  return parsed ? g_uri_get_path(parsed.get()) : "";
}

}  // namespace

std::string loadRefusal(const std::string& address) {
  if (!address.starts_with("file:")) return {};
  const std::string path = pathOf(address);
  if (path.empty()) return "The address names no file";
  struct stat facts {};
  const bool exists = ::stat(path.c_str(), &facts) == 0;
  return exists && !S_ISREG(facts.st_mode) ? "The address names something else than a file" : "";
}

}  // namespace zovk::helper
