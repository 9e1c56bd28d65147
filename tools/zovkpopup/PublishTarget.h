#pragma once

#include <memory>
#include <string>

#include "zovkpopup/Release.h"

namespace zovk::tool {

/// A place that games are served from. What it cannot do is thrown as a ToolError, and has changed
/// nothing that games are given, unless `activate` was in the middle of lasting pages.
class PublishTarget {
 public:
  virtual ~PublishTarget() = default;

  /// Brings what no game is told of yet. What is there already stays or is replaced by the same.
  virtual void upload(const Release& release) = 0;
  /// From now on games are given this release, which was uploaded some time before.
  virtual void activate(const Release& release) = 0;
};

/// The target that a text names: a folder, `ssh:HOST:FOLDER`, or `command:` with a command line
/// that stores one object. Throws ToolError when it names none.
std::unique_ptr<PublishTarget> publishTarget(const std::string& text);

}  // namespace zovk::tool
