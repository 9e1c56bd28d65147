#include "platform/linux/WebHostEvents.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "logging/ZPLogger.h"
#include "platform/linux/WebHostEventReader.h"
#include "platform/linux/WebHostWebView.h"
#include "platform/linux/WebHostWindow.h"

namespace zovk {
namespace {

/// The event to deliver, once all of it was read and found well-formed.
using Delivery = std::function<void(WebHostSession&)>;
/// A parser may take values out of the message that it has no further use for.
using Parser = Delivery (*)(WebHostEventReader& event, WebHostMessage& message);

constexpr std::size_t kLongestLogLine = 4096;

std::string printable(std::string_view text) {
  std::string line(text.substr(0, kLongestLogLine));
  std::replace_if(
      line.begin(), line.end(), [](unsigned char c) { return c < ' '; }, ' ');
  return line;
}

Delivery ready(WebHostEventReader& event, WebHostMessage&) {
  const WebHostId version = event.id("version");
  const Rect screen = event.rect("screen");
  const auto schemes = event.texts("schemes");
  return [=](WebHostSession& session) {
    if (version != kWebHostProtocolVersion) {
      return session.helperIsLost("it speaks version " + std::to_string(version));
    }
    session.objects().screen = screen;
    session.objects().schemes = {schemes.begin(), schemes.end()};
    session.helperIsReady();
  };
}

Delivery failed(WebHostEventReader& event, WebHostMessage&) {
  return [reason = printable(event.text("reason"))](WebHostSession& session) {
    session.helperIsLost(reason);
  };
}

Delivery screen(WebHostEventReader& event, WebHostMessage&) {
  return [bounds = event.rect("screen")](WebHostSession& session) {
    session.objects().screen = bounds;
  };
}

Delivery held(WebHostEventReader& event, WebHostMessage&) {
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
  return [orientation = found->second](WebHostSession& session) { session.heldAs(orientation); };
}

Delivery windowKey(WebHostEventReader& event, WebHostMessage&) {
  // Losing the keyboard says nothing: only what takes it counts, and other programs do not.
  return [id = event.id("window"), key = event.flag("key")](WebHostSession& session) {
    WebHostObjects& objects = session.objects();
    if (!objects.windows.contains(id)) return;
    if (key) objects.keyWindow = objects.activeWindow = id;
    if (!key && objects.activeWindow == id) objects.activeWindow = 0;
  };
}

Delivery windowOther(WebHostEventReader&, WebHostMessage&) {
  return [](WebHostSession& session) { session.objects().keyWindow = 0; };
}

Delivery windowSize(WebHostEventReader& event, WebHostMessage&) {
  const WebHostId id = event.id("window");
  const Size size{event.length("width"), event.length("height")};
  event.rect("safeArea");
  return [id, size](WebHostSession& session) {
    if (size.width == 0 || size.height == 0) return;
    const auto window = findObject(session.objects().windows, id);
    if (!window) return;
    // A window behind another says nothing about the shape of the screen that the player sees.
    const WebHostId front = session.objects().frontWindow();
    if (front == 0 || front == id) session.sizeKnown(size);
    window->sizeChanged(size);
  };
}

Delivery windowStuck(WebHostEventReader& event, WebHostMessage&) {
  const WebHostId id = event.id("window");
  const std::string display = event.text("display");
  if (display != "x11" && display != "wayland") event.reject();
  return [id, display](WebHostSession& session) {
    if (session.objects().windows.contains(id)) session.windowIsStuck(display);
  };
}

Delivery backdropWanted(WebHostEventReader&, WebHostMessage&) {
  return [](WebHostSession& session) { session.backdropWanted(); };
}

Delivery layoutLoaded(WebHostEventReader& event, WebHostMessage&) {
  event.id("layout");
  event.flag("found");
  event.texts("outlets");
  return [](WebHostSession&) {};  // commands to what a layout lacks have no effect anyway
}

Delivery viewFrame(WebHostEventReader& event, WebHostMessage&) {
  const WebHostId id = event.id("view");
  const WebHostId window = event.id("window");
  const WebHostInspector::ViewFrame frame{event.rect("frame"), event.flag("visible")};
  return [=](WebHostSession& session) {
    const auto found = session.objects().outlets.find(id);
    if (found == session.objects().outlets.end()) return;
    found->second.window = window;
    found->second.frame = frame;
  };
}

Delivery action(WebHostEventReader& event, WebHostMessage&) {
  return [id = event.id("layout"), name = event.text("action")](WebHostSession& session) {
    if (const auto owner = findObject(session.objects().layoutOwners, id)) {
      owner->performAction(name);
    }
  };
}

/// Delivers to the web view of the event, if there is one still.
Delivery toWebView(WebHostEventReader& event, std::function<void(WebHostWebView&)> deliver) {
  return [id = event.id("view"), deliver = std::move(deliver)](WebHostSession& session) {
    if (const auto view = findObject(session.objects().webViews, id)) deliver(*view);
  };
}

Delivery toDelegate(WebHostEventReader& event,
                    std::function<void(WebViewDelegate&, WebView&)> deliver) {
  return toWebView(event, [deliver = std::move(deliver)](WebHostWebView& view) {
    if (const auto delegate = view.delegate()) deliver(*delegate, view);
  });
}

Delivery webMessage(WebHostEventReader& event, WebHostMessage& message) {
  std::optional<boost::json::value> body;
  if (auto* found = message.if_contains("body")) body.emplace(std::move(*found));
  return toWebView(event, [name = event.text("name"), body = std::move(body)](
                              WebHostWebView& view) { view.receiveMessage(name, body); });
}

NavigationAction navigationAction(WebHostEventReader& event) {
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

Delivery webPolicy(WebHostEventReader& event, WebHostMessage&) {
  const NavigationAction wanted = navigationAction(event);
  return toWebView(event, [wanted, decision = event.id("decision")](WebHostWebView& view) {
    view.decidePolicy(wanted, decision);
  });
}

Delivery webWindow(WebHostEventReader& event, WebHostMessage&) {
  return toDelegate(event, [wanted = navigationAction(event)](WebViewDelegate& d, WebView& view) {
    d.createWebView(view, wanted);
  });
}

Delivery webAddress(WebHostEventReader& event, WebHostMessage&) {
  return toDelegate(
      event, [asked = event.text("asked"), address = event.text("url")](
                 WebViewDelegate& d, WebView& view) { d.didResolveAddress(view, asked, address); });
}

Delivery webStarted(WebHostEventReader& event, WebHostMessage&) {
  event.text("url");
  return toDelegate(
      event, [](WebViewDelegate& d, WebView& view) { d.didStartProvisionalNavigation(view); });
}

Delivery webCommitted(WebHostEventReader& event, WebHostMessage&) {
  event.text("url");
  return toWebView(event, [](WebHostWebView& view) { view.pageCommitted(); });
}

Delivery webFinished(WebHostEventReader& event, WebHostMessage&) {
  event.text("url");
  return toDelegate(event, [](WebViewDelegate& d, WebView& view) { d.didFinishNavigation(view); });
}

Delivery webProvisionalFailed(WebHostEventReader& event, WebHostMessage&) {
  event.text("url");
  return toDelegate(event, [error = event.text("error")](WebViewDelegate& d, WebView& view) {
    d.didFailProvisionalNavigation(view, error);
  });
}

Delivery webFailed(WebHostEventReader& event, WebHostMessage&) {
  event.text("url");
  return toDelegate(event, [error = event.text("error")](WebViewDelegate& d, WebView& view) {
    d.didFailNavigation(view, error);
  });
}

Delivery webTerminated(WebHostEventReader& event, WebHostMessage&) {
  return toWebView(event, [](WebHostWebView& view) { view.processEnded(); });
}

Delivery webResponsive(WebHostEventReader& event, WebHostMessage&) {
  return toDelegate(event,
                    [responsive = event.flag("responsive")](WebViewDelegate& d, WebView& view) {
                      d.webContentProcessResponsivenessDidChange(view, responsive);
                    });
}

Delivery pong(WebHostEventReader&, WebHostMessage&) {
  return [](WebHostSession&) {};  // that it came is all there is to it
}

Delivery webUrl(WebHostEventReader& event, WebHostMessage&) {
  return toWebView(event,
                   [url = event.text("url")](WebHostWebView& view) { view.urlChanged(url); });
}

/// Delivers to whoever waits for the answer of that number.
Delivery toWaiting(WebHostEventReader& event, WebHostMessage& message) {
  return [id = event.id("id"), &message](WebHostSession& session) {
    if (const auto reply = session.takeReply(id, message.at("type").as_string())) reply(&message);
  };
}

Delivery webEvaluated(WebHostEventReader& event, WebHostMessage& message) {
  if (event.has("error")) event.text("error");
  if (event.has("error") == event.has("value")) event.reject();
  return toWaiting(event, message);
}

Delivery urlOpened(WebHostEventReader& event, WebHostMessage& message) {
  event.flag("opened");
  return toWaiting(event, message);
}

Delivery snapshotDone(WebHostEventReader& event, WebHostMessage& message) {
  event.flag("done");
  return toWaiting(event, message);
}

Delivery logLine(WebHostEventReader& event, WebHostMessage&) {
  return [line = printable(event.text("line"))](WebHostSession&) { ZPLogger::writeDirectly(line); };
}

constexpr std::array<std::pair<std::string_view, Parser>, 30> kParsers{{
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

void deliverWebHostEvent(WebHostSession& session, WebHostMessage event) {
  const std::string type(event.at("type").as_string());
  const Parser parser = parserOf(type);
  if (parser == nullptr) {
    return logError("Web host sent an unknown event: %s", printable(type));
  }
  WebHostEventReader reader(event);
  const Delivery delivery = parser(reader, event);
  if (!reader.isWellFormed()) return logError("Web host sent an ill-formed %s event", type);
  delivery(session);
}

}  // namespace zovk
