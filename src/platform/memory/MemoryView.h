#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "zovkpopup/platform/View.h"
#include "zovkpopup/platform/WebView.h"

namespace zovk {

struct MemoryViewNode;

/// The target of a pinned edge.
struct MemoryPin {
  std::weak_ptr<const MemoryViewNode> target;
  bool safeArea = false;
  double offset = 0;
};

/// The state of one view, for tests to read. A view owns its children. A handle or the tree of its
/// window keeps it alive. Main thread only.
struct MemoryViewNode : std::enable_shared_from_this<MemoryViewNode> {
  int id = 0;
  std::string name;     ///< Its name in its layout; "window", "web" or the layout's name otherwise.
  bool present = true;  ///< False if its layout lacks it or is gone; commands then have no effect.
  bool isWindowRoot = false;
  bool hidden = false;
  double alpha = 1;
  std::optional<Color> background;
  bool clips = false;
  std::string image;  ///< Path of the picture; empty if none was set.
  std::weak_ptr<MemoryViewNode> parent;
  std::vector<std::shared_ptr<MemoryViewNode>> children;  ///< From back to front.
  std::optional<MemoryPin> edges, top, bottom;            ///< `top` and `bottom` override `edges`.

  bool isInside(const MemoryViewNode& ancestor) const;
  /// Returns whether it is in a window, and neither it nor a parent is hidden or transparent.
  bool isVisible() const;
  bool isInWindow() const;
  static bool isPinnedTo(const std::optional<MemoryPin>& pin, std::string_view targetName);
  std::vector<std::string> childNames() const;
  /// Returns the view of that name in this subtree, which includes this view; null if there is
  /// none.
  std::shared_ptr<MemoryViewNode> find(std::string_view wanted);

  void add(const std::shared_ptr<MemoryViewNode>& child);
  void sendToBack(const MemoryViewNode& child);
  /// Removes it from its parent, with the pins between this subtree and views outside.
  void detach();
  void forEach(const std::function<void(MemoryViewNode&)>& visit);
};

/// The part that all handles share.
class MemoryViewHandle {
 public:
  explicit MemoryViewHandle(std::shared_ptr<MemoryViewNode> node) : node_(std::move(node)) {}
  virtual ~MemoryViewHandle() = default;
  MemoryViewNode& node() const { return *node_; }
  const std::shared_ptr<MemoryViewNode>& sharedNode() const { return node_; }

 private:
  std::shared_ptr<MemoryViewNode> node_;
};

/// Returns the state behind a view of the memory platform.
MemoryViewNode& memoryNode(const View& view);

/// Carries commands to a node. `Base` is View or WebView.
template <class Base>
class MemoryViewCommands : public Base, public MemoryViewHandle {
 public:
  using MemoryViewHandle::MemoryViewHandle;

  void addSubview(const View& child) override;
  void sendSubviewToBack(const View& child) override;
  void removeFromSuperview() override;
  void setHidden(bool hidden) override;
  void setAlpha(double alpha) override;
  void setBackgroundColor(const Color& color) override;
  void setClipsToBounds(bool clips) override;
  void setImage(const std::string& path) override;
  void pinEdgesTo(const View& container) override;
  void pinTopTo(const View& view, bool safeArea, double offset) override;
  void pinBottomToTopOfFirst(std::initializer_list<const View*> candidates) override;
};

extern template class MemoryViewCommands<View>;
extern template class MemoryViewCommands<WebView>;

class MemoryView final : public MemoryViewCommands<View> {
 public:
  using MemoryViewCommands::MemoryViewCommands;
};

}  // namespace zovk
