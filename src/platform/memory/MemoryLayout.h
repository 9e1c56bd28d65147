#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/memory/MemoryView.h"

namespace zovk {

/// A view of a layout, and its parent; an empty parent means the root.
struct MemoryOutlet {
  std::string name;
  std::string parent;
};

/// Returns the views of the popup screen's own layouts.
std::vector<MemoryOutlet> standardOutlets();

/// A layout of the memory platform. Main thread only; the holder owns it.
class MemoryLayout final : public Layout {
 public:
  /// If `outlets` is null, the layout cannot be found.
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
  /// Returns the state of a view; one with `present` false if the layout lacks it.
  MemoryViewNode& view(const std::string& name) const { return *nodeOf(name); }
  /// Returns whether the user would see the view.
  bool isVisible(const std::string& name) const { return view(name).isVisible(); }
  /// Returns the views that the user would see, sorted by name.
  std::vector<std::string> visibleOutlets() const;
  /// Presses the button that the layout connects to this action, as the user would: the owner is
  /// told at once. Returns false if the owner or the layout is gone.
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
