#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace zovk {

/// A running MD5 digest. One thread at a time; may be reused after `finish`.
class Md5 {
 public:
  Md5();
  ~Md5();
  Md5(const Md5&) = delete;
  Md5& operator=(const Md5&) = delete;

  void update(std::string_view bytes);
  /// Returns the digest of all added bytes as 32 lower-case hexadecimal digits, and starts again.
  std::string finish();

 private:
  struct Context;
  std::unique_ptr<Context> context_;
};

/// Returns the digest of one text, as 32 lower-case hexadecimal digits. Any thread.
std::string md5Hex(std::string_view bytes);

}  // namespace zovk
