#pragma once

#include <cstddef>
#include <string>

#include "fixtures/ChildProcess.h"
#include "fixtures/LocalBundle.h"

namespace zovk {

/// The development service in a separate process, on a folder with pages of 64 KiB.
class LocalService {
 public:
  static constexpr const char* kGame = "1001";
  static constexpr const char* kKey = "s3cret-key";
  static constexpr std::size_t kPageBytes = 64 * 1024;

  explicit LocalService(int pages);

  const std::string& base() const { return base_; }
  std::string pageUrl(int number) const;

 private:
  ScratchDirectory folder_;
  ChildProcess process_;
  const std::string base_;
};

}  // namespace zovk
