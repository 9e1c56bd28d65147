#include "support/Utf8.h"

#include <boost/locale/utf.hpp>

namespace zovk {

bool isUtf8(std::string_view bytes) {
  namespace utf = boost::locale::utf;
  const char* position = bytes.data();
  const char* const end = position + bytes.size();
  while (position != end) {
    if (!utf::is_valid_codepoint(utf::utf_traits<char>::decode(position, end))) return false;
  }
  return true;
}

}  // namespace zovk
