#pragma once

#include <cstddef>
#include <string_view>

namespace zovk {

/// Measures a JSON text while it arrives, before anybody makes its values. It accepts any text: for
/// one that is not JSON, the count of values says how much work it is to find that out.
class JsonSize {
 public:
  void add(std::string_view piece);
  std::size_t values() const { return values_; }
  /// Returns the bytes of the longest text or key, as they are written; also of one whose end has
  /// not come yet.
  std::size_t longestText() const { return longestText_; }

 private:
  std::size_t values_ = 1;
  std::size_t longestText_ = 0;
  std::size_t text_ = 0;  // bytes of the text that was begun last
  char last_ = ' ';       // the character before, unless it is in a text
  bool inText_ = false;
  bool escaped_ = false;
};

}  // namespace zovk
