#include "zovkpopup/PageText.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <cstdint>
#include <string_view>
#include <utility>

#include <iconv.h>

#include "support/Utf8.h"
#include "text/LowerCase.h"
#include "zovkpopup/HtmlTree.h"

namespace zovk::tool {
namespace {

using Name = std::pair<std::string_view, const char*>;

constexpr const char* kUtf8 = "UTF-8";
constexpr const char* kWestern = "CP1252";
constexpr const char* kChinese = "GB18030";
constexpr const char* kJapanese = "CP932";
constexpr const char* kKorean = "CP949";

// What pages call an encoding, and what the C library calls the one that browsers take for it.
constexpr std::array<Name, 52> kNames{{
    {"utf-8", kUtf8},
    {"utf8", kUtf8},
    // Such a name in the page's own text cannot be true.
    {"utf-16", kUtf8},
    {"utf-16le", kUtf8},
    {"utf-16be", kUtf8},
    {"windows-1252", kWestern},
    {"cp1252", kWestern},
    {"iso-8859-1", kWestern},
    {"iso8859-1", kWestern},
    {"latin1", kWestern},
    {"ascii", kWestern},
    {"us-ascii", kWestern},
    {"windows-1250", "CP1250"},
    {"windows-1251", "CP1251"},
    {"cp1251", "CP1251"},
    {"windows-1253", "CP1253"},
    {"windows-1254", "CP1254"},
    {"iso-8859-9", "CP1254"},
    {"windows-1255", "CP1255"},
    {"windows-1256", "CP1256"},
    {"windows-1257", "CP1257"},
    {"windows-1258", "CP1258"},
    {"iso-8859-2", "ISO-8859-2"},
    {"iso-8859-3", "ISO-8859-3"},
    {"iso-8859-4", "ISO-8859-4"},
    {"iso-8859-5", "ISO-8859-5"},
    {"iso-8859-6", "ISO-8859-6"},
    {"iso-8859-7", "ISO-8859-7"},
    {"iso-8859-8", "ISO-8859-8"},
    {"iso-8859-10", "ISO-8859-10"},
    {"iso-8859-13", "ISO-8859-13"},
    {"iso-8859-14", "ISO-8859-14"},
    {"iso-8859-15", "ISO-8859-15"},
    {"iso-8859-16", "ISO-8859-16"},
    {"windows-874", "CP874"},
    {"tis-620", "CP874"},
    {"koi8-r", "KOI8-R"},
    {"koi8-u", "KOI8-U"},
    {"ibm866", "CP866"},
    {"macintosh", "MACINTOSH"},
    {"gb2312", kChinese},
    {"gbk", kChinese},
    {"gb18030", kChinese},
    {"big5", "BIG5-HKSCS"},
    {"euc-jp", "EUC-JP"},
    {"iso-2022-jp", "ISO-2022-JP"},
    {"shift_jis", kJapanese},
    {"shift-jis", kJapanese},
    {"sjis", kJapanese},
    {"windows-31j", kJapanese},
    {"euc-kr", kKorean},
    {"ks_c_5601-1987", kKorean},
}};

/// A conversion of the C library into UTF-8.
class Conversion {
 public:
  explicit Conversion(const char* from) : handle_(::iconv_open(kUtf8, from)) {}
  ~Conversion() {
    if (isKnown()) ::iconv_close(handle_);
  }
  Conversion(const Conversion&) = delete;
  Conversion& operator=(const Conversion&) = delete;

  bool isKnown() const { return handle_ != std::bit_cast<iconv_t>(std::intptr_t{-1}); }

  /// Returns the bytes as UTF-8; where `unit` bytes belong to no character, U+FFFD.
  std::string convert(std::string bytes, std::size_t unit) const {
    std::string result;
    std::array<char, 65536> buffer;
    char* in = bytes.data();
    std::size_t left = bytes.size();
    while (left > 0) {
      char* out = buffer.data();
      std::size_t room = buffer.size();
      const bool failed = ::iconv(handle_, &in, &left, &out, &room) == static_cast<std::size_t>(-1);
      const bool isOdd = failed && errno != E2BIG;
      result.append(buffer.data(), buffer.size() - room);
      if (!isOdd) continue;
      result += "\xEF\xBF\xBD";
      in += std::min(unit, left);
      left -= std::min(unit, left);
    }
    return result;
  }

 private:
  iconv_t handle_;
};

std::optional<std::string> converted(std::string bytes, const char* encoding, std::size_t unit) {
  const Conversion conversion(encoding);
  if (!conversion.isKnown()) return std::nullopt;
  return conversion.convert(std::move(bytes), unit);
}

// Browsers look for it at the beginning only, too.
std::string namedEncoding(const std::string& page) {
  constexpr std::size_t kHead = 64U * 1024U;
  const HtmlTree head = readHtmlBytes(page.substr(0, kHead));
  return head == nullptr ? "" : lowerCase(std::string(htmlText(head->encoding)));
}

}  // namespace

std::optional<std::string> pageText(const std::string& page) {
  if (page.starts_with("\xEF\xBB\xBF")) return repairedUtf8(page);
  if (page.starts_with("\xFF\xFE")) return converted(page.substr(2), "UTF-16LE", 2);
  if (page.starts_with("\xFE\xFF")) return converted(page.substr(2), "UTF-16BE", 2);
  const std::string name = namedEncoding(page);
  if (name.empty()) return converted(page, kWestern, 1);
  const auto* const found = std::find_if(
      kNames.begin(), kNames.end(), [&name](const Name& known) { return known.first == name; });
  if (found == kNames.end()) return std::nullopt;
  if (found->second == kUtf8) return repairedUtf8(page);
  return converted(page, found->second, 1);
}

}  // namespace zovk::tool
