#include "record/ZOVKPopupModel.h"

#include <fmt/format.h>

#include "storage/ZOVKPopupFileManager.h"

namespace zovk {

std::string ZOVKPopupModel::getPopupFileName() const {
  if (!isPageFile()) return "";
  // Kinds are integers of the document widened with sign, and are written as such.
  return fmt::format("ZOVKPopup_{}_{}_{}_{}.html", static_cast<std::int64_t>(scene_type),
                     static_cast<std::int64_t>(pop_type), content_type, sig);
}

std::string ZOVKPopupModel::getPopupFilePath() const {
  if (!isPageFile()) return "";
  auto* const files = ZOVKPopupFileManager::sharedInstance();
  if (files == nullptr) return "";
  if (config_type == kConfigRemote) return files->getInternalFilePath(getPopupFileName());
  if (config_type == kConfigLocal) return files->getResourceFilePath(getPopupFileName());
  return "";
}

}  // namespace zovk
