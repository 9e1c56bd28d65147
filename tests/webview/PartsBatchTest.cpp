// The order in which the helper carries out commands that came together.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "helper/commands/CommandBatch.h"

namespace zovk::helper {
namespace {

HelperMessage command(const std::string& type, HelperId view) {
  return {{"type", type}, {"view", view}};
}

/// The commands as they are carried out, each with its view.
std::vector<std::string> ordered(const std::vector<HelperMessage>& commands) {
  CommandBatch batch;
  for (const HelperMessage& sent : commands) batch.add(sent);
  std::vector<std::string> order;
  while (!batch.empty()) {
    const HelperMessage next = batch.take();
    order.push_back(std::string(next.at("type").as_string()) + " " +
                    std::to_string(next.at("view").as_int64()));
  }
  return order;
}

using Order = std::vector<std::string>;

TEST(CommandsReadTogether, BeginWithANewPageAndItsLoad) {
  EXPECT_EQ(ordered({command("window.create", 1), command("web.create", 2), command("view.add", 2),
                     command("window.show", 1), command("web.loadFile", 2), command("ping", 3)}),
            (Order{"web.create 2", "web.loadFile 2", "window.create 1", "view.add 2",
                   "window.show 1", "ping 3"}));
}

TEST(CommandsReadTogether, KeepTheOrderOfSeveralNewPages) {
  EXPECT_EQ(ordered({command("window.create", 1), command("web.create", 2),
                     command("web.create", 3), command("web.load", 3), command("web.load", 2)}),
            (Order{"web.create 2", "web.create 3", "web.load 3", "web.load 2", "window.create 1"}));
}

TEST(CommandsReadTogether, LeaveALoadBehindWhatElseIsAskedOfItsPage) {
  EXPECT_EQ(ordered({command("window.create", 1), command("web.create", 2),
                     command("web.fetchAhead", 2), command("web.load", 2)}),
            (Order{"web.create 2", "window.create 1", "web.fetchAhead 2", "web.load 2"}));
  EXPECT_EQ(ordered({command("view.add", 1), command("web.create", 2), command("view.release", 2),
                     command("web.load", 2)}),
            (Order{"web.create 2", "view.add 1", "view.release 2", "web.load 2"}));
}

TEST(CommandsReadTogether, LeaveAPageBehindTheEndOfOneWithItsNumber) {
  EXPECT_EQ(ordered({command("web.close", 2), command("web.create", 2), command("web.load", 2)}),
            (Order{"web.close 2", "web.create 2", "web.load 2"}));
}

TEST(CommandsReadTogether, BringOnlyTheFirstLoadForward) {
  EXPECT_EQ(ordered({command("view.add", 1), command("web.create", 2), command("web.load", 2),
                     command("web.load", 2)}),
            (Order{"web.create 2", "web.load 2", "view.add 1", "web.load 2"}));
}

TEST(CommandsReadTogether, LeaveTheLoadOfAnOlderPageWhereItIs) {
  EXPECT_EQ(ordered({command("view.add", 1), command("web.load", 2)}),
            (Order{"view.add 1", "web.load 2"}));
}

TEST(CommandsReadTogether, AreNotBroughtBeforeTheGreeting) {
  EXPECT_EQ(ordered({command("hello", 0), command("window.create", 1), command("web.create", 2)}),
            (Order{"hello 0", "web.create 2", "window.create 1"}));
}

TEST(CommandsReadTogether, BringALoadForwardAlsoWhenAllBeforeItAreDone) {
  CommandBatch batch;
  batch.add(command("web.create", 2));
  batch.take();
  batch.add(command("view.add", 1));
  batch.add(command("web.load", 2));
  batch.add(command("web.load", 2));
  EXPECT_EQ(batch.take().at("type").as_string(), "web.load");
  EXPECT_EQ(batch.take().at("type").as_string(), "view.add");
  EXPECT_EQ(batch.take().at("type").as_string(), "web.load");
}

TEST(CommandsReadTogether, GoOnInOrderWhenSomeWereCarriedOut) {
  CommandBatch batch;
  batch.add(command("window.create", 1));
  batch.add(command("web.create", 2));
  EXPECT_EQ(batch.take().at("type").as_string(), "web.create");
  batch.add(command("web.load", 2));
  EXPECT_EQ(batch.take().at("type").as_string(), "web.load");
  EXPECT_EQ(batch.take().at("type").as_string(), "window.create");
  EXPECT_TRUE(batch.empty());
}

TEST(CommandsReadTogether, ShowAWindowOnceItsViewsAreDressed) {
  EXPECT_EQ(
      ordered({command("window.create", 1), command("window.show", 1), command("layout.outlet", 2),
               command("view.hidden", 2), command("view.pinTop", 2)}),
      (Order{"window.create 1", "layout.outlet 2", "view.hidden 2", "view.pinTop 2",
             "window.show 1"}));
}

TEST(CommandsReadTogether, ShowAWindowBeforeWhatIsAskedOfTheWindowOrThePage) {
  EXPECT_EQ(ordered({command("window.show", 1), command("snapshot", 1), command("view.hidden", 2)}),
            (Order{"window.show 1", "snapshot 1", "view.hidden 2"}));
  EXPECT_EQ(ordered({command("window.show", 1), command("web.evaluate", 2)}),
            (Order{"window.show 1", "web.evaluate 2"}));
  EXPECT_EQ(ordered({command("window.show", 1), command("window.close", 1)}),
            (Order{"window.show 1", "window.close 1"}));
}

TEST(CommandsReadTogether, MayHaveAViewThatIsNoNumber) {
  CommandBatch batch;
  batch.add({{"type", "web.load"}, {"view", "two"}});
  batch.add({{"type", "ping"}});
  EXPECT_EQ(batch.take().at("type").as_string(), "web.load");
  EXPECT_EQ(batch.take().at("type").as_string(), "ping");
}

}  // namespace
}  // namespace zovk::helper
