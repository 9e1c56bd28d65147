#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_set>

namespace zovk {

/// A text that is searched for many others: a record of keys, separated by commas. The answers are
/// those of a search in the whole text. But most keys are found, or known to be missing, without
/// such a search, because ten thousand popups may ask for ten thousand keys. Immutable, any thread.
class RecordText {
 public:
  explicit RecordText(std::string text);
  RecordText(const RecordText&) = delete;
  RecordText& operator=(const RecordText&) = delete;

  const std::string& text() const { return text_; }
  /// Returns whether `part` occurs anywhere in the text.
  bool contains(std::string_view part) const;

 private:
  const std::string text_;
  const std::unordered_set<std::string_view> keys_;
  std::size_t longestKey_ = 0;
};

}  // namespace zovk
