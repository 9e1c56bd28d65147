#include "zovkpopup/OwnFolder.h"

#include <string>
#include <system_error>

#include <stdlib.h>

#include "zovkpopup/ToolError.h"

namespace zovk::tool {

namespace fs = std::filesystem;

OwnFolder::OwnFolder() {
  std::string pattern = (fs::temp_directory_path() / "zovkpopup-XXXXXX").string();
  if (::mkdtemp(pattern.data()) == nullptr)
    throw ToolError(pattern + ": cannot be made", kCannotCreate);
  path_ = pattern;
}

OwnFolder::~OwnFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

}  // namespace zovk::tool
