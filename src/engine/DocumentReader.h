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

/// The parts of a configuration document that the engine uses.
struct ConfigDocument {
  bool isObject = false;
  // Members of the head, unchanged, except that arrays and objects are empty.
  std::optional<boost::json::value> code;
  std::optional<boost::json::value> message;
  std::optional<boost::json::value> serverTime;
  std::size_t entryCount = 0;             ///< The length of "popups"; 0 also if it is not an array.
  std::optional<std::string> wrongEntry;  ///< The reason why an entry cannot be a record.
  PopupList popups;  ///< One record for each object that is not empty, in order.
};

/// Reads a document in one pass that keeps only the members that count, so that eight megabytes of
/// anything cost a start no more than eight megabytes of popups. Returns nothing if the text is not
/// JSON (`error` then has the reason) or if `stopped` became true (`error` stays empty). Of two
/// members with the same key the later one counts. Any thread.
std::optional<ConfigDocument> readConfigDocument(std::string_view text, std::uint64_t configType,
                                                 const std::atomic<bool>& stopped,
                                                 std::string& error);

}  // namespace zovk
