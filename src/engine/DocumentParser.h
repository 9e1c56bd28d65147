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

/// A key of an entry of the document's "popups", and the field of the record that it fills.
struct DocumentField {
  using Number = std::int32_t ZOVKPopupModel::*;
  using Kind = std::uint64_t ZOVKPopupModel::*;  ///< An integer too, widened with its sign.
  using Text = std::string ZOVKPopupModel::*;

  std::string_view key;
  std::variant<Number, Kind, Text> field;

  bool isText() const { return std::holds_alternative<Text>(field); }
};

/// All keys that an entry may have, in the order in which they are read.
std::span<const DocumentField> documentFields();

/// The values of one entry in the order of `documentFields`; absent where the key is missing.
using DocumentFieldValues = std::array<std::optional<boost::json::value>, 15>;

/// One record of an entry of the document's "popups". Every key is read, so a missing one gives 0
/// or an empty text rather than the record's default. Throws `std::invalid_argument` when a
/// number's key holds null, an array or an object. A text's key with another value counts as
/// absent.
PopupPointer popupFromFields(const DocumentFieldValues& values, std::uint64_t configType);

}  // namespace zovk
