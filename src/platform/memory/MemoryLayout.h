#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/memory/MemoryView.h"

namespace zovk {

/// A view that a layout holds, and the view around it; the root when that is empty.
struct MemoryOutlet {
  std::string name;
  std::string parent;
};

/// What the popup screen's own layouts hold.
std::vector<MemoryOutlet> standardOutlets();

/// A layout of the memory platform. Main thread only; the holder owns it.
class MemoryLayout final : public Layout {
 public:
  /// `outlets` null: the layout cannot be found.
  MemoryLayout(std::string bundlePath, std::string name, std::weak_ptr<LayoutOwner> owner,
               const std::vector<MemoryOutlet>* outlets);
  ~MemoryLayout() override;
  MemoryLayout(const MemoryLayout&) = delete;
  MemoryLayout& operator=(const MemoryLayout&) = delete;

  std::shared_ptr<View> root() const override;
  std::shared_ptr<View> outlet(const std::string& name) const override;

  const std::string& bundlePath() const { return bundlePath_; }
  const std::string& name() const { return name_; }
  bool found() const { return root_->present; }
  MemoryViewNode& rootNode() const { return *root_; }
  /// The state of a view; one that is not present when the layout lacks it.
  MemoryViewNode& view(const std::string& name) const { return *nodeOf(name); }
  /// Whether the user would see it.
  bool isVisible(const std::string& name) const { return view(name).isVisible(); }
  /// The views that the user would see, sorted by name.
  std::vector<std::string> visibleOutlets() const;
  /// The user presses the button that the layout connects to this action: the owner hears of it at
  /// once. False when the owner or the layout is not there.
  bool press(const std::string& action);

 private:
  std::shared_ptr<MemoryViewNode> nodeOf(const std::string& name) const;

  std::string bundlePath_;
  std::string name_;
  std::weak_ptr<LayoutOwner> owner_;
  std::shared_ptr<MemoryViewNode> root_;
  mutable std::map<std::string, std::shared_ptr<MemoryViewNode>> outlets_;
};

}  // namespace zovk
