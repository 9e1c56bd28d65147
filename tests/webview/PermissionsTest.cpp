#include <future>
#include <string>

#include "WebPageFixture.h"

namespace zovk {
namespace {

// What a page would take from the system.
using HelperPermissions = WebPageFixture;

TEST_F(HelperPermissions, APageDoesNotHearWhereThePlayerIs) {
  open("navigator.geolocation.getCurrentPosition(() => tell('here'), e => tell(e.code));");
  EXPECT_EQ(told(), 1) << "permission denied";
}

TEST_F(HelperPermissions, APageMayShowNoNotifications) {
  open("Notification.requestPermission().then(tell);");
  EXPECT_EQ(told(), "denied");
}

TEST_F(HelperPermissions, APageHasNoCameraOrMicrophone) {
  open("tell([typeof navigator.mediaDevices, typeof window.RTCPeerConnection]);");
  EXPECT_EQ(told(), (boost::json::value{"undefined", "undefined"}));
}

/// A file that never ends by itself, and whether somebody broke it off.
class LongFile {
 public:
  void answer(httplib::Response& response) {
    response.set_content_provider("application/octet-stream",
                                  [this](std::size_t sent, httplib::DataSink& sink) {
                                    const std::string piece(1 << 14, ' ');
                                    if (sent > kEnough || !sink.write(piece.data(), piece.size())) {
                                      brokenOff_.set_value(sent <= kEnough);
                                      return false;
                                    }
                                    return true;
                                  });
  }
  bool wasBrokenOff() { return brokenOff_.get_future().get(); }

 private:
  static constexpr std::size_t kEnough = std::size_t{64} << 20;
  std::promise<bool> brokenOff_;
};

TEST_F(HelperPermissions, ADownloadIsBrokenOff) {
  LongFile file;
  const std::string url = site_.handle(
      "/file",
      [&](const httplib::Request&, httplib::Response& response) { file.answer(response); });
  open("document.querySelector('a').click();", "<a download href='" + url + "'>get</a>");
  screen_.decide(helper_.await("web.policy"));
  EXPECT_TRUE(file.wasBrokenOff());
}

TEST_F(HelperPermissions, ThePageOfAWebAddressCannotBeReplacedByDataInOne) {
  open("");
  screen_.evaluate("setTimeout(() => location.href = 'data:text/html,<title>Data</title>'); 0");
  screen_.decide(helper_.await("web.policy"));
  const HelperMessage failure = helper_.await("web.provisionalFailed");
  EXPECT_TRUE(failure.at("url").as_string().starts_with("data:")) << failure;
  EXPECT_EQ(screen_.evaluate("document.title"), "Page");
}

TEST_F(HelperPermissions, AFilePageReadsNothingOfTheWebThatIsNotMeantForIt) {
  const std::string data = site_.serve("/data", 200, "secret");
  screen_.openPage("plain.html");
  screen_.evaluate("fetch('" + data +
                   "').then(r => r.text()).then("
                   "t => webkit.messageHandlers.ZOVKPopup.postMessage(t),"
                   "() => webkit.messageHandlers.ZOVKPopup.postMessage('refused')); 0");
  EXPECT_EQ(told(), "refused");
}

}  // namespace
}  // namespace zovk
