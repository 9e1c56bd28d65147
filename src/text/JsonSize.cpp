#include "text/JsonSize.h"

namespace zovk {

// A comma announces a value, and so does a bracket that is not closed at once.
void JsonValueCount::add(std::string_view piece) {
  for (const char sign : piece) {
    if (inText_) {
      if (sign == '"' && !escaped_) inText_ = false;
      escaped_ = sign == '\\' && !escaped_;
      continue;
    }
    if ((last_ == '[' && sign != ']') || (last_ == '{' && sign != '}')) ++values_;
    if (sign == ',') ++values_;
    inText_ = sign == '"';
    last_ = sign;
  }
}

}  // namespace zovk
