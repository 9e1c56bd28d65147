#pragma once

#include "zovkpopup/PublishTarget.h"

namespace zovk::tool {

/// A folder like that of FolderTarget on another machine, reached by ssh. The other side needs a
/// shell, tar and GNU's commands for files.
class SshTarget : public PublishTarget {
 public:
  SshTarget(std::string host, std::string site) : host_(std::move(host)), site_(std::move(site)) {}

  void upload(const Release& release) override;
  void activate(const Release& release) override;

 private:
  std::string onHost(const std::string& script) const;

  std::string host_;
  std::string site_;
};

}  // namespace zovk::tool
