#include "engine/ConditionAnswer.h"

#include <stdexcept>

#include "text/JsonNumbers.h"

namespace zovk {
namespace {

bool isWanted(const boost::json::object& answer) {
  const auto* needed = answer.if_contains("need_popup");
  try {
    return needed != nullptr && intValue(*needed) == 1;
  } catch (const std::invalid_argument&) {
    return false;  // null, an array or an object is not a yes
  }
}

}  // namespace

std::optional<boost::json::object> wantedPopupExtra(const boost::json::value& answer) {
  const auto* object = answer.if_object();
  if (object == nullptr || !isWanted(*object)) return std::nullopt;
  const auto* extra = object->if_contains("extra");
  if (extra == nullptr || !extra->is_object()) return boost::json::object();
  return extra->get_object();
}

}  // namespace zovk
