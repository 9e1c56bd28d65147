#include "zovkpopup/PublishTarget.h"

#include "zovkpopup/CommandTarget.h"
#include "zovkpopup/FolderTarget.h"
#include "zovkpopup/SshTarget.h"
#include "zovkpopup/ToolError.h"

namespace zovk::tool {
namespace {

std::unique_ptr<PublishTarget> sshTarget(const std::string& text, const std::string& place) {
  const std::size_t end = place.find(':');
  if (end == std::string::npos || end == 0 || end + 1 == place.size() || place.front() == '-') {
    throw ToolError("--to " + text + ": is not ssh:HOST:FOLDER");
  }
  return std::make_unique<SshTarget>(place.substr(0, end), place.substr(end + 1));
}

}  // namespace

std::unique_ptr<PublishTarget> publishTarget(const std::string& text) {
  constexpr std::string_view kSsh = "ssh:";
  constexpr std::string_view kCommand = "command:";
  if (text.starts_with(kSsh)) return sshTarget(text, text.substr(kSsh.size()));
  if (text.starts_with(kCommand)) {
    return std::make_unique<CommandTarget>(text.substr(kCommand.size()));
  }
  return std::make_unique<FolderTarget>(text);
}

}  // namespace zovk::tool
