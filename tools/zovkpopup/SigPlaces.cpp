#include "zovkpopup/SigPlaces.h"

#include <limits>

#include <boost/json/basic_parser_impl.hpp>

#include "text/JsonRead.h"

namespace zovk::tool {
namespace {

namespace json = boost::json;

// The parser reports here what it has just read, and how far it has read. The depth counts what is
// open: 1 in the document, 2 in "popups", 3 in an entry.
struct Finder {
  static constexpr std::size_t max_object_size = std::numeric_limits<std::size_t>::max();
  static constexpr std::size_t max_array_size = max_object_size;
  static constexpr std::size_t max_key_size = max_object_size;
  static constexpr std::size_t max_string_size = max_object_size;

  std::string_view text;
  std::size_t read = 0;  ///< Bytes, with the one that completed what is told.
  std::size_t depth = 0;
  bool inPopups = false;
  bool isSig = false;
  std::string key;
  std::size_t keyEnd = 0;
  std::vector<SigPlace> places;

  bool isEntryMember() const { return inPopups && depth == 3; }

  void beginValue() {
    if (inPopups && depth == 2) places.push_back({});
    if (isEntryMember() && isSig) {
      places.back().hasSig = true;
      places.back().begin = places.back().end = 0;
    }
  }

  bool open() {
    beginValue();
    ++depth;
    return true;
  }
  bool close() {
    --depth;
    if (depth < 2) inPopups = false;
    return true;
  }
  bool value() {
    beginValue();
    return true;
  }

  bool on_document_begin(json::error_code&) { return true; }
  bool on_document_end(json::error_code&) { return true; }
  bool on_object_begin(json::error_code&) {
    open();
    if (inPopups && depth == 3) {
      places.back().isObject = true;
      places.back().inside = read;
    }
    return true;
  }
  bool on_object_end(std::size_t, json::error_code&) { return close(); }
  bool on_array_begin(json::error_code&) {
    open();
    if (depth == 2 && key == "popups") {
      inPopups = true;
      places.clear();  // of a member that comes twice, the last counts
    }
    return true;
  }
  bool on_array_end(std::size_t, json::error_code&) { return close(); }
  bool on_key_part(json::string_view part, std::size_t size, json::error_code&) {
    if (size == part.size()) key.clear();
    key.append(part);
    return true;
  }
  bool on_key(json::string_view part, std::size_t size, json::error_code& error) {
    on_key_part(part, size, error);
    isSig = key == "sig";
    keyEnd = read;
    return true;
  }
  bool on_string_part(json::string_view, std::size_t, json::error_code&) { return true; }
  bool on_string(json::string_view, std::size_t, json::error_code&) {
    beginValue();
    if (isEntryMember() && isSig) {
      // Between a key and its text stands nothing but blanks and the colon.
      places.back().begin = text.find('"', keyEnd);
      places.back().end = read;
    }
    return true;
  }
  bool on_number_part(json::string_view, json::error_code&) { return true; }
  bool on_int64(std::int64_t, json::string_view, json::error_code&) { return value(); }
  bool on_uint64(std::uint64_t, json::string_view, json::error_code&) { return value(); }
  bool on_double(double, json::string_view, json::error_code&) { return value(); }
  bool on_bool(bool, json::error_code&) { return value(); }
  bool on_null(json::error_code&) { return value(); }
  bool on_comment_part(json::string_view, json::error_code&) { return true; }
  bool on_comment(json::string_view, json::error_code&) { return true; }
};

}  // namespace

std::vector<SigPlace> sigPlaces(std::string_view text) {
  const std::size_t mark = text.size() - withoutByteOrderMark(text).size();
  json::parse_options options;
  options.max_depth = kDeepestJson;
  json::basic_parser<Finder> parser(options);
  Finder& finder = parser.handler();
  finder.text = text;
  json::error_code error;
  // Byte by byte, as the parser does not say where it is.
  for (std::size_t at = mark; at < text.size() && !error; ++at) {
    finder.read = at + 1;
    parser.write_some(at + 1 < text.size(), &text[at], 1, error);
  }
  return error ? std::vector<SigPlace>() : finder.places;
}

}  // namespace zovk::tool
