#pragma once

#include "zovkpopup/PublishTarget.h"

namespace zovk::tool {

/// An object store, reached by its own command line, which is run once for each object. The line
/// contains {file}, the file to store; {key}, its key; {type}, its media type; and {cache}, its
/// Cache-Control. Objects are stored uncompressed: their server compresses them.
class CommandTarget : public PublishTarget {
 public:
  /// Throws ToolError if the line lacks the file or the key.
  explicit CommandTarget(std::string line);

  void upload(const Release& release) override;
  /// Uploads lasting pages first, and the document last.
  void activate(const Release& release) override;

 private:
  void store(const Release& release, const std::string& file, const std::string& key,
             const char* cache) const;

  std::string line_;
};

}  // namespace zovk::tool
