#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <zovkpopup/Export.h>

namespace zovk {

/// The verdict of the selection on one popup.
struct ZOVKPopupExplainedPopup {
  std::string scene;
  std::int32_t pop_id = 0;
  std::string page;  ///< The name of the page file, or the address of the web page.
  /// "passed", or the first rule that the popup fails: "other_scene", "other_scene_type",
  /// "other_channel", "not_yet_valid", "expired", "file_missing", "already_shown",
  /// "digest_differs"; or "not_reached" if an earlier popup was chosen for the scene.
  std::string verdict;
  std::string wanted;    ///< The value that the rule requires, from the definition.
  std::string found;     ///< The value that it was compared with.
  std::string sentence;  ///< The verdict in plain English.
  std::size_t rank = 0;  ///< Place in the order of showing: 1 is first, 0 is not shown.
};

/// The reasons why a request shows something, or nothing.
struct ZOVKPopupExplanation {
  std::string sentence;                         ///< A sentence about the whole request.
  std::vector<ZOVKPopupExplainedPopup> popups;  ///< In the order of examination.
};

/// Explains what a request to show popups would select now, and why, without showing anything. For
/// debug screens and tools. The selection itself answers, so the explanation always agrees with
/// `ZOVKPopup`. It cannot foresee later steps: it does not ask the service of a conditional popup,
/// and loads no page. It changes and logs nothing. Any thread; nothing throws.
class ZOVKPOPUP_API ZOVKPopupExplain {
 public:
  /// Explains a request for a scene or, if `scene` is empty, for a scene type, as
  /// `ZOVKPopup::showPopup` takes them.
  static ZOVKPopupExplanation explain(const std::string& scene, std::uint64_t sceneType);
};

}  // namespace zovk
