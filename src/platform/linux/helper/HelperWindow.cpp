#include "platform/linux/helper/HelperWindow.h"

#include <utility>

#include "protocol/MessageNames.h"

namespace zovk {
namespace {

/// Returns the shape as the device sees it. An unknown size counts as the one that layouts are
/// chosen by.
bool isPortrait(const Size& size) {
  return size.width > 0 && size.height >= size.width;
}

/// The helper arranges without being asked to, so the change is on screen once it has painted.
class PaintedTransition final : public TransitionCoordinator {
 public:
  using Task = std::function<void()>;
  PaintedTransition(HelperClient& session, HelperId window, Task end)
      : session_(session), window_(window), end_(std::move(end)) {}

  void animateAlongside(const Task& alongside, Task completion) override {
    if (alongside) alongside();
    session_.request(
        {{member::kType, command::kSync}, {member::kWindow, window_}}, event::kSynced, window_,
        [completion = std::move(completion), end = std::exchange(end_, {})](const HelperMessage*) {
          if (completion) completion();
          if (end) end();
        });
  }
  /// Ends a transition in which the controller had nothing to do.
  void endUnlessBegun() {
    if (const Task end = std::exchange(end_, {})) end();
  }

 private:
  HelperClient& session_;
  const HelperId window_;
  Task end_;
};

}  // namespace

std::shared_ptr<HelperWindow> HelperWindow::make(const std::shared_ptr<HelperClient>& session,
                                                 const Rect& frame, const Size& assumed) {
  auto window = std::make_shared<HelperWindow>(session, session->newId(), assumed);
  session->objects().windows[window->id()] = window;
  window->create(frame);
  return window;
}

HelperWindow::HelperWindow(std::shared_ptr<HelperClient> session, HelperId id, const Size& assumed)
    : session_(std::move(session)),
      id_(id),
      root_(std::make_shared<HelperView>(session_, session_->newId())),
      size_(assumed),
      arranged_(assumed) {}

HelperWindow::~HelperWindow() {
  setRootViewController(nullptr);
  session_->windowClosed(id_);
  session_->send({{member::kType, command::kWindowClose}, {member::kWindow, id_}});
}

void HelperWindow::create(const Rect& frame) {
  session_->command(id_, HelperAspect::kExistence,
                    {{member::kType, command::kWindowCreate},
                     {member::kWindow, id_},
                     {member::kView, root_->id()},
                     {member::kFrame, {frame.x, frame.y, frame.width, frame.height}}});
}

void HelperWindow::setBackgroundColor(const Color& color) {
  session_->command(id_, HelperAspect::kBackground,
                    {{member::kType, command::kWindowBackground},
                     {member::kWindow, id_},
                     {member::kColor, helperColor(color)}});
}

void HelperWindow::setRootViewController(std::shared_ptr<ViewController> controller) {
  if (controller == controller_) return;
  if (const auto old = std::exchange(controller_, nullptr)) old->tearDown();
  if (!controller) return;
  controller_ = controller;
  arranged_ = size_;
  controller->loadView(root_);
  setNeedsUpdateConstraints();
  if (!session_->failure().empty()) failLater();
}

void HelperWindow::makeKeyAndVisible() {
  session_->windowShown(id_);
  session_->command(id_, HelperAspect::kShown,
                    {{member::kType, command::kWindowShow}, {member::kWindow, id_}});
}

bool HelperWindow::isKeyWindow() const {
  return session_->objects().keyWindow == id_;
}

void HelperWindow::setNeedsUpdateConstraints() {
  if (std::exchange(constraintsAreDue_, true)) return;
  session_->later([weak = weak_from_this()] {
    if (const auto window = weak.lock()) window->updateConstraints();
  });
}

void HelperWindow::updateConstraints() {
  constraintsAreDue_ = false;
  if (const auto controller = controller_) controller->updateViewConstraints();
}

void HelperWindow::sizeChanged(const Size& size) {
  size_ = size;
  turnIfNeeded();
}

void HelperWindow::turnIfNeeded() {
  const auto controller = controller_;
  // Window managers try several shapes while a screen turns: one turn at a time, the last counts.
  if (turning_ || !controller || isPortrait(size_) == isPortrait(arranged_)) return;
  turning_ = true;
  arranged_ = size_;
  PaintedTransition transition(*session_, id_, [weak = weak_from_this()] {
    const auto window = weak.lock();
    if (!window) return;
    window->turning_ = false;
    window->turnIfNeeded();
  });
  controller->viewWillTransitionToSize(size_, transition);
  transition.endUnlessBegun();
}

void HelperWindow::failLater() {
  session_->later([weak = weak_from_this(), session = session_, controller = controller_] {
    const auto window = weak.lock();
    if (!window || window->controller_ != controller || session->failure().empty()) return;
    window->fail(session->failure());
  });
}

void HelperWindow::fail(const std::string& reason) {
  if (const auto controller = controller_) controller->interfaceDidFail(reason);
}

}  // namespace zovk
