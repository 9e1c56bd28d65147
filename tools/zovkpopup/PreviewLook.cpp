#include "zovkpopup/PreviewLook.h"

#include <cstdlib>

namespace zovk::tool {

// The helper inherits the environment and takes its look from it.
void setLook(const PreviewOptions& options) {
  const auto set = [](const char* name, const std::string& value) {
    ::setenv(name, value.c_str(), 1);
  };
  if (options.theme == "light") set("GTK_THEME", "Default");
  if (options.theme == "dark") set("GTK_THEME", "Default-dark");
  if (options.theme == "high-contrast") set("GTK_THEME", "Default-hc");
  if (options.scale > 0) set("GDK_SCALE", std::to_string(options.scale));
}

}  // namespace zovk::tool
