#include "text/JsonSize.h"

#include <algorithm>

namespace zovk {

// A comma announces a value, and so does a bracket that is not closed at once.
void JsonSize::add(std::string_view piece) {
  for (const char sign : piece) {
    if (inText_) {
      inText_ = sign != '"' || escaped_;
      escaped_ = sign == '\\' && !escaped_;
      if (inText_) longestText_ = std::max(longestText_, ++text_);
      continue;
    }
    if ((last_ == '[' && sign != ']') || (last_ == '{' && sign != '}')) ++values_;
    if (sign == ',') ++values_;
    inText_ = sign == '"';
    text_ = 0;
    last_ = sign;
  }
}

}  // namespace zovk
