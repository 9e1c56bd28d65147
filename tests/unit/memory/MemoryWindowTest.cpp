#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/memory/MemoryUserInterface.h"

namespace zovk {
namespace {

using Events = std::vector<std::string>;

class Controller final : public ViewController {
 public:
  Controller(std::string name, Events& events) : name_(std::move(name)), events_(events) {}
  void loadView(std::shared_ptr<View> view) override {
    events_.push_back(name_ + " load");
    view_ = std::move(view);
  }
  void updateViewConstraints() override { events_.push_back(name_ + " constraints"); }
  void viewWillTransitionToSize(const Size& size, TransitionCoordinator& coordinator) override {
    events_.push_back(name_ + " size " + std::to_string(static_cast<int>(size.width)));
    coordinator.animateAlongside([this] { events_.push_back(name_ + " alongside"); },
                                 [&events = events_] { events.push_back("completion"); });
  }
  void tearDown() override { events_.push_back(name_ + " down"); }
  void interfaceDidFail(const std::string& reason) override {
    events_.push_back(name_ + " failed " + reason);
  }
  View& view() { return *view_; }

 private:
  const std::string name_;
  Events& events_;
  std::shared_ptr<View> view_;
};

class MemoryWindows : public testing::Test {
 protected:
  std::shared_ptr<Controller> controller(const std::string& name) {
    return std::make_shared<Controller>(name, events);
  }
  MemoryWindow& memory() { return static_cast<MemoryWindow&>(*window); }

  MemoryScheduler scheduler;
  MemoryUserInterface ui{scheduler};
  Events events;
  std::shared_ptr<Window> window = ui.makeWindow({0, 0, 100, 200});
};

TEST_F(MemoryWindows, TearsTheOldControllerDownBeforeTheNewOneLoads) {
  window->setRootViewController(controller("a"));
  window->setRootViewController(controller("b"));
  window->setRootViewController(nullptr);
  EXPECT_EQ(events, (Events{"a load", "a down", "b load", "b down"}));
}

TEST_F(MemoryWindows, TearsItsControllerDownWhenItIsDropped) {
  const auto a = controller("a");
  window->setRootViewController(a);
  window.reset();
  EXPECT_EQ(events, (Events{"a load", "a down"}));
  EXPECT_EQ(a.use_count(), 1);
  EXPECT_FALSE(memoryNode(a->view()).isInWindow());
}

TEST_F(MemoryWindows, GivesANewControllerAnEmptyView) {
  const auto a = controller("a");
  window->setRootViewController(a);
  const auto layout = ui.loadLayout("/b", "Screen", {});
  a->view().addSubview(*layout->root());
  EXPECT_TRUE(memoryNode(*layout->root()).isInWindow());
  window->setRootViewController(controller("b"));
  EXPECT_FALSE(memoryNode(*layout->root()).isInWindow());
}

TEST_F(MemoryWindows, BecomesKeyOnceTheInterfaceSaysSo) {
  window->makeKeyAndVisible();
  EXPECT_FALSE(window->isKeyWindow());
  scheduler.runReady();
  EXPECT_TRUE(window->isKeyWindow());
  EXPECT_EQ(memory().shownCount(), 1);
  ui.otherWindowTakesKey();
  EXPECT_FALSE(window->isKeyWindow());
}

TEST_F(MemoryWindows, IsNotKeyWhenTheKeyboardIsRefused) {
  ui.grantKeyboard(false);
  window->makeKeyAndVisible();
  scheduler.runReady();
  EXPECT_FALSE(window->isKeyWindow());
  EXPECT_TRUE(memory().isShown());
}

TEST_F(MemoryWindows, LetsOnlyOneWindowBeKey) {
  const auto other = ui.makeWindow({});
  window->makeKeyAndVisible();
  other->makeKeyAndVisible();
  scheduler.runReady();
  EXPECT_FALSE(window->isKeyWindow());
  EXPECT_TRUE(other->isKeyWindow());
}

TEST_F(MemoryWindows, KeepsAControllerThatIsSetAgain) {
  const auto a = controller("a");
  window->setRootViewController(a);
  window->setRootViewController(a);
  EXPECT_EQ(events, Events{"a load"});
}

TEST_F(MemoryWindows, UpdatesTheConstraintsOfANewControllerBeforeTheFirstArrangement) {
  window->setRootViewController(controller("a"));
  EXPECT_EQ(events, Events{"a load"});
  scheduler.runReady();
  EXPECT_EQ(events, (Events{"a load", "a constraints"}));
}

TEST_F(MemoryWindows, UpdatesConstraintsOnceForManyWishes) {
  window->setRootViewController(controller("a"));
  scheduler.runReady();
  window->setNeedsUpdateConstraints();
  window->setNeedsUpdateConstraints();
  EXPECT_EQ(events.size(), 2u);
  scheduler.runReady();
  EXPECT_EQ(events, (Events{"a load", "a constraints", "a constraints"}));
}

TEST_F(MemoryWindows, UpdatesTheConstraintsOfNoControllerThatIsGone) {
  window->setRootViewController(controller("a"));
  window->setRootViewController(nullptr);
  scheduler.runReady();
  EXPECT_EQ(events, (Events{"a load", "a down"}));
}

TEST_F(MemoryWindows, KeepsTheArrangementWhenAnotherSizeHasTheSameShape) {
  window->setRootViewController(controller("a"));
  memory().resize({150, 400});
  EXPECT_EQ(events, Events{"a load"});
  EXPECT_EQ(memory().frame(), (Rect{0, 0, 150, 400}));
}

TEST_F(MemoryWindows, RunsTheTwoStepsOfAChangeOfSize) {
  window->setRootViewController(controller("a"));
  memory().resize({300, 100});
  EXPECT_EQ(events, (Events{"a load", "a size 300", "a alongside"}));
  EXPECT_EQ(memory().frame(), (Rect{0, 0, 300, 100}));
  window.reset();
  scheduler.runReady();  // the completion comes although the window is gone
  EXPECT_EQ(events.back(), "completion");
}

TEST_F(MemoryWindows, DropsStepsOfAWindowThatIsGone) {
  window->setRootViewController(controller("a"));
  window->setNeedsUpdateConstraints();
  window->makeKeyAndVisible();
  window.reset();
  scheduler.runReady();
  EXPECT_EQ(events, (Events{"a load", "a down"}));
}

TEST_F(MemoryWindows, TellsEveryRootControllerOnceThatTheInterfaceFailed) {
  const auto other = ui.makeWindow({});
  const auto empty = ui.makeWindow({});
  window->setRootViewController(controller("a"));
  other->setRootViewController(controller("b"));
  ui.failInterface("lost");
  EXPECT_EQ(events, (Events{"a load", "b load", "a failed lost", "b failed lost"}));
  ui.failInterface("lost");
  EXPECT_EQ(events.size(), 4u);
  window->makeKeyAndVisible();
  scheduler.runReady();
  EXPECT_EQ(events.size(), 6u);  // the constraints of both
  EXPECT_FALSE(window->isKeyWindow());
}

TEST_F(MemoryWindows, TellsLaterControllersOfAFailureFromTheScheduler) {
  ui.failInterface("lost");
  window->setRootViewController(controller("a"));
  EXPECT_EQ(events, Events{"a load"});
  scheduler.runReady();
  EXPECT_EQ(events, (Events{"a load", "a constraints", "a failed lost"}));
}

}  // namespace
}  // namespace zovk
