#pragma once

#include <string_view>

namespace zovk {

/// What the game asks of its helper.
namespace command {
inline constexpr std::string_view kBackdrop = "backdrop";
inline constexpr std::string_view kGameKey = "game.key";
inline constexpr std::string_view kGameSize = "game.size";
inline constexpr std::string_view kHello = "hello";
inline constexpr std::string_view kLayoutClose = "layout.close";
inline constexpr std::string_view kLayoutLoad = "layout.load";
inline constexpr std::string_view kLayoutOutlet = "layout.outlet";
inline constexpr std::string_view kPadPress = "pad.press";
inline constexpr std::string_view kPing = "ping";
inline constexpr std::string_view kSnapshot = "snapshot";
inline constexpr std::string_view kSync = "sync";
inline constexpr std::string_view kUrlOpen = "url.open";
inline constexpr std::string_view kViewAdd = "view.add";
inline constexpr std::string_view kViewAlpha = "view.alpha";
inline constexpr std::string_view kViewBack = "view.back";
inline constexpr std::string_view kViewBackground = "view.background";
inline constexpr std::string_view kViewClip = "view.clip";
inline constexpr std::string_view kViewHidden = "view.hidden";
inline constexpr std::string_view kViewImage = "view.image";
inline constexpr std::string_view kViewPinBottom = "view.pinBottom";
inline constexpr std::string_view kViewPinEdges = "view.pinEdges";
inline constexpr std::string_view kViewPinTop = "view.pinTop";
inline constexpr std::string_view kViewRelease = "view.release";
inline constexpr std::string_view kViewRemove = "view.remove";
inline constexpr std::string_view kWebClose = "web.close";
inline constexpr std::string_view kWebCreate = "web.create";
inline constexpr std::string_view kWebDecide = "web.decide";
inline constexpr std::string_view kWebEvaluate = "web.evaluate";
inline constexpr std::string_view kWebFetchAhead = "web.fetchAhead";
inline constexpr std::string_view kWebLoad = "web.load";
inline constexpr std::string_view kWebLoadFile = "web.loadFile";
inline constexpr std::string_view kWebReload = "web.reload";
inline constexpr std::string_view kWebRun = "web.run";
inline constexpr std::string_view kWebStop = "web.stop";
inline constexpr std::string_view kWebTerminate = "web.terminate";
inline constexpr std::string_view kWindowBackground = "window.background";
inline constexpr std::string_view kWindowClose = "window.close";
inline constexpr std::string_view kWindowCreate = "window.create";
inline constexpr std::string_view kWindowShow = "window.show";
}  // namespace command

/// What the helper reports to the game.
namespace event {
inline constexpr std::string_view kAction = "action";
inline constexpr std::string_view kBackdropWanted = "backdrop.wanted";
inline constexpr std::string_view kFailed = "failed";
inline constexpr std::string_view kHeld = "held";
inline constexpr std::string_view kLayoutLoaded = "layout.loaded";
inline constexpr std::string_view kLog = "log";
inline constexpr std::string_view kPong = "pong";
inline constexpr std::string_view kReady = "ready";
inline constexpr std::string_view kScreen = "screen";
inline constexpr std::string_view kSnapshotDone = "snapshot.done";
inline constexpr std::string_view kSynced = "synced";
inline constexpr std::string_view kUrlOpened = "url.opened";
inline constexpr std::string_view kViewFrame = "view.frame";
inline constexpr std::string_view kWebAddress = "web.address";
inline constexpr std::string_view kWebCommitted = "web.committed";
inline constexpr std::string_view kWebEvaluated = "web.evaluated";
inline constexpr std::string_view kWebFailed = "web.failed";
inline constexpr std::string_view kWebFetched = "web.fetched";
inline constexpr std::string_view kWebFinished = "web.finished";
inline constexpr std::string_view kWebMessage = "web.message";
inline constexpr std::string_view kWebPolicy = "web.policy";
inline constexpr std::string_view kWebProvisionalFailed = "web.provisionalFailed";
inline constexpr std::string_view kWebResponsive = "web.responsive";
inline constexpr std::string_view kWebStarted = "web.started";
inline constexpr std::string_view kWebTerminated = "web.terminated";
inline constexpr std::string_view kWebUrl = "web.url";
inline constexpr std::string_view kWebWindow = "web.window";
inline constexpr std::string_view kWindowKey = "window.key";
inline constexpr std::string_view kWindowOther = "window.other";
inline constexpr std::string_view kWindowSize = "window.size";
inline constexpr std::string_view kWindowStuck = "window.stuck";
}  // namespace event

/// What messages hold.
namespace member {
inline constexpr std::string_view kAction = "action";
inline constexpr std::string_view kAddress = "address";
inline constexpr std::string_view kAdjustInset = "adjustInset";
inline constexpr std::string_view kAllow = "allow";
inline constexpr std::string_view kAllowed = "allowed";
inline constexpr std::string_view kAlpha = "alpha";
inline constexpr std::string_view kApplication = "application";
inline constexpr std::string_view kAsked = "asked";
inline constexpr std::string_view kBody = "body";
inline constexpr std::string_view kBounces = "bounces";
inline constexpr std::string_view kBundle = "bundle";
inline constexpr std::string_view kCandidates = "candidates";
inline constexpr std::string_view kChild = "child";
inline constexpr std::string_view kClips = "clips";
inline constexpr std::string_view kColor = "color";
inline constexpr std::string_view kDataDirectory = "dataDirectory";
inline constexpr std::string_view kDecision = "decision";
inline constexpr std::string_view kDeveloperTools = "developerTools";
inline constexpr std::string_view kDisplay = "display";
inline constexpr std::string_view kDone = "done";
inline constexpr std::string_view kDrawing = "drawing";
inline constexpr std::string_view kDrawingFailed = "drawingFailed";
inline constexpr std::string_view kError = "error";
inline constexpr std::string_view kFetching = "fetching";
inline constexpr std::string_view kFound = "found";
inline constexpr std::string_view kFrame = "frame";
inline constexpr std::string_view kGameSize = "gameSize";
inline constexpr std::string_view kHandlers = "handlers";
inline constexpr std::string_view kHeight = "height";
inline constexpr std::string_view kHeld = "held";
inline constexpr std::string_view kHidden = "hidden";
inline constexpr std::string_view kId = "id";
inline constexpr std::string_view kInlineMedia = "inlineMedia";
inline constexpr std::string_view kKey = "key";
inline constexpr std::string_view kLayout = "layout";
inline constexpr std::string_view kLeaveName = "leaveName";
inline constexpr std::string_view kLine = "line";
inline constexpr std::string_view kMobile = "mobile";
inline constexpr std::string_view kName = "name";
inline constexpr std::string_view kNativeWindow = "nativeWindow";
inline constexpr std::string_view kOffset = "offset";
inline constexpr std::string_view kOpaque = "opaque";
inline constexpr std::string_view kOpened = "opened";
inline constexpr std::string_view kOutlets = "outlets";
inline constexpr std::string_view kPageConsole = "pageConsole";
inline constexpr std::string_view kPageMemory = "pageMemory";
inline constexpr std::string_view kPath = "path";
inline constexpr std::string_view kPopupWindow = "popupWindow";
inline constexpr std::string_view kPress = "press";
inline constexpr std::string_view kPressName = "pressName";
inline constexpr std::string_view kReadAccess = "readAccess";
inline constexpr std::string_view kReason = "reason";
inline constexpr std::string_view kRenderer = "renderer";
inline constexpr std::string_view kResponsive = "responsive";
inline constexpr std::string_view kSafeArea = "safeArea";
inline constexpr std::string_view kSchemes = "schemes";
inline constexpr std::string_view kScreen = "screen";
inline constexpr std::string_view kScript = "script";
inline constexpr std::string_view kScrollIndicator = "scrollIndicator";
inline constexpr std::string_view kSize = "size";
inline constexpr std::string_view kTarget = "target";
inline constexpr std::string_view kTo = "to";
inline constexpr std::string_view kType = "type";
inline constexpr std::string_view kUrl = "url";
inline constexpr std::string_view kValue = "value";
inline constexpr std::string_view kVersion = "version";
inline constexpr std::string_view kView = "view";
inline constexpr std::string_view kVisible = "visible";
inline constexpr std::string_view kWaylandWindow = "waylandWindow";
inline constexpr std::string_view kWidth = "width";
inline constexpr std::string_view kWindow = "window";
}  // namespace member

/// Texts with a meaning of their own: display systems, the frame that a navigation is for, how the
/// machine is held, and the presses of a game pad.
namespace word {
inline constexpr std::string_view kX11 = "x11";
inline constexpr std::string_view kWayland = "wayland";
inline constexpr std::string_view kMain = "main";
inline constexpr std::string_view kSub = "sub";
inline constexpr std::string_view kNone = "none";
inline constexpr std::string_view kUnknown = "unknown";
inline constexpr std::string_view kPortrait = "portrait";
inline constexpr std::string_view kUpsideDown = "upsideDown";
inline constexpr std::string_view kLeft = "left";
inline constexpr std::string_view kRight = "right";
inline constexpr std::string_view kUp = "up";
inline constexpr std::string_view kDown = "down";
inline constexpr std::string_view kPress = "press";
inline constexpr std::string_view kLeave = "leave";
}  // namespace word

}  // namespace zovk
