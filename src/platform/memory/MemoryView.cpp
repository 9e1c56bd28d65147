#include "platform/memory/MemoryView.h"

#include <algorithm>

namespace zovk {
namespace {

std::shared_ptr<MemoryViewNode> topOf(std::shared_ptr<MemoryViewNode> node) {
  while (auto parent = node->parent.lock()) node = std::move(parent);
  return node;
}

// Ties between a view that leaves and those that stay do not hold any longer.
void dropPinsAcross(MemoryViewNode& node, const MemoryViewNode& leaving) {
  for (auto* pin : {&node.edges, &node.top, &node.bottom}) {
    if (!*pin) continue;
    const auto target = (*pin)->target.lock();
    if (!target || target->isInside(leaving) != node.isInside(leaving)) pin->reset();
  }
}

MemoryPin pinTo(const MemoryViewNode& target, bool safeArea = false, double offset = 0) {
  return {target.weak_from_this(), safeArea, offset};
}

}  // namespace

bool MemoryViewNode::isInside(const MemoryViewNode& ancestor) const {
  if (this == &ancestor) return true;
  const auto above = parent.lock();
  return above && above->isInside(ancestor);
}

bool MemoryViewNode::isInWindow() const {
  const auto above = parent.lock();
  return above ? above->isInWindow() : isWindowRoot;
}

bool MemoryViewNode::isVisible() const {
  if (hidden || alpha <= 0) return false;
  const auto above = parent.lock();
  return above ? above->isVisible() : isWindowRoot;
}

bool MemoryViewNode::isPinnedTo(const std::optional<MemoryPin>& pin, std::string_view targetName) {
  const auto target = pin ? pin->target.lock() : nullptr;
  return target && target->name == targetName;
}

std::vector<std::string> MemoryViewNode::childNames() const {
  std::vector<std::string> names;
  for (const auto& child : children) names.push_back(child->name);
  return names;
}

std::shared_ptr<MemoryViewNode> MemoryViewNode::find(std::string_view wanted) {
  std::shared_ptr<MemoryViewNode> found;
  forEach([&](MemoryViewNode& node) {
    if (!found && node.name == wanted) found = node.shared_from_this();
  });
  return found;
}

void MemoryViewNode::add(const std::shared_ptr<MemoryViewNode>& child) {
  if (isInside(*child)) return;
  if (child->parent.lock().get() == this) {
    std::erase(children, child);  // only brought to the front: its ties stay
  } else {
    child->detach();
  }
  children.push_back(child);
  child->parent = weak_from_this();
}

void MemoryViewNode::sendToBack(const MemoryViewNode& child) {
  const auto found = std::find_if(children.begin(), children.end(),
                                  [&child](const auto& other) { return other.get() == &child; });
  if (found != children.end()) std::rotate(children.begin(), found, found + 1);
}

void MemoryViewNode::detach() {
  const auto above = parent.lock();
  if (!above) return;
  const auto self = shared_from_this();
  topOf(self)->forEach([this](MemoryViewNode& node) { dropPinsAcross(node, *this); });
  std::erase(above->children, self);
  parent.reset();
}

void MemoryViewNode::forEach(const std::function<void(MemoryViewNode&)>& visit) {
  visit(*this);
  for (const auto& child : children) child->forEach(visit);
}

MemoryViewNode& memoryNode(const View& view) {
  return dynamic_cast<const MemoryViewHandle&>(view).node();
}

template <class Base>
void MemoryViewCommands<Base>::addSubview(const View& child) {
  if (node().present && memoryNode(child).present) {
    node().add(memoryNode(child).shared_from_this());
  }
}

template <class Base>
void MemoryViewCommands<Base>::sendSubviewToBack(const View& child) {
  node().sendToBack(memoryNode(child));
}

template <class Base>
void MemoryViewCommands<Base>::removeFromSuperview() {
  node().detach();
}

template <class Base>
void MemoryViewCommands<Base>::setHidden(bool hidden) {
  if (node().present) node().hidden = hidden;
}

template <class Base>
void MemoryViewCommands<Base>::setAlpha(double alpha) {
  if (node().present) node().alpha = alpha;
}

template <class Base>
void MemoryViewCommands<Base>::setBackgroundColor(const Color& color) {
  if (node().present) node().background = color;
}

template <class Base>
void MemoryViewCommands<Base>::setClipsToBounds(bool clips) {
  if (node().present) node().clips = clips;
}

template <class Base>
void MemoryViewCommands<Base>::setImage(const std::string& path) {
  if (node().present) node().image = path;
}

template <class Base>
void MemoryViewCommands<Base>::pinEdgesTo(const View& container) {
  if (!node().present || !memoryNode(container).present) return;
  node().edges = pinTo(memoryNode(container));
  node().top.reset();
  node().bottom.reset();
}

template <class Base>
void MemoryViewCommands<Base>::pinTopTo(const View& view, bool safeArea, double offset) {
  if (!node().present || !memoryNode(view).present) return;
  node().top = pinTo(memoryNode(view), safeArea, offset);
}

template <class Base>
void MemoryViewCommands<Base>::pinBottomToTopOfFirst(
    std::initializer_list<const View*> candidates) {
  if (!node().present) return;
  const auto* const found = std::find_if(
      candidates.begin(), candidates.end(),
      [](const View* candidate) { return candidate != nullptr && memoryNode(*candidate).present; });
  if (found != candidates.end()) node().bottom = pinTo(memoryNode(**found));
}

template class MemoryViewCommands<View>;
template class MemoryViewCommands<WebView>;

}  // namespace zovk
