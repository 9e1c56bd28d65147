#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <zovkpopup/Export.h>

namespace zovk {

/// What the selection thinks of one popup.
struct ZOVKPopupExplainedPopup {
  std::string scene;
  std::int32_t pop_id = 0;
  std::string page;  ///< Name of the page file, or the address of a web page.
  /// "passed", or the first rule that the popup fails: "other_scene", "other_scene_type",
  /// "other_channel", "not_yet_valid", "expired", "file_missing", "already_shown",
  /// "digest_differs"; or "not_reached" when an earlier popup stands for the scene.
  std::string verdict;
  std::string wanted;    ///< What that rule asks for, from the popup's definition.
  std::string found;     ///< What it was compared with.
  std::string sentence;  ///< The same in plain English.
  std::size_t rank = 0;  ///< When it would be shown: 1 is first. 0 is not at all.
};

/// The answer to "why was this shown, or nothing?".
struct ZOVKPopupExplanation {
  std::string sentence;                         ///< How the whole request would go.
  std::vector<ZOVKPopupExplainedPopup> popups;  ///< In the order in which they are looked at.
};

/// Tells what a request to show popups would select now, and why, without showing anything. For
/// debug screens and tools. Selection itself answers, so it always answers as `ZOVKPopup` would;
/// what happens later is not foreseen: the service of a conditional popup is not asked, and no page
/// is loaded. Nothing is changed or logged. Any thread; nothing throws.
class ZOVKPOPUP_API ZOVKPopupExplain {
 public:
  /// As `ZOVKPopup::showPopup`: for a scene, or, when `scene` is empty, for a scene type.
  static ZOVKPopupExplanation explain(const std::string& scene, std::uint64_t sceneType);
};

}  // namespace zovk
