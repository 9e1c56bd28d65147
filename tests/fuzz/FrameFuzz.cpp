// What a hostile helper can send a game: through a real socket, the decoder and the delivery of
// events, to a window, a layout, a page with a bridge and everything that waits for an answer.
//
// An input that begins with a zero byte goes out as it stands; of any other, each line becomes a
// frame, so that the search need not find lengths.
#include <array>
#include <memory>
#include <string>
#include <string_view>

#include <sys/socket.h>

#include "fuzz/Fuzz.h"
#include "platform/linux/helper/HelperUserInterface.h"
#include "platform/memory/MemoryPlatform.h"
#include "zovkpopup/Bridge.h"

namespace zovk {
namespace {

class Screen final : public ViewController, public LayoutOwner {
 public:
  void loadView(std::shared_ptr<View> view) override { view_ = std::move(view); }
  void updateViewConstraints() override {}
  void viewWillTransitionToSize(const Size&, TransitionCoordinator& coordinator) override {
    coordinator.animateAlongside([] {}, [] {});
  }
  void tearDown() override { view_.reset(); }
  void interfaceDidFail(const std::string&) override {}
  void performAction(const std::string&) override {}

 private:
  std::shared_ptr<View> view_;
};

class Handler final : public ScriptMessageHandler {
 public:
  void didReceiveScriptMessage(const std::string&,
                               const std::optional<boost::json::value>&) override {}
};

/// The other end of the socket; a helper that was started again has none.
struct Helper {
  UniqueFd socket;

  HelperLauncher launcher() {
    HelperLauncher launcher;
    launcher.start = [this]() -> HelperLauncher::Started {
      std::array<int, 2> ends{};
      if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) std::abort();
      socket = UniqueFd(ends[1]);
      return {UniqueFd(ends[0]), std::nullopt, {}};
    };
    return launcher;
  }
  void send(std::string_view bytes) const {
    (void)::send(socket.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
  }
  void sendFrame(std::string_view text) const {
    std::string frame;
    for (unsigned shift = 0; shift < 32; shift += 8) {
      frame += static_cast<char>(text.size() >> shift & 0xFFU);
    }
    send(frame.append(text));
  }
};

const auto kNoScriptResult = [](const ScriptResult&) {};
const auto kNoAnswer = [](bool) {};

class Game {
 public:
  Game() {
    WebViewConfiguration configuration;
    configuration.scriptMessageHandlers["Game"] = std::make_shared<Handler>();
    window_ = client_.makeWindow({0, 0, 0, 0});
    window_->setRootViewController(screen_);
    window_->makeKeyAndVisible();
    layout_ = client_.loadLayout("/bundle", "Main", screen_);
    page_ = client_.makeWebView(configuration);
    bridge_ = ZOVKPopupWKWebViewJavascriptBridge::bridgeForWebView(page_, memory()->shared());
    bridge_->registerHandler("echo", [](const auto& data, const auto& reply) { reply(data); });
    page_->load("https://page/");
    page_->evaluateJavaScript("1", kNoScriptResult);
    client_.openUrl("https://page/", kNoAnswer);
    client_.snapshot(nullptr, "/dev/null", kNoAnswer);
    client_.sync(kNoAnswer);
    pump();
  }
  ~Game() { window_->setRootViewController(nullptr); }
  Game(const Game&) = delete;
  Game& operator=(const Game&) = delete;

  void receive(std::string_view input) {
    if (input.starts_with('\0')) {
      helper_.send(input.substr(1));
      return pump();
    }
    while (!input.empty()) {
      const std::string_view line = input.substr(0, input.find('\n'));
      helper_.sendFrame(line);
      pump();
      input.remove_prefix(std::min(input.size(), line.size() + 1));
    }
  }

 private:
  static const std::shared_ptr<MemoryPlatform>& memory() {
    static const auto platform = std::make_shared<MemoryPlatform>();
    return platform;
  }
  void pump() { queue_.pump(std::chrono::seconds(10)); }

  Helper helper_;
  LinuxMainQueue queue_;
  LinuxDevice device_{"/data/fuzz", "fuzz"};
  HelperUserInterface client_{ZOVKPopupHostSettings(), queue_, device_, helper_.launcher()};
  std::shared_ptr<Screen> screen_ = std::make_shared<Screen>();
  std::shared_ptr<Window> window_;
  std::shared_ptr<Layout> layout_;
  std::shared_ptr<WebView> page_;
  std::shared_ptr<ZOVKPopupWKWebViewJavascriptBridge> bridge_;
};

}  // namespace

void fuzz(std::string_view input) {
  Game().receive(input);
}

}  // namespace zovk
