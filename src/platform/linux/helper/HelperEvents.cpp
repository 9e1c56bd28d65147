#include "platform/linux/helper/HelperEvents.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "logging/ZPLogger.h"
#include "platform/linux/helper/HelperEventReader.h"
#include "platform/linux/helper/HelperWebView.h"
#include "platform/linux/helper/HelperWindow.h"
#include "protocol/MessageNames.h"

namespace zovk {
namespace {

/// Delivers an event, all of which was read before.
using Delivery = std::function<void(HelperClient&)>;
/// Throws std::invalid_argument for an ill-formed event. A parser may take values out of the
/// message that have no further use there.
using Parser = Delivery (*)(const HelperEventReader& event, HelperMessage& message);

constexpr std::size_t kLongestLogLine = 4096;

std::string printable(std::string_view text) {
  std::string line(text.substr(0, kLongestLogLine));
  std::replace_if(
      line.begin(), line.end(), [](unsigned char c) { return c < ' '; }, ' ');
  return line;
}

Delivery ready(const HelperEventReader& event, HelperMessage&) {
  const HelperId version = event.id(member::kVersion);
  const Rect screen = event.rect(member::kScreen);
  const auto schemes = event.texts(member::kSchemes);
  const auto renderer =
      event.has(member::kRenderer) ? printable(event.text(member::kRenderer)) : std::string();
  return [=](HelperClient& session) {
    if (version != kHelperProtocolVersion) {
      return session.helperIsLost("it speaks version " + std::to_string(version));
    }
    session.objects().screen = screen;
    session.objects().schemes = {schemes.begin(), schemes.end()};
    session.helperIsReady(renderer);
  };
}

Delivery failed(const HelperEventReader& event, HelperMessage&) {
  return [reason = printable(event.text(member::kReason))](HelperClient& session) {
    session.helperIsLost(reason);
  };
}

Delivery screen(const HelperEventReader& event, HelperMessage&) {
  return [bounds = event.rect(member::kScreen)](HelperClient& session) {
    session.objects().screen = bounds;
  };
}

Delivery held(const HelperEventReader& event, HelperMessage&) {
  constexpr std::array<std::pair<std::string_view, Orientation>, 5> kWays{{
      {word::kUnknown, Orientation::kUnknown},
      {word::kPortrait, Orientation::kPortrait},
      {word::kUpsideDown, Orientation::kPortraitUpsideDown},
      {word::kLeft, Orientation::kLandscapeLeft},
      {word::kRight, Orientation::kLandscapeRight},
  }};
  const std::string way = event.text(member::kHeld);
  const auto* const found = std::find_if(kWays.begin(), kWays.end(),
                                         [&way](const auto& known) { return known.first == way; });
  if (found == kWays.end()) HelperEventReader::refuse(member::kHeld, "is no way");
  return [orientation = found->second](HelperClient& session) { session.heldAs(orientation); };
}

Delivery windowKey(const HelperEventReader& event, HelperMessage&) {
  // Losing the keyboard says nothing: only what takes it counts, and other programs do not.
  return [id = event.id(member::kWindow), key = event.flag(member::kKey)](HelperClient& session) {
    HelperObjects& objects = session.objects();
    if (!objects.windows.contains(id)) return;
    if (key) objects.keyWindow = objects.activeWindow = id;
    if (!key && objects.activeWindow == id) objects.activeWindow = 0;
  };
}

Delivery windowOther(const HelperEventReader&, HelperMessage&) {
  return [](HelperClient& session) { session.objects().keyWindow = 0; };
}

Delivery windowSize(const HelperEventReader& event, HelperMessage&) {
  const HelperId id = event.id(member::kWindow);
  const Size size{event.length(member::kWidth), event.length(member::kHeight)};
  event.rect(member::kSafeArea);
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

Delivery windowStuck(const HelperEventReader& event, HelperMessage&) {
  const HelperId id = event.id(member::kWindow);
  const std::string display = event.text(member::kDisplay);
  if (display != word::kX11 && display != word::kWayland) {
    HelperEventReader::refuse(member::kDisplay, "is no display system");
  }
  return [id, display](HelperClient& session) {
    if (session.objects().windows.contains(id)) session.windowIsStuck(display);
  };
}

Delivery backdropWanted(const HelperEventReader&, HelperMessage&) {
  return [](HelperClient& session) { session.backdropWanted(); };
}

Delivery layoutLoaded(const HelperEventReader& event, HelperMessage&) {
  event.id(member::kLayout);
  event.flag(member::kFound);
  event.texts(member::kOutlets);
  return [](HelperClient&) {};  // commands to what a layout lacks have no effect anyway
}

Delivery viewFrame(const HelperEventReader& event, HelperMessage&) {
  const HelperId id = event.id(member::kView);
  const HelperId window = event.id(member::kWindow);
  const HelperInspector::ViewFrame frame{event.rect(member::kFrame), event.flag(member::kVisible)};
  return [=](HelperClient& session) {
    const auto found = session.objects().outlets.find(id);
    if (found == session.objects().outlets.end()) return;
    found->second.window = window;
    found->second.frame = frame;
  };
}

Delivery action(const HelperEventReader& event, HelperMessage&) {
  return
      [id = event.id(member::kLayout), name = event.text(member::kAction)](HelperClient& session) {
        if (const auto owner = findObject(session.objects().layoutOwners, id)) {
          owner->performAction(name);
        }
      };
}

/// Delivers to the web view of the event, if there is one still.
Delivery toWebView(const HelperEventReader& event, std::function<void(HelperWebView&)> deliver) {
  return [id = event.id(member::kView), deliver = std::move(deliver)](HelperClient& session) {
    if (const auto view = findObject(session.objects().webViews, id)) deliver(*view);
  };
}

Delivery toDelegate(const HelperEventReader& event,
                    std::function<void(WebViewDelegate&, WebView&)> deliver) {
  return toWebView(event, [deliver = std::move(deliver)](HelperWebView& view) {
    if (const auto delegate = view.delegate()) deliver(*delegate, view);
  });
}

Delivery webMessage(const HelperEventReader& event, HelperMessage& message) {
  std::optional<boost::json::value> body;
  if (auto* found = message.if_contains(member::kBody)) body.emplace(std::move(*found));
  return toWebView(event, [name = event.text(member::kName), body = std::move(body)](
                              HelperWebView& view) { view.receiveMessage(name, body); });
}

NavigationAction navigationAction(const HelperEventReader& event) {
  NavigationAction action{event.text(member::kUrl), TargetFrame::kNone};
  const std::string target = event.text(member::kTarget);
  if (target == word::kMain) {
    action.targetFrame = TargetFrame::kMain;
  } else if (target == word::kSub) {
    action.targetFrame = TargetFrame::kSub;
  } else if (target != word::kNone) {
    HelperEventReader::refuse(member::kTarget, "is no frame");
  }
  return action;
}

Delivery webPolicy(const HelperEventReader& event, HelperMessage&) {
  const NavigationAction wanted = navigationAction(event);
  const bool fetching = event.flagOr(member::kFetching, false);
  return toWebView(event,
                   [wanted, fetching, decision = event.id(member::kDecision)](HelperWebView& view) {
                     view.decidePolicy(wanted, decision, fetching);
                   });
}

/// Scripts have a value or an error.
void checkResult(const HelperEventReader& event) {
  if (event.has(member::kError)) event.text(member::kError);
  if (event.has(member::kError) == event.has(member::kValue)) {
    HelperEventReader::refuse(member::kValue, "and an error exclude each other");
  }
}

Delivery webFetched(const HelperEventReader& event, HelperMessage& message) {
  checkResult(event);
  return toWebView(event, [decision = event.id(member::kDecision), &message](HelperWebView& view) {
    view.fetched(decision, message);
  });
}

Delivery webWindow(const HelperEventReader& event, HelperMessage&) {
  return toDelegate(event, [wanted = navigationAction(event)](WebViewDelegate& d, WebView& view) {
    d.createWebView(view, wanted);
  });
}

Delivery webAddress(const HelperEventReader& event, HelperMessage&) {
  return toDelegate(
      event, [asked = event.text(member::kAsked), address = event.text(member::kUrl)](
                 WebViewDelegate& d, WebView& view) { d.didResolveAddress(view, asked, address); });
}

Delivery webStarted(const HelperEventReader& event, HelperMessage&) {
  event.text(member::kUrl);
  return toDelegate(
      event, [](WebViewDelegate& d, WebView& view) { d.didStartProvisionalNavigation(view); });
}

Delivery webCommitted(const HelperEventReader& event, HelperMessage&) {
  event.text(member::kUrl);
  return toWebView(event, [](HelperWebView& view) { view.pageCommitted(); });
}

Delivery webFinished(const HelperEventReader& event, HelperMessage&) {
  event.text(member::kUrl);
  return toDelegate(event, [](WebViewDelegate& d, WebView& view) { d.didFinishNavigation(view); });
}

Delivery webProvisionalFailed(const HelperEventReader& event, HelperMessage&) {
  event.text(member::kUrl);
  return toDelegate(event, [error = event.text(member::kError)](WebViewDelegate& d, WebView& view) {
    d.didFailProvisionalNavigation(view, error);
  });
}

Delivery webFailed(const HelperEventReader& event, HelperMessage&) {
  event.text(member::kUrl);
  return toDelegate(event, [error = event.text(member::kError)](WebViewDelegate& d, WebView& view) {
    d.didFailNavigation(view, error);
  });
}

Delivery webTerminated(const HelperEventReader& event, HelperMessage&) {
  return toWebView(event, [](HelperWebView& view) { view.processEnded(); });
}

Delivery webResponsive(const HelperEventReader& event, HelperMessage&) {
  return toDelegate(
      event, [responsive = event.flag(member::kResponsive)](WebViewDelegate& d, WebView& view) {
        d.webContentProcessResponsivenessDidChange(view, responsive);
      });
}

Delivery pong(const HelperEventReader&, HelperMessage&) {
  return [](HelperClient&) {};  // that it came is all there is to it
}

Delivery webUrl(const HelperEventReader& event, HelperMessage&) {
  return toWebView(event,
                   [url = event.text(member::kUrl)](HelperWebView& view) { view.urlChanged(url); });
}

/// Delivers to the callback that waits for the answer of that number.
Delivery toWaiting(const HelperEventReader& event, HelperMessage& message) {
  return [id = event.id(member::kId), &message](HelperClient& session) {
    if (const auto reply = session.takeReply(id, message.at(member::kType).as_string()))
      reply(&message);
  };
}

Delivery webEvaluated(const HelperEventReader& event, HelperMessage& message) {
  checkResult(event);
  return toWaiting(event, message);
}

Delivery urlOpened(const HelperEventReader& event, HelperMessage& message) {
  event.flag(member::kOpened);
  return toWaiting(event, message);
}

Delivery snapshotDone(const HelperEventReader& event, HelperMessage& message) {
  event.flag(member::kDone);
  return toWaiting(event, message);
}

Delivery logLine(const HelperEventReader& event, HelperMessage&) {
  return [line = printable(event.text(member::kLine))](HelperClient&) {
    ZPLogger::writeDirectly(line);
  };
}

constexpr std::array<std::pair<std::string_view, Parser>, 31> kParsers{{
    {event::kReady, ready},
    {event::kFailed, failed},
    {event::kScreen, screen},
    {event::kHeld, held},
    {event::kWindowKey, windowKey},
    {event::kWindowOther, windowOther},
    {event::kWindowSize, windowSize},
    {event::kWindowStuck, windowStuck},
    {event::kBackdropWanted, backdropWanted},
    {event::kLayoutLoaded, layoutLoaded},
    {event::kViewFrame, viewFrame},
    {event::kAction, action},
    {event::kWebMessage, webMessage},
    {event::kWebPolicy, webPolicy},
    {event::kWebFetched, webFetched},
    {event::kWebWindow, webWindow},
    {event::kWebAddress, webAddress},
    {event::kWebStarted, webStarted},
    {event::kWebCommitted, webCommitted},
    {event::kWebFinished, webFinished},
    {event::kWebProvisionalFailed, webProvisionalFailed},
    {event::kWebFailed, webFailed},
    {event::kWebTerminated, webTerminated},
    {event::kWebResponsive, webResponsive},
    {event::kWebUrl, webUrl},
    {event::kWebEvaluated, webEvaluated},
    {event::kUrlOpened, urlOpened},
    {event::kSnapshotDone, snapshotDone},
    {event::kSynced, toWaiting},
    {event::kPong, pong},
    {event::kLog, logLine},
}};

Parser parserOf(std::string_view type) {
  for (const auto& [name, parser] : kParsers) {
    if (name == type) return parser;
  }
  return nullptr;
}

}  // namespace

void deliverHelperEvent(HelperClient& session, HelperMessage event) {
  const std::string type(event.at(member::kType).as_string());
  const Parser parser = parserOf(type);
  if (parser == nullptr) {
    return logError("Helper sent an unknown event: %s", printable(type));
  }
  Delivery delivery;
  try {
    delivery = parser(HelperEventReader(event), event);
  } catch (const std::invalid_argument&) {
    return logError("Helper sent an ill-formed %s event", type);
  }
  delivery(session);
}

}  // namespace zovk
