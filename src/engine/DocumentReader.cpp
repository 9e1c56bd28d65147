#include "engine/DocumentReader.h"

#include <algorithm>
#include <array>
#include <stdexcept>

#include <boost/json/basic_parser_impl.hpp>

#include "engine/DocumentParser.h"
#include "text/JsonRead.h"

namespace zovk {
namespace {

using Json = boost::json::value;

// Between two slices the reader may be stopped.
constexpr std::size_t kSlice = 64U * 1024;

// Gets what the JSON parser meets, and keeps what a document is read for: the head's members and
// the known keys of the entries of "popups". The rest is only checked.
class DocumentHandler {
 public:
  using Text = boost::json::string_view;
  using Error = boost::json::error_code;
  static constexpr std::size_t max_object_size = static_cast<std::size_t>(-1);
  static constexpr std::size_t max_array_size = static_cast<std::size_t>(-1);
  static constexpr std::size_t max_key_size = static_cast<std::size_t>(-1);
  static constexpr std::size_t max_string_size = static_cast<std::size_t>(-1);

  explicit DocumentHandler(std::uint64_t configType) : configType_(configType) {}
  ConfigDocument take() { return std::move(document_); }

  bool on_document_begin(Error& /*error*/) { return true; }
  bool on_document_end(Error& /*error*/) { return true; }
  bool on_object_begin(Error& /*error*/) { return openObject(); }
  bool on_object_end(std::size_t count, Error& /*error*/) { return closeObject(count); }
  bool on_array_begin(Error& /*error*/) { return openArray(); }
  bool on_array_end(std::size_t count, Error& /*error*/) { return closeArray(count); }
  bool on_key_part(Text part, std::size_t /*size*/, Error& /*error*/) { return addToKey(part); }
  bool on_key(Text part, std::size_t /*size*/, Error& /*error*/) { return endKey(part); }
  bool on_string_part(Text part, std::size_t /*size*/, Error& /*error*/) { return addText(part); }
  bool on_string(Text part, std::size_t /*size*/, Error& /*error*/) { return endText(part); }
  bool on_number_part(Text /*part*/, Error& /*error*/) { return true; }
  bool on_int64(std::int64_t number, Text /*text*/, Error& /*error*/) { return keep(number); }
  bool on_uint64(std::uint64_t number, Text /*text*/, Error& /*error*/) { return keep(number); }
  bool on_double(double number, Text /*text*/, Error& /*error*/) { return keep(number); }
  bool on_bool(bool flag, Error& /*error*/) { return keep(flag); }
  bool on_null(Error& /*error*/) { return keep(nullptr); }
  bool on_comment_part(Text /*part*/, Error& /*error*/) { return true; }
  bool on_comment(Text /*part*/, Error& /*error*/) { return true; }

 private:
  // Containers that are open where the document's parts lie.
  static constexpr std::size_t kInHead = 1;
  static constexpr std::size_t kInEntries = 2;
  static constexpr std::size_t kInEntry = 3;

  bool isInHead() const { return depth_ == kInHead && document_.isObject; }
  bool isInEntry() const { return depth_ == kInEntry && inEntry_; }

  bool openObject() {
    if (depth_ == 0) document_.isObject = true;
    if (depth_ == kInEntries && inEntries_) {
      inEntry_ = ++entries_ <= kMostDocumentEntries;
    } else if (slot_ != nullptr || isPopupsKey_) {
      keep(boost::json::object());
    }
    ++depth_;
    return true;
  }

  bool closeObject(std::size_t count) {
    --depth_;
    if (depth_ == kInEntries && inEntry_) endEntry(count);
    return true;
  }

  bool openArray() {
    const bool isPopups = isInHead() && isPopupsKey_;
    if (slot_ != nullptr || isPopupsKey_) keep(boost::json::array());
    if (isPopups) inEntries_ = true;
    ++depth_;
    return true;
  }

  bool closeArray(std::size_t count) {
    --depth_;
    if (depth_ == kInHead && inEntries_) {
      document_.entryCount = count;
      inEntries_ = false;
    }
    return true;
  }

