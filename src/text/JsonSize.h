#pragma once

#include <cstddef>
#include <string_view>

namespace zovk {

/// Counts the values of a JSON text while it arrives, before anybody makes them. It accepts any
/// text: for one that is not JSON, the count says how much work it is to find that out.
class JsonValueCount {
 public:
  void add(std::string_view piece);
  std::size_t values() const { return values_; }

 private:
  std::size_t values_ = 1;
  char last_ = ' ';  // the character before, unless it is in a text
  bool inText_ = false;
  bool escaped_ = false;
};

}  // namespace zovk
