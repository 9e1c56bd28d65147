// A helper that rests on command.
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <poll.h>

#include "PopupScreen.h"
#include "fixtures/ProcessFacts.h"

namespace zovk {
namespace {

std::vector<pid_t> pageProcesses(const HelperUnderTest& helper) {
  return descendantsNamed(helper.pid(), "WebKitWebProces");
}

/// Whether the helper shares memory with the X server, in which pictures are handed over.
bool sharesPictures(const HelperUnderTest& helper) {
  return hasMapped(helper.pid(), "/SYSV");
}

TEST(HelperAtRest, EndsTheProcessOfThePageThatItHeldReady) {
  HelperUnderTest helper;
  while (pageProcesses(helper).empty()) helper.came("pong");  // it starts in the background
  const std::vector<pid_t> ready = pageProcesses(helper);
  helper.send({{"type", "rest"}});
  for (const pid_t process : ready) EXPECT_TRUE(endsSoon(process));
}

TEST(HelperAtRest, EndsTheProcessOfTheNetwork) {
  HelperUnderTest helper;
  PopupScreen screen(helper);
  screen.openPage("plain.html");
  helper.send({{"type", "web.close"}, {"view", PopupScreen::kWebView}});
  helper.send({{"type", "view.release"}, {"view", PopupScreen::kWebView}});
  const std::vector<pid_t> network = descendantsNamed(helper.pid(), "WebKitNetworkPr");
  EXPECT_EQ(network.size(), 1U);
  helper.send({{"type", "rest"}});
  for (const pid_t process : network) EXPECT_TRUE(endsSoon(process));
}

TEST(HelperAtRest, GivesTheMemoryOfItsProgramTextBack) {
  HelperUnderTest helper;
  const double before = fileMegabytes(helper.pid());
  helper.send({{"type", "rest"}});
  while (fileMegabytes(helper.pid()) > before / 2) helper.came("pong");
}

TEST(HelperAtRest, GivesTheMemoryBackThatTheEngineUsesUpAfterwards) {
  HelperUnderTest helper;
  PopupScreen screen(helper);
  screen.openPage("plain.html");
  EXPECT_EQ(screen.evaluate("document.title"), "Plain");
  helper.send({{"type", "window.close"}, {"window", PopupScreen::kWindow}});
  helper.send({{"type", "rest"}});
  helper.came("pong");
  const double atRest = fileMegabytes(helper.pid());
  // The engine drops what it had for the script's answer after some seconds.
  while (fileMegabytes(helper.pid()) < atRest + 3) poll(nullptr, 0, 100);
  while (fileMegabytes(helper.pid()) > atRest + 1) poll(nullptr, 0, 100);
}

TEST(HelperAtRest, GivesTheMemoryOfItsPicturesBack) {
  HelperUnderTest helper;
  EXPECT_TRUE(sharesPictures(helper)) << "it is kept for the next popup";
  helper.send({{"type", "rest"}});
  helper.send({{"type", "ping"}});
  helper.await("pong");
  EXPECT_FALSE(sharesPictures(helper));
  helper.send({{"type", "prepare"}});
  while (!sharesPictures(helper)) helper.came("pong");
}

TEST(HelperAtRest, HoldsAPageReadyThatHasTheSizeOfAPopup) {
  HelperUnderTest helper;
  PopupScreen screen(helper);
  screen.createWebView();
  const boost::json::array& whole = helper.ready().at("screen").as_array();
  const std::string size = std::to_string(whole.at(2).to_number<int>()) + " " +
                           std::to_string(whole.at(3).to_number<int>());
  EXPECT_EQ(screen.evaluate("innerWidth + ' ' + innerHeight"), boost::json::value(size));
}

TEST(HelperAtRest, ShowsTheNextPopupAsEver) {
  HelperUnderTest helper;
  helper.send({{"type", "rest"}});
  PopupScreen screen(helper);
  screen.openPage("plain.html");
  EXPECT_EQ(screen.evaluate("document.title"), "Plain");
}

TEST(HelperAtRest, ShowsTheNextPopupAfterItWasPrepared) {
  HelperUnderTest helper;
  helper.send({{"type", "rest"}});
  helper.send({{"type", "prepare"}});
  helper.send({{"type", "prepare"}});
  PopupScreen screen(helper);
  screen.openPage("plain.html");
  EXPECT_EQ(screen.evaluate("document.title"), "Plain");
}

}  // namespace
}  // namespace zovk
