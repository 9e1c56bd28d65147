#pragma once

#include <cstddef>
#include <string_view>

namespace zovk {

/// Counts the values that a JSON text holds while it comes, before anybody makes them. It takes any
/// text: of one that is no JSON it says how much work it is to find that out.
class JsonValueCount {
 public:
  void add(std::string_view piece);
  std::size_t values() const { return values_; }

 private:
  std::size_t values_ = 1;
  char last_ = ' ';  // the sign before, unless it stands in a text
  bool inText_ = false;
  bool escaped_ = false;
};

}  // namespace zovk
