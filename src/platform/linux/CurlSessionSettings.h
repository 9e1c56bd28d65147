#pragma once

#include <string>

namespace zovk {

struct CurlSessionSettings {
  /// A file that keeps downloads for the next time; empty for none.
  std::string cachePath;
  /// A PEM file with certificates to trust beside the system's; empty for none.
  std::string certificateAuthority;
};

}  // namespace zovk
