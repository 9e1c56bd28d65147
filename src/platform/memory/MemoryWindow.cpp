#include "platform/memory/MemoryWindow.h"

#include <utility>

namespace zovk {
namespace {

std::shared_ptr<MemoryView> windowRoot() {
  auto node = std::make_shared<MemoryViewNode>();
  node->name = "window";
  node->isWindowRoot = true;
  return std::make_shared<MemoryView>(std::move(node));
}

bool isPortrait(const Size& size) {
  return size.height > size.width;
}

class Coordinator final : public TransitionCoordinator {
 public:
  explicit Coordinator(MemoryScheduler& scheduler) : scheduler_(scheduler) {}
  void animateAlongside(const std::function<void()>& alongside,
                        std::function<void()> completion) override {
    if (alongside) alongside();
    if (completion) scheduler_.async(std::move(completion));
  }

 private:
  MemoryScheduler& scheduler_;
};

}  // namespace

MemoryWindow::MemoryWindow(MemoryScheduler& scheduler, std::shared_ptr<MemoryScreen> screen,
                           const Rect& frame)
    : scheduler_(scheduler),
      screen_(std::move(screen)),
      number_(++screen_->lastWindow),
      frame_(frame),
      root_(windowRoot()) {}

MemoryWindow::~MemoryWindow() {
  if (isKeyWindow()) screen_->keyWindow = 0;
  if (const auto controller = std::move(controller_)) controller->tearDown();
  rootNode().isWindowRoot = false;
}

void MemoryWindow::setRootViewController(std::shared_ptr<ViewController> controller) {
  if (controller == controller_) return;
  if (const auto old = std::exchange(controller_, nullptr)) old->tearDown();
  while (!rootNode().children.empty()) {
    const auto child = rootNode().children.back();
    child->detach();
  }
  if (!controller) return;
  controller_ = controller;
  failureTold_ = false;
  controller->loadView(root_);
  setNeedsUpdateConstraints();
  if (screen_->failure) later(&MemoryWindow::tellFailure);
}

void MemoryWindow::makeKeyAndVisible() {
  ++shownCount_;
  later(&MemoryWindow::keyboardGranted);
}

void MemoryWindow::keyboardGranted() {
  if (screen_->grantsKeyboard && !screen_->failure) becomeKey();
}

void MemoryWindow::setNeedsUpdateConstraints() {
  if (std::exchange(needsUpdateConstraints_, true)) return;
  later(&MemoryWindow::updateConstraints);
}

void MemoryWindow::updateConstraints() {
  needsUpdateConstraints_ = false;
  if (const auto controller = controller_) controller->updateViewConstraints();
}

void MemoryWindow::resize(const Size& size) {
  const bool turns = isPortrait(size) != isPortrait({frame_.width, frame_.height});
  frame_.width = size.width;
  frame_.height = size.height;
  const auto controller = controller_;
  if (!turns || !controller) return;
  Coordinator coordinator(scheduler_);
  controller->viewWillTransitionToSize(size, coordinator);
}

void MemoryWindow::tellFailure() {
  const auto controller = controller_;
  if (!controller || !screen_->failure || std::exchange(failureTold_, true)) return;
  controller->interfaceDidFail(*screen_->failure);
}

// Has the scheduler run a step, if the window is still there by then.
void MemoryWindow::later(void (MemoryWindow::*step)()) {
  scheduler_.async([weak = weak_from_this(), step] {
    if (const auto window = weak.lock()) ((*window).*step)();
  });
}

}  // namespace zovk
