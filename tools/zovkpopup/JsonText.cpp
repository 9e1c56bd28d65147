#include "zovkpopup/JsonText.h"

#include <algorithm>

#include <boost/json/serialize.hpp>
#include <boost/json/stream_parser.hpp>

#include "text/JsonRead.h"

namespace zovk::tool {
namespace {

class PrettyWriter {
 public:
  void write(const boost::json::value& value) {
    if (const auto* object = value.if_object(); object != nullptr && !object->empty()) {
      return writeAll(*object, '{', '}', [this](const auto& member) {
        text_ += boost::json::serialize(member.key()) + ": ";
        write(member.value());
      });
    }
    if (const auto* array = value.if_array(); array != nullptr && !array->empty()) {
      return writeAll(*array, '[', ']', [this](const auto& element) { write(element); });
    }
    text_ += boost::json::serialize(value);
  }
  std::string take() { return std::move(text_) + "\n"; }

 private:
  template <class Container, class Write>
  void writeAll(const Container& container, char open, char close, Write writeOne) {
    text_ += open;
    indent_ += "  ";
    const char* separator = "\n";
    for (const auto& element : container) {
      text_ += separator + indent_;
      writeOne(element);
      separator = ",\n";
    }
    indent_.resize(indent_.size() - 2);
    text_ += "\n" + indent_ + close;
  }

  std::string text_;
  std::string indent_;
};

void locate(std::string_view text, std::size_t offset, JsonText& result) {
  const std::string_view before = text.substr(0, offset);
  const std::size_t lineEnd = before.rfind('\n');
  result.line = 1 + static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n'));
  result.column = 1 + (lineEnd == std::string_view::npos ? offset : offset - lineEnd - 1);
}

}  // namespace

JsonText parseJson(std::string_view text) {
  text = withoutByteOrderMark(text);
  boost::json::parse_options options;
  options.max_depth = kDeepestJson;
  boost::json::stream_parser parser({}, options);
  boost::json::error_code error;
  const std::size_t read = parser.write_some(text.data(), text.size(), error);
  if (!error) {
    const std::size_t rest = text.find_first_not_of(" \t\r\n", read);
    if (rest != std::string_view::npos) error = boost::json::error::extra_data;
  }
  if (!error) parser.finish(error);
  JsonText result;
  if (error) {
    result.error = error.message();
    locate(text, read, result);
  } else {
    result.value = parser.release();
  }
  return result;
}

std::string prettyJson(const boost::json::value& value) {
  PrettyWriter writer;
  writer.write(value);
  return writer.take();
}

}  // namespace zovk::tool
