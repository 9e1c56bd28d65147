#include "engine/DocumentParser.h"

#include <cstddef>

#include "text/JsonNumbers.h"

namespace zovk {
namespace {

using Model = ZOVKPopupModel;

constexpr std::array<DocumentField, std::tuple_size_v<DocumentFieldValues>> kFields = {
    {{"pop_id", &Model::pop_id},
     {"scene", &Model::scene},
     {"scene_type", &Model::scene_type},
     {"valid_platform", &Model::valid_platform},
     {"pop_type", &Model::pop_type},
     {"content_type", &Model::content_type},
     {"uri", &Model::uri},
     {"sig", &Model::sig},
     {"pop_freq", &Model::pop_freq},
     {"priority", &Model::priority},
     {"publish_time", &Model::publish_time},
     {"check_url", &Model::check_url},
     {"report_url", &Model::report_url},
     {"valid_time", &Model::valid_time},
     {"expire_time", &Model::expire_time}}};

// Puts the value of a key, or what a missing one counts as, into the record.
class FieldReader {
 public:
  FieldReader(const std::optional<boost::json::value>& value, Model& popup)
      : value_(value), popup_(popup) {}

  void operator()(DocumentField::Number field) const { popup_.*field = number(); }
  void operator()(DocumentField::Kind field) const {
    popup_.*field = static_cast<std::uint64_t>(std::int64_t{number()});  // widened with its sign
  }
  void operator()(DocumentField::Text field) const {
    if (value_ && value_->is_string()) popup_.*field = value_->get_string();
  }

 private:
  std::int32_t number() const { return value_ ? intValue(*value_) : 0; }

  const std::optional<boost::json::value>& value_;
  Model& popup_;
};

}  // namespace

std::span<const DocumentField> documentFields() {
  return kFields;
}

PopupPointer popupFromFields(const DocumentFieldValues& values, std::uint64_t configType) {
  auto popup = std::make_shared<ZOVKPopupModel>();
  for (std::size_t i = 0; i < kFields.size(); ++i) {
    std::visit(FieldReader(values[i], *popup), kFields[i].field);
  }
  popup->config_type = configType;
  return popup;
}

}  // namespace zovk
