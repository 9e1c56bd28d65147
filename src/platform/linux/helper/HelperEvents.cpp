#include "platform/linux/helper/HelperEvents.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "logging/ZPLogger.h"
#include "platform/linux/helper/HelperEventReader.h"
#include "platform/linux/helper/HelperWebView.h"
#include "platform/linux/helper/HelperWindow.h"

namespace zovk {
namespace {

/// The event to deliver, once all of it was read and found well-formed.
using Delivery = std::function<void(HelperClient&)>;
/// A parser may take values out of the message that it has no further use for.
using Parser = Delivery (*)(HelperEventReader& event, HelperMessage& message);

constexpr std::size_t kLongestLogLine = 4096;

std::string printable(std::string_view text) {
  std::string line(text.substr(0, kLongestLogLine));
  std::replace_if(
      line.begin(), line.end(), [](unsigned char c) { return c < ' '; }, ' ');
  return line;
}

Delivery ready(HelperEventReader& event, HelperMessage&) {
  const HelperId version = event.id("version");
  const Rect screen = event.rect("screen");
  const auto schemes = event.texts("schemes");
  return [=](HelperClient& session) {
    if (version != kHelperProtocolVersion) {
      return session.helperIsLost("it speaks version " + std::to_string(version));
    }
    session.objects().screen = screen;
    session.objects().schemes = {schemes.begin(), schemes.end()};
    session.helperIsReady();
  };
}

Delivery failed(HelperEventReader& event, HelperMessage&) {
  return [reason = printable(event.text("reason"))](HelperClient& session) {
    session.helperIsLost(reason);
  };
}

Delivery screen(HelperEventReader& event, HelperMessage&) {
  return
      [bounds = event.rect("screen")](HelperClient& session) { session.objects().screen = bounds; };
}

Delivery held(HelperEventReader& event, HelperMessage&) {
  constexpr std::array<std::pair<std::string_view, Orientation>, 5> kWays{{
      {"unknown", Orientation::kUnknown},
      {"portrait", Orientation::kPortrait},
      {"upsideDown", Orientation::kPortraitUpsideDown},
      {"left", Orientation::kLandscapeLeft},
      {"right", Orientation::kLandscapeRight},
  }};
  const std::string way = event.text("held");
  const auto* const found = std::find_if(kWays.begin(), kWays.end(),
                                         [&way](const auto& known) { return known.first == way; });
  if (found == kWays.end()) {
    event.reject();
    return {};
  }
  return [orientation = found->second](HelperClient& session) { session.heldAs(orientation); };
}

Delivery windowKey(HelperEventReader& event, HelperMessage&) {
  // Losing the keyboard says nothing: only what takes it counts, and other programs do not.
  return [id = event.id("window"), key = event.flag("key")](HelperClient& session) {
    HelperObjects& objects = session.objects();
    if (!objects.windows.contains(id)) return;
    if (key) objects.keyWindow = objects.activeWindow = id;
    if (!key && objects.activeWindow == id) objects.activeWindow = 0;
  };
}

Delivery windowOther(HelperEventReader&, HelperMessage&) {
  return [](HelperClient& session) { session.objects().keyWindow = 0; };
}

Delivery windowSize(HelperEventReader& event, HelperMessage&) {
  const HelperId id = event.id("window");
  const Size size{event.length("width"), event.length("height")};
  event.rect("safeArea");
  return [id, size](HelperClient& session) {
    if (size.width == 0 || size.height == 0) return;
    const auto window = findObject(session.objects().windows, id);
    if (!window) return;
    // A window behind another says nothing about the shape of the screen that the player sees.
    const HelperId front = session.objects().frontWindow();
    if (front == 0 || front == id) session.sizeKnown(size);
    window->sizeChanged(size);
  };
}

Delivery windowStuck(HelperEventReader& event, HelperMessage&) {
  const HelperId id = event.id("window");
  const std::string display = event.text("display");
  if (display != "x11" && display != "wayland") event.reject();
  return [id, display](HelperClient& session) {
    if (session.objects().windows.contains(id)) session.windowIsStuck(display);
  };
}

Delivery backdropWanted(HelperEventReader&, HelperMessage&) {
  return [](HelperClient& session) { session.backdropWanted(); };
}

Delivery layoutLoaded(HelperEventReader& event, HelperMessage&) {
  event.id("layout");
  event.flag("found");
  event.texts("outlets");
  return [](HelperClient&) {};  // commands to what a layout lacks have no effect anyway
}

Delivery viewFrame(HelperEventReader& event, HelperMessage&) {
  const HelperId id = event.id("view");
  const HelperId window = event.id("window");
  const HelperInspector::ViewFrame frame{event.rect("frame"), event.flag("visible")};
  return [=](HelperClient& session) {
    const auto found = session.objects().outlets.find(id);
    if (found == session.objects().outlets.end()) return;
    found->second.window = window;
    found->second.frame = frame;
  };
}

Delivery action(HelperEventReader& event, HelperMessage&) {
  return [id = event.id("layout"), name = event.text("action")](HelperClient& session) {
    if (const auto owner = findObject(session.objects().layoutOwners, id)) {
      owner->performAction(name);
    }
  };
}

/// Delivers to the web view of the event, if there is one still.
Delivery toWebView(HelperEventReader& event, std::function<void(HelperWebView&)> deliver) {
  return [id = event.id("view"), deliver = std::move(deliver)](HelperClient& session) {
    if (const auto view = findObject(session.objects().webViews, id)) deliver(*view);
  };
}

Delivery toDelegate(HelperEventReader& event,
                    std::function<void(WebViewDelegate&, WebView&)> deliver) {
  return toWebView(event, [deliver = std::move(deliver)](HelperWebView& view) {
    if (const auto delegate = view.delegate()) deliver(*delegate, view);
  });
}

Delivery webMessage(HelperEventReader& event, HelperMessage& message) {
  std::optional<boost::json::value> body;
  if (auto* found = message.if_contains("body")) body.emplace(std::move(*found));
  return toWebView(event, [name = event.text("name"), body = std::move(body)](HelperWebView& view) {
    view.receiveMessage(name, body);
  });
}

NavigationAction navigationAction(HelperEventReader& event) {
  NavigationAction action{event.text("url"), TargetFrame::kNone};
  const std::string target = event.text("target");
  if (target == "main") {
    action.targetFrame = TargetFrame::kMain;
  } else if (target == "sub") {
    action.targetFrame = TargetFrame::kSub;
  } else if (target != "none") {
    event.reject();
  }
  return action;
}

Delivery webPolicy(HelperEventReader& event, HelperMessage&) {
  const NavigationAction wanted = navigationAction(event);
  const bool fetching = event.has("fetching") && event.flag("fetching");
  return toWebView(event, [wanted, fetching, decision = event.id("decision")](HelperWebView& view) {
    view.decidePolicy(wanted, decision, fetching);
  });
}

/// Scripts have a value or an error.
void checkResult(HelperEventReader& event) {
  if (event.has("error")) event.text("error");
  if (event.has("error") == event.has("value")) event.reject();
}

Delivery webFetched(HelperEventReader& event, HelperMessage& message) {
  checkResult(event);
  return toWebView(event, [decision = event.id("decision"), &message](HelperWebView& view) {
    view.fetched(decision, message);
  });
}

Delivery webWindow(HelperEventReader& event, HelperMessage&) {
  return toDelegate(event, [wanted = navigationAction(event)](WebViewDelegate& d, WebView& view) {
    d.createWebView(view, wanted);
  });
}

Delivery webAddress(HelperEventReader& event, HelperMessage&) {
  return toDelegate(
      event, [asked = event.text("asked"), address = event.text("url")](
                 WebViewDelegate& d, WebView& view) { d.didResolveAddress(view, asked, address); });
}

Delivery webStarted(HelperEventReader& event, HelperMessage&) {
  event.text("url");
  return toDelegate(
      event, [](WebViewDelegate& d, WebView& view) { d.didStartProvisionalNavigation(view); });
}

Delivery webCommitted(HelperEventReader& event, HelperMessage&) {
  event.text("url");
  return toWebView(event, [](HelperWebView& view) { view.pageCommitted(); });
}

Delivery webFinished(HelperEventReader& event, HelperMessage&) {
  event.text("url");
  return toDelegate(event, [](WebViewDelegate& d, WebView& view) { d.didFinishNavigation(view); });
}

Delivery webProvisionalFailed(HelperEventReader& event, HelperMessage&) {
  event.text("url");
  return toDelegate(event, [error = event.text("error")](WebViewDelegate& d, WebView& view) {
    d.didFailProvisionalNavigation(view, error);
  });
}

Delivery webFailed(HelperEventReader& event, HelperMessage&) {
  event.text("url");
  return toDelegate(event, [error = event.text("error")](WebViewDelegate& d, WebView& view) {
    d.didFailNavigation(view, error);
  });
}

Delivery webTerminated(HelperEventReader& event, HelperMessage&) {
  return toWebView(event, [](HelperWebView& view) { view.processEnded(); });
}

Delivery webResponsive(HelperEventReader& event, HelperMessage&) {
  return toDelegate(event,
                    [responsive = event.flag("responsive")](WebViewDelegate& d, WebView& view) {
                      d.webContentProcessResponsivenessDidChange(view, responsive);
                    });
}

Delivery pong(HelperEventReader&, HelperMessage&) {
  return [](HelperClient&) {};  // that it came is all there is to it
}

Delivery webUrl(HelperEventReader& event, HelperMessage&) {
  return toWebView(event, [url = event.text("url")](HelperWebView& view) { view.urlChanged(url); });
}

/// Delivers to the callback that waits for the answer of that number.
Delivery toWaiting(HelperEventReader& event, HelperMessage& message) {
  return [id = event.id("id"), &message](HelperClient& session) {
    if (const auto reply = session.takeReply(id, message.at("type").as_string())) reply(&message);
  };
}

Delivery webEvaluated(HelperEventReader& event, HelperMessage& message) {
  checkResult(event);
  return toWaiting(event, message);
}

Delivery urlOpened(HelperEventReader& event, HelperMessage& message) {
  event.flag("opened");
  return toWaiting(event, message);
}

Delivery snapshotDone(HelperEventReader& event, HelperMessage& message) {
  event.flag("done");
  return toWaiting(event, message);
}

Delivery logLine(HelperEventReader& event, HelperMessage&) {
  return [line = printable(event.text("line"))](HelperClient&) { ZPLogger::writeDirectly(line); };
}

constexpr std::array<std::pair<std::string_view, Parser>, 31> kParsers{{
    {"ready", ready},
    {"failed", failed},
    {"screen", screen},
    {"held", held},
    {"window.key", windowKey},
    {"window.other", windowOther},
    {"window.size", windowSize},
    {"window.stuck", windowStuck},
    {"backdrop.wanted", backdropWanted},
    {"layout.loaded", layoutLoaded},
    {"view.frame", viewFrame},
    {"action", action},
    {"web.message", webMessage},
    {"web.policy", webPolicy},
    {"web.fetched", webFetched},
    {"web.window", webWindow},
    {"web.address", webAddress},
    {"web.started", webStarted},
    {"web.committed", webCommitted},
    {"web.finished", webFinished},
    {"web.provisionalFailed", webProvisionalFailed},
    {"web.failed", webFailed},
    {"web.terminated", webTerminated},
    {"web.responsive", webResponsive},
    {"web.url", webUrl},
    {"web.evaluated", webEvaluated},
    {"url.opened", urlOpened},
    {"snapshot.done", snapshotDone},
    {"synced", toWaiting},
    {"pong", pong},
    {"log", logLine},
}};

Parser parserOf(std::string_view type) {
  for (const auto& [name, parser] : kParsers) {
    if (name == type) return parser;
  }
  return nullptr;
}

}  // namespace

void deliverHelperEvent(HelperClient& session, HelperMessage event) {
  const std::string type(event.at("type").as_string());
  const Parser parser = parserOf(type);
  if (parser == nullptr) {
    return logError("Helper sent an unknown event: %s", printable(type));
  }
  HelperEventReader reader(event);
  const Delivery delivery = parser(reader, event);
  if (!reader.isWellFormed()) return logError("Helper sent an ill-formed %s event", type);
  delivery(session);
}

}  // namespace zovk