  bool addToKey(Text part) {
    if (isInHead() || isInEntry()) key_.append(part.data(), part.size());
    return true;
  }

  // Says where the value that comes next belongs.
  bool endKey(Text part) {
    addToKey(part);
    slot_ = isInHead() ? headSlot() : isInEntry() ? fieldSlot() : nullptr;
    isPopupsKey_ = isInHead() && key_ == "popups";
    key_.clear();
    return true;
  }

  std::optional<Json>* headSlot() {
    if (key_ == "code") return &document_.code;
    if (key_ == "message") return &document_.message;
    return key_ == "server_time" ? &document_.serverTime : nullptr;
  }

  std::optional<Json>* fieldSlot() {
    const auto fields = documentFields();
    const auto found = std::find_if(fields.begin(), fields.end(),
                                    [this](const auto& field) { return field.key == key_; });
    return found != fields.end() ? &fields_[static_cast<std::size_t>(found - fields.begin())]
                                 : nullptr;
  }

  bool addText(Text part) {
    if (slot_ != nullptr) text_.append(part.data(), part.size());
    return true;
  }

  bool endText(Text part) {
    addText(part);
    if (slot_ != nullptr || isPopupsKey_) keep(text_);
    text_.clear();
    return true;
  }

  // Puts a value where its key says; a second "popups" takes the place of the first.
  template <class Value>
  bool keep(Value&& value) {
    if (slot_ != nullptr) slot_->emplace(std::forward<Value>(value));
    if (isPopupsKey_) forgetEntries();
    slot_ = nullptr;
    isPopupsKey_ = false;
    return true;
  }

  void forgetEntries() {
    document_.entryCount = 0;
    document_.wrongEntry.reset();
    document_.popups.clear();
    entries_ = 0;
  }

  void endEntry(std::size_t memberCount) {
    inEntry_ = false;
    if (memberCount == 0) return;
    try {
      document_.popups.push_back(popupFromFields(fields_, configType_));
    } catch (const std::invalid_argument& wrong) {
      if (!document_.wrongEntry) document_.wrongEntry = wrong.what();
    }
    fields_ = {};
  }

  const std::uint64_t configType_;
  ConfigDocument document_;
  std::size_t depth_ = 0;
  bool inEntries_ = false;
  bool inEntry_ = false;
  std::size_t entries_ = 0;              // objects of "popups" so far
  std::string key_;                      // as far as it was met
  std::string text_;                     // as far as it was met
  std::optional<Json>* slot_ = nullptr;  // where the next value belongs; null when it is not kept
  bool isPopupsKey_ = false;             // whether the next value is that of "popups"
  DocumentFieldValues fields_;           // of the entry that is being read
};

using DocumentParser = boost::json::basic_parser<DocumentHandler>;

// Parses slice by slice. False when stopped.
bool parseInSlices(DocumentParser& parser, std::string_view text, const std::atomic<bool>& stopped,
                   boost::json::error_code& error) {
  while (!text.empty() && !error) {
    if (stopped) return false;
    const std::string_view slice = text.substr(0, kSlice);
    const std::size_t used = parser.write_some(true, slice.data(), slice.size(), error);
    if (!error && used < slice.size()) error = boost::json::error::extra_data;
    text.remove_prefix(slice.size());
  }
  if (!error) parser.write_some(false, text.data(), 0, error);
  return true;
}

}  // namespace

std::optional<ConfigDocument> readConfigDocument(std::string_view text, std::uint64_t configType,
                                                 const std::atomic<bool>& stopped,
                                                 std::string& error) {
  boost::json::parse_options options;
  options.max_depth = kDeepestJson;
  DocumentParser parser(options, configType);
  boost::json::error_code code;
  if (!parseInSlices(parser, text, stopped, code)) return std::nullopt;
  if (code) {
    error = code.message();
    return std::nullopt;
  }
  return parser.handler().take();
}

}  // namespace zovk
