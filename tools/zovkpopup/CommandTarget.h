#pragma once

#include "zovkpopup/PublishTarget.h"

namespace zovk::tool {

/// An object store, reached by its own command line, which is run once for each object. In it stand
/// {file}, what to store; {key}, as what; {type}, its media type; and {cache}, its Cache-Control.
/// Objects are stored uncompressed: what serves them compresses.
class CommandTarget : public PublishTarget {
 public:
  /// Throws ToolError when the line does not say what is stored as what.
  explicit CommandTarget(std::string line);

  void upload(const Release& release) override;
  /// Lasting pages first, and the document as the last object.
  void activate(const Release& release) override;

 private:
  void store(const Release& release, const std::string& file, const std::string& key,
             const char* cache) const;

  std::string line_;
};

}  // namespace zovk::tool
