#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include <boost/json/value.hpp>

#include "record/ZOVKPopupModel.h"

namespace zovk {

/// A key of an entry in the document's "popups", and the field of the record that it fills.
struct DocumentField {
  using Number = std::int32_t ZOVKPopupModel::*;
  using Kind = std::uint64_t ZOVKPopupModel::*;  ///< An integer too, widened with its sign.
  using Text = std::string ZOVKPopupModel::*;

  std::string_view key;
  std::variant<Number, Kind, Text> field;

  bool isText() const { return std::holds_alternative<Text>(field); }
};

/// Returns all keys that an entry may have, in the order of reading.
std::span<const DocumentField> documentFields();

/// The values of one entry in the order of `documentFields`; absent if the key is missing.
using DocumentFieldValues = std::array<std::optional<boost::json::value>, 15>;

/// Makes the record of an entry in the document's "popups". Every key is read, so a missing one
/// gives 0 or an empty text, not the record's default. Throws `std::invalid_argument` if the key of
/// a number holds null, an array or an object. If the key of a text holds anything else, it counts
/// as absent.
PopupPointer popupFromFields(const DocumentFieldValues& values, std::uint64_t configType);

}  // namespace zovk
