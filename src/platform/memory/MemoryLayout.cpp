#include "platform/memory/MemoryLayout.h"

#include <utility>

#include "support/Outlets.h"

namespace zovk {

std::vector<MemoryOutlet> standardOutlets() {
  return {{outlets::kBackground, ""},
          {outlets::kContent, ""},
          {outlets::kAnswers, ""},
          {outlets::kReject, outlets::kAnswers},
          {outlets::kConfirm, outlets::kAnswers},
          {outlets::kLoneAnswer, ""},
          {outlets::kLoneConfirm, outlets::kLoneAnswer},
          {outlets::kReturn, outlets::kContent},
          {outlets::kCross, outlets::kContent},
          {outlets::kRefresh, outlets::kContent}};
}

MemoryLayout::MemoryLayout(std::string bundlePath, std::string name,
                           std::weak_ptr<LayoutOwner> owner,
                           const std::vector<MemoryOutlet>* outlets)
    : bundlePath_(std::move(bundlePath)),
      name_(std::move(name)),
      owner_(std::move(owner)),
      root_(std::make_shared<MemoryViewNode>()) {
  root_->name = name_;
  root_->present = outlets != nullptr;
  if (outlets == nullptr) return;
  for (const MemoryOutlet& outlet : *outlets) {
    const auto node = std::make_shared<MemoryViewNode>();
    node->name = outlet.name;
    (outlet.parent.empty() ? root_ : nodeOf(outlet.parent))->add(node);
    outlets_[outlet.name] = node;
  }
}

MemoryLayout::~MemoryLayout() {
  root_->detach();
  root_->present = false;
  for (const auto& [name, node] : outlets_) node->present = false;
}

std::shared_ptr<MemoryViewNode> MemoryLayout::nodeOf(const std::string& name) const {
  auto& node = outlets_[name];
  if (!node) {
    node = std::make_shared<MemoryViewNode>();
    node->name = name;
    node->present = false;
  }
  return node;
}

std::shared_ptr<View> MemoryLayout::root() const {
  return std::make_shared<MemoryView>(root_);
}

std::shared_ptr<View> MemoryLayout::outlet(const std::string& name) const {
  return std::make_shared<MemoryView>(nodeOf(name));
}

std::vector<std::string> MemoryLayout::visibleOutlets() const {
  std::vector<std::string> names;
  for (const auto& [name, node] : outlets_) {
    if (node->present && node->isVisible()) names.push_back(name);
  }
  return names;
}

bool MemoryLayout::press(const std::string& action) {
  const auto owner = owner_.lock();
  if (!owner || !found()) return false;
  owner->performAction(action);
  return true;
}

}  // namespace zovk
