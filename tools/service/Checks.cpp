#include "service/Checks.h"

namespace zovk::service {

boost::json::object answerCheck(const Folder& folder, const std::string& name) {
  const auto checks = folder.readObject("checks.json");
  const auto* entry = checks ? checks->if_contains(name) : nullptr;
  if (entry == nullptr) return {{"need_popup", 0}};
  if (const auto* whole = entry->if_object()) return *whole;
  return {{"need_popup", *entry}};
}

}  // namespace zovk::service
