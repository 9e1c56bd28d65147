#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace zovk {

/// One popup definition. It does not change after it was parsed. The field names are the popup
/// service's own. An empty text means that there is none.
struct ZOVKPopupModel {
  std::int32_t pop_id = 0;
  std::int32_t priority = 0;      ///< Higher wins in selection.
  std::int32_t publish_time = 0;  ///< The later one wins in merging; second rank in selection.
  std::int32_t valid_time = 0;    ///< Seconds since 1970; not shown before it. 0 means no bound.
  std::int32_t expire_time = 0;   ///< Seconds since 1970; not shown from then on. 0 means no bound.
  std::string scene;              ///< Where in the game it belongs; the key of merging.
  std::uint64_t scene_type = 0;
  std::string valid_platform;  ///< Login channels, matched by substring; empty for all.
  std::uint64_t pop_type = 1;  ///< Page layout kind; only 2 differs.
  std::uint64_t content_type = 3;
  std::string uri;  ///< Address of the page, or of the page file to download.
  std::string sig;  ///< MD5 of the page file or of `uri`; the key in the once-record.
  std::uint64_t pop_freq = 1;
  std::string check_url;
  std::string report_url;
  std::uint64_t config_type = 0;

  /// Returns whether the page is a file: content types 1 and 2.
  bool isPageFile() const { return content_type == 1 || content_type == 2; }
  /// Returns the name of the page file; empty if the page is not a file.
  std::string getPopupFileName() const;
  /// Returns the full path of the page file: in the internal directory for a remote popup, in the
  /// resource bundle for a local one; empty if the page is not a file.
  std::string getPopupFilePath() const;
};

inline constexpr std::uint64_t kContentTypeWebPage = 3;
inline constexpr std::uint64_t kPopFreqOnce = 1;
inline constexpr std::uint64_t kPopFreqConditional = 3;
inline constexpr std::uint64_t kPopTypeGame = 2;
inline constexpr std::uint64_t kConfigRemote = 0;
inline constexpr std::uint64_t kConfigLocal = 1;

inline constexpr const char* kPolicyScene = "ZOVKPolicy";
inline constexpr const char* kPermissionScene = "ZOVKPolicy_Permission";
inline constexpr const char* kRemoteDocumentFile = "ZOVKPopupRemote.config";
inline constexpr const char* kOnceRecordFile = "ZOVKPopupFrequencyOnce.config";

using PopupPointer = std::shared_ptr<const ZOVKPopupModel>;
using PopupList = std::vector<PopupPointer>;
/// A snapshot of a list. It is replaced as a whole and never changed.
using PopupListPointer = std::shared_ptr<const PopupList>;

}  // namespace zovk
