#pragma once

#include <memory>
#include <string>

#include "zovkpopup/Release.h"

namespace zovk::tool {

/// A place from which games are served. Failures are thrown as ToolError. A failure changes nothing
/// for games, unless `activate` was in the middle of lasting pages.
class PublishTarget {
 public:
  virtual ~PublishTarget() = default;

  /// Uploads files that no game knows of yet. Existing ones stay, or are replaced by the same
  /// bytes.
  virtual void upload(const Release& release) = 0;
  /// Puts a release live that was uploaded before.
  virtual void activate(const Release& release) = 0;
};

/// Returns the target that a text names: a folder, `ssh:HOST:FOLDER`, or `command:` with a command
/// line that stores one object. Throws ToolError if it names none.
std::unique_ptr<PublishTarget> publishTarget(const std::string& text);

}  // namespace zovk::tool
