#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace zovk {

/// A running MD5 digest. One thread at a time; reusable after `finish`.
class Md5 {
 public:
  Md5();
  ~Md5();
  Md5(const Md5&) = delete;
  Md5& operator=(const Md5&) = delete;

  void update(std::string_view bytes);
  /// 32 lower-case hexadecimal digits of everything fed in; starts afresh afterwards.
  std::string finish();

 private:
  struct Context;
  std::unique_ptr<Context> context_;
};

/// The digest of one text, as 32 lower-case hexadecimal digits. Any thread.
std::string md5Hex(std::string_view bytes);

}  // namespace zovk
