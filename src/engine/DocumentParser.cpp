#include "engine/DocumentParser.h"

#include <array>

#include "network/JsonNumbers.h"

namespace zovk {
namespace {

using Model = ZOVKPopupModel;

constexpr std::array<DocumentField, 15> kFields = {{{"pop_id", &Model::pop_id},
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
  FieldReader(const boost::json::value* value, Model& popup) : value_(value), popup_(popup) {}

  void operator()(DocumentField::Number field) const { popup_.*field = number(); }
  void operator()(DocumentField::Kind field) const {
    popup_.*field = static_cast<std::uint64_t>(std::int64_t{number()});  // widened with its sign
  }
  void operator()(DocumentField::Text field) const {
    if (value_ != nullptr && value_->is_string()) popup_.*field = value_->get_string();
  }

 private:
  std::int32_t number() const { return value_ != nullptr ? intValue(*value_) : 0; }

  const boost::json::value* value_;
  Model& popup_;
};

}  // namespace

std::span<const DocumentField> documentFields() {
  return kFields;
}

PopupPointer popupFromEntry(const boost::json::object& entry, std::uint64_t configType) {
  auto popup = std::make_shared<ZOVKPopupModel>();
  for (const DocumentField& field : kFields) {
    std::visit(FieldReader(entry.if_contains(field.key), *popup), field.field);
  }
  popup->config_type = configType;
  return popup;
}

PopupList popupsFromEntries(const boost::json::array& entries, std::uint64_t configType) {
  PopupList popups;
  popups.reserve(entries.size());
  for (const boost::json::value& entry : entries) {
    const auto* object = entry.if_object();
    if (object == nullptr || object->empty()) continue;
    popups.push_back(popupFromEntry(*object, configType));
  }
  return popups;
}

}  // namespace zovk
