#include "BridgeGame.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

#include <poll.h>

#include "Statistics.h"
#include "zovkpopup/Bridge.h"
#include "zovkpopup/Host.h"

namespace zovk {
namespace {

using Value = std::optional<boost::json::value>;
using Respond = ZOVKPopupWKWebViewJavascriptBridge::ResponseCallback;
using SteadyClock = std::chrono::steady_clock;

constexpr const char* kPage = R"(<!doctype html><meta charset="utf-8"><title>Bridge</title>
<script>
window.WVJBCallbacks = [(bridge) => {
  bridge.registerHandler('echo', (data, respond) => respond(data));
  bridge.registerHandler('run', (wanted, respond) => {
    let sent = 0, answered = 0;
    const call = () => {
      const number = ++sent;
      bridge.callHandler('twice', number, (answer) => {
        if (answer !== 2 * number) return respond('a wrong answer');
        if (++answered === wanted.calls) return respond(answered);
        if (sent < wanted.calls) call();
      });
    };
    while (sent < Math.min(wanted.inFlight, wanted.calls)) call();
  });
}];
const asking = document.createElement('iframe');
asking.style.display = 'none';
asking.src = 'https://__bridge_loaded__';
document.documentElement.append(asking);
</script>)";

[[noreturn]] void fail(const std::string& reason) {
  std::fprintf(stderr, "%s\n", reason.c_str());
  std::exit(1);
}

void expect(const Value& answer, std::int64_t expected) {
  if (!answer || *answer != expected) fail("an answer was wrong");
}

}  // namespace

BridgeGame::BridgeGame() {
  const auto page = home_.path() / "page.html";
  std::ofstream(page) << kPage;
  ZOVKPopupHostSettings settings;
  settings.applicationId = "zovkpopup-bridge";
  settings.resourceDirectory = home_.path().string();
  settings.dataDirectory = (home_.path() / "data").string();
  if (!ZOVKPopupHost::setUp(settings)) fail("the host cannot be set up");
  ZOVKPopupWebWindowSettings window;
  window.pageFile = page.string();
  window.failed = fail;
  window_ = ZOVKPopupWebWindow::open(window);
  if (!window_) fail("the window cannot be opened");
  window_->bridge().registerHandler("twice", [](const Value& data, const Respond& respond) {
    if (!data || !data->is_int64()) fail("a call was wrong");
    respond(boost::json::value(2 * data->get_int64()));
  });
}

BridgeGame::~BridgeGame() {
  window_.reset();
  ZOVKPopupHost::shutDown();
}

void BridgeGame::closeWindow() {
  window_.reset();
  const auto end = SteadyClock::now() + std::chrono::seconds(5);
  while (SteadyClock::now() < end) {
    pollfd events{ZOVKPopupHost::pollDescriptor(), POLLIN, 0};
    poll(&events, 1, 500);
    ZOVKPopupHost::pump();
  }
}

void BridgeGame::turn() {
  pollfd events{ZOVKPopupHost::pollDescriptor(), POLLIN, 0};
  if (poll(&events, 1, 60'000) == 0) fail("nothing happened for a minute");
  ZOVKPopupHost::pump();
}

double BridgeGame::callsFromPage(int calls, int inFlight, const Turn& turn) {
  bool done = false;
  const auto start = SteadyClock::now();
  window_->bridge().callHandler("run",
                                boost::json::value({{"calls", calls}, {"inFlight", inFlight}}),
                                [&](const Value& answer) {
                                  expect(answer, calls);
                                  done = true;
                                });
  while (!done) turn();
  return Milliseconds(SteadyClock::now() - start).count();
}

double BridgeGame::callsFromGame(int calls, int inFlight, const Turn& turn) {
  toSend_ = toHear_ = calls;
  const auto start = SteadyClock::now();
  for (int i = 0; i < inFlight; ++i) callNext();
  while (toHear_ > 0) turn();
  return Milliseconds(SteadyClock::now() - start).count();
}

void BridgeGame::callNext() {
  if (toSend_ == 0) return;
  const std::int64_t number = toSend_--;
  window_->bridge().callHandler("echo", boost::json::value(number),
                                [this, number](const Value& answer) {
                                  expect(answer, number);
                                  --toHear_;
                                  callNext();
                                });
}

}  // namespace zovk
