#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include <boost/json/value.hpp>

#include "record/ZOVKPopupModel.h"

namespace zovk {

/// A longer document is refused unread.
inline constexpr std::size_t kMostDocumentBytes = 8U * 1024 * 1024;
/// A document with more entries in its "popups" is refused.
inline constexpr std::size_t kMostDocumentEntries = 10'000;

/// What a configuration document says, and nothing else of it.
struct ConfigDocument {
  bool isObject = false;
  // Members of the head as they stand, but arrays and objects without what they hold.
  std::optional<boost::json::value> code;
  std::optional<boost::json::value> message;
  std::optional<boost::json::value> serverTime;
  std::size_t entryCount = 0;             ///< Of "popups"; 0 when that is no array, too.
  std::optional<std::string> wrongEntry;  ///< Why an entry cannot be a record.
  PopupList popups;                       ///< One for each object that is not empty, in order.
};

/// Reads a document in one pass that keeps only what it says, so that eight megabytes of anything
/// cost a start no more than eight megabytes of popups. Absent when the text is no JSON (`error`
/// then says why), and when `stopped` became true (`error` stays empty). The later of two members
/// with the same key counts. Any thread.
std::optional<ConfigDocument> readConfigDocument(std::string_view text, std::uint64_t configType,
                                                 const std::atomic<bool>& stopped,
                                                 std::string& error);

}  // namespace zovk
