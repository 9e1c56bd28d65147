#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/memory/MemoryLayout.h"
#include "platform/memory/MemoryView.h"

namespace zovk {
namespace {

using Names = std::vector<std::string>;

std::shared_ptr<MemoryView> view(const std::string& name) {
  auto node = std::make_shared<MemoryViewNode>();
  node->name = name;
  return std::make_shared<MemoryView>(std::move(node));
}

std::shared_ptr<MemoryView> windowRoot() {
  auto root = view("window");
  root->node().isWindowRoot = true;
  return root;
}

TEST(MemoryView, KeepsWhatItIsTold) {
  const auto one = view("one");
  one->setHidden(true);
  one->setAlpha(0.5);
  one->setBackgroundColor(Color::black(0.25));
  one->setClipsToBounds(true);
  one->setImage("/a.png");
  const MemoryViewNode& node = one->node();
  EXPECT_TRUE(node.hidden);
  EXPECT_EQ(node.alpha, 0.5);
  EXPECT_EQ(node.background, Color::black(0.25));
  EXPECT_TRUE(node.clips);
  EXPECT_EQ(node.image, "/a.png");
}

TEST(MemoryView, PutsAChildInFrontOfTheOthers) {
  const auto parent = view("parent"), a = view("a"), b = view("b"), c = view("c");
  for (const auto& child : {a, b, c}) parent->addSubview(*child);
  EXPECT_EQ(parent->node().childNames(), (Names{"a", "b", "c"}));
  parent->addSubview(*a);
  EXPECT_EQ(parent->node().childNames(), (Names{"b", "c", "a"}));
  parent->sendSubviewToBack(*a);
  EXPECT_EQ(parent->node().childNames(), (Names{"a", "b", "c"}));
  parent->sendSubviewToBack(*view("stranger"));
  EXPECT_EQ(parent->node().childNames(), (Names{"a", "b", "c"}));
}

TEST(MemoryView, TakesAChildOutOfWhereItWas) {
  const auto first = view("first"), second = view("second"), child = view("child");
  first->addSubview(*child);
  second->addSubview(*child);
  EXPECT_TRUE(first->node().children.empty());
  EXPECT_EQ(child->node().parent.lock(), second->sharedNode());
  child->removeFromSuperview();
  EXPECT_TRUE(second->node().children.empty());
  child->removeFromSuperview();
}

TEST(MemoryView, NeverStandsInsideItself) {
  const auto outer = view("outer"), inner = view("inner");
  outer->addSubview(*inner);
  inner->addSubview(*outer);
  outer->addSubview(*outer);
  EXPECT_EQ(outer->node().childNames(), Names{"inner"});
  EXPECT_TRUE(inner->node().children.empty());
}

TEST(MemoryView, LivesWithoutAHandleOnlyWhileAnotherViewHoldsIt) {
  const auto parent = view("parent");
  auto child = view("child");
  const std::weak_ptr<MemoryViewNode> node = child->sharedNode();
  parent->addSubview(*child);
  child.reset();
  EXPECT_FALSE(node.expired());
  parent->node().children[0]->detach();
  EXPECT_TRUE(node.expired());
}

TEST(MemoryView, IsVisibleOnlyInAWindowWithNothingHiddenAround) {
  const auto window = windowRoot();
  const auto outer = view("outer"), inner = view("inner");
  outer->addSubview(*inner);
  EXPECT_FALSE(inner->node().isVisible());
  window->addSubview(*outer);
  EXPECT_TRUE(inner->node().isVisible());
  outer->setHidden(true);
  EXPECT_FALSE(inner->node().isVisible());
  EXPECT_TRUE(inner->node().isInWindow());
  outer->setHidden(false);
  outer->setAlpha(0);
  EXPECT_FALSE(inner->node().isVisible());
}

TEST(MemoryView, RemembersItsPins) {
  const auto parent = view("parent"), child = view("child"), below = view("below");
  parent->addSubview(*child);
  parent->addSubview(*below);
  child->pinEdgesTo(*parent);
  child->pinTopTo(*parent, true, 44);
  const auto absent = view("absent");
  absent->node().present = false;
  child->pinBottomToTopOfFirst({absent.get(), nullptr, below.get(), parent.get()});
  const MemoryViewNode& node = child->node();
  EXPECT_TRUE(MemoryViewNode::isPinnedTo(node.edges, "parent"));
  EXPECT_TRUE(MemoryViewNode::isPinnedTo(node.top, "parent"));
  EXPECT_TRUE(node.top->safeArea);
  EXPECT_EQ(node.top->offset, 44);
  EXPECT_TRUE(MemoryViewNode::isPinnedTo(node.bottom, "below"));
  child->pinEdgesTo(*parent);
  EXPECT_FALSE(node.top);
  EXPECT_FALSE(node.bottom);
}

TEST(MemoryView, LosesPinsToWhatItLeaves) {
  const auto parent = view("parent"), child = view("child"), inner = view("inner"),
             sibling = view("sibling");
  parent->addSubview(*child);
  parent->addSubview(*sibling);
  child->addSubview(*inner);
  child->pinEdgesTo(*parent);
  inner->pinEdgesTo(*child);
  sibling->pinTopTo(*child, false, 0);
  child->removeFromSuperview();
  EXPECT_FALSE(child->node().edges);
  EXPECT_FALSE(sibling->node().top);
  EXPECT_TRUE(MemoryViewNode::isPinnedTo(inner->node().edges, "child"));
}

TEST(MemoryView, StaysAsItIsWhenItIsNotThere) {
  const auto parent = view("parent"), absent = view("absent"), child = view("child");
  absent->node().present = false;
  parent->addSubview(*absent);
  absent->addSubview(*child);
  absent->setHidden(true);
  absent->setAlpha(0.5);
  absent->setBackgroundColor(Color::clear());
  absent->setClipsToBounds(true);
  absent->setImage("/a.png");
  absent->pinEdgesTo(*parent);
  absent->pinTopTo(*parent, false, 0);
  absent->pinBottomToTopOfFirst({parent.get()});
  child->pinEdgesTo(*absent);
  const MemoryViewNode& node = absent->node();
  EXPECT_TRUE(parent->node().children.empty());
  EXPECT_TRUE(node.children.empty());
  EXPECT_FALSE(node.hidden || node.clips || node.background || node.edges || node.top ||
               node.bottom);
  EXPECT_EQ(node.alpha, 1);
  EXPECT_EQ(node.image, "");
  EXPECT_FALSE(child->node().edges);
}

class Owner final : public LayoutOwner {
 public:
  void performAction(const std::string& action) override { actions.push_back(action); }
  Names actions;
};

TEST(MemoryLayout, HoldsItsOutletsInsideItsRoot) {
  const auto outlets = standardOutlets();
  MemoryLayout layout("/bundle", "Screen", {}, &outlets);
  EXPECT_TRUE(layout.found());
  EXPECT_TRUE(layout.view("rejectBtn").isInside(layout.view("stackView")));
  EXPECT_TRUE(layout.view("contentView").isInside(layout.rootNode()));
  EXPECT_EQ(layout.rootNode().find("crossBtn").get(), &layout.view("crossBtn"));
  layout.outlet("crossBtn")->setHidden(true);
  EXPECT_TRUE(layout.view("crossBtn").hidden);
}

TEST(MemoryLayout, ShowsWhatIsVisibleInAWindow) {
  const std::vector<MemoryOutlet> outlets{{"a", ""}, {"b", "a"}, {"c", ""}};
  MemoryLayout layout("/bundle", "Screen", {}, &outlets);
  EXPECT_EQ(layout.visibleOutlets(), Names{});
  const auto window = windowRoot();
  window->addSubview(*layout.root());
  EXPECT_EQ(layout.visibleOutlets(), (Names{"a", "b", "c"}));
  layout.outlet("a")->setHidden(true);
  EXPECT_EQ(layout.visibleOutlets(), Names{"c"});
  EXPECT_TRUE(layout.isVisible("c"));
}

TEST(MemoryLayout, HasNothingWhenItCannotBeFound) {
  MemoryLayout layout("/bundle", "Screen", {}, nullptr);
  const auto window = windowRoot();
  window->addSubview(*layout.root());
  EXPECT_FALSE(layout.found());
  EXPECT_TRUE(window->node().children.empty());
  EXPECT_FALSE(layout.view("crossBtn").present);
  EXPECT_EQ(layout.visibleOutlets(), Names{});
}

TEST(MemoryLayout, TakesItsViewsAlongWhenItIsDropped) {
  const auto outlets = standardOutlets();
  auto layout =
      std::make_unique<MemoryLayout>("/bundle", "Screen", std::weak_ptr<LayoutOwner>(), &outlets);
  const auto window = windowRoot();
  window->addSubview(*layout->root());
  const auto button = layout->outlet("crossBtn");
  layout.reset();
  EXPECT_TRUE(window->node().children.empty());
  button->setHidden(true);
  EXPECT_FALSE(memoryNode(*button).hidden);
}

TEST(MemoryLayout, TellsItsOwnerOfButtonsWhileTheOwnerLives) {
  const auto outlets = standardOutlets();
  auto owner = std::make_shared<Owner>();
  MemoryLayout layout("/bundle", "Screen", owner, &outlets);
  EXPECT_TRUE(layout.press("crossButtonClicked"));
  EXPECT_EQ(owner->actions, Names{"crossButtonClicked"});
  owner.reset();
  EXPECT_FALSE(layout.press("crossButtonClicked"));
}

}  // namespace
}  // namespace zovk
