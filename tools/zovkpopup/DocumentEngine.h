#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "engine/Selection.h"
#include "platform/memory/MemoryPlatform.h"
#include "zovkpopup/Explain.h"
#include "zovkpopup/PageFolder.h"

namespace zovk::tool {

/// The engine itself, on a platform in memory, so that it shows what it would do with a document,
/// and changes no file. One at a time.
class DocumentEngine {
 public:
  explicit DocumentEngine(double now);
  ~DocumentEngine();
  DocumentEngine(const DocumentEngine&) = delete;
  DocumentEngine& operator=(const DocumentEngine&) = delete;

  /// Loads a document, and puts its pages where the engine looks for them. Returns the engine's
  /// error line if it rejects the document.
  std::optional<std::string> load(std::string_view document, std::uint64_t configType,
                                  const PageFolder& pages);
  const PopupList& popups() const { return popups_; }

  /// Judges whether the page exists and has the popup's digest.
  Judgement judgeContent(const ZOVKPopupModel& popup);
  ZOVKPopupExplanation explain(const std::string& scene, std::uint64_t sceneType,
                               std::int32_t channel);

 private:
  void addPages(const PageFolder& pages);
  std::string lastError() const;

  std::shared_ptr<MemoryPlatform> memory_ = std::make_shared<MemoryPlatform>();
  PopupList popups_;
};

}  // namespace zovk::tool
