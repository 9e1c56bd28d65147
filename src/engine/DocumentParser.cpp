#include "engine/DocumentParser.h"

#include "network/JsonNumbers.h"

namespace zovk {
namespace {

class EntryReader {
 public:
  explicit EntryReader(const boost::json::object& entry) : entry_(entry) {}

  std::int32_t number(std::string_view key) const {
    const auto* value = entry_.if_contains(key);
    return value != nullptr ? intValue(*value) : 0;
  }
  std::uint64_t kind(std::string_view key) const {
    return static_cast<std::uint64_t>(std::int64_t{number(key)});  // widened with its sign
  }
  std::string text(std::string_view key) const {
    const auto* value = entry_.if_contains(key);
    return value != nullptr && value->is_string() ? std::string(value->get_string())
                                                  : std::string();
  }

 private:
  const boost::json::object& entry_;
};

}  // namespace

PopupPointer popupFromEntry(const boost::json::object& entry, std::uint64_t configType) {
  const EntryReader reader(entry);
  auto popup = std::make_shared<ZOVKPopupModel>();
  popup->pop_id = reader.number("pop_id");
  popup->scene = reader.text("scene");
  popup->scene_type = reader.kind("scene_type");
  popup->valid_platform = reader.text("valid_platform");
  popup->pop_type = reader.kind("pop_type");
  popup->content_type = reader.kind("content_type");
  popup->uri = reader.text("uri");
  popup->sig = reader.text("sig");
  popup->pop_freq = reader.kind("pop_freq");
  popup->priority = reader.number("priority");
  popup->publish_time = reader.number("publish_time");
  popup->check_url = reader.text("check_url");
  popup->report_url = reader.text("report_url");
  popup->valid_time = reader.number("valid_time");
  popup->expire_time = reader.number("expire_time");
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
