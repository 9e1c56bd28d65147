#include "webhost/Addresses.h"

namespace zovk {
namespace {

/// Whether `address` is `file`, with or without a query or a fragment.
bool isAddressOf(const std::string& file, const std::string& address) {
  if (!address.starts_with(file)) return false;
  return address.size() == file.size() || address[file.size()] == '?' ||
         address[file.size()] == '#';
}

}  // namespace

void Addresses::remember(const std::string& written, const std::string& escaped) {
  const bool isFile = written.starts_with("file://");
  written_ = isFile ? written : "";
  escaped_ = isFile ? escaped : "";
}

std::string Addresses::asWritten(const std::string& address) const {
  if (escaped_.empty() || !isAddressOf(escaped_, address)) return address;
  return written_ + address.substr(escaped_.size());
}

}  // namespace zovk
