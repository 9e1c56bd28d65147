#pragma once

#include <string>

#include <gtest/gtest.h>

#include "LoopbackServer.h"
#include "PopupScreen.h"

namespace zovk {

/// A page of a site on the loopback in a popup's screen. The page has `tell(value)`.
class WebPageFixture : public testing::Test {
 protected:
  std::string serve(const std::string& path, const std::string& html) {
    return site_.handle(path, [html](const httplib::Request&, httplib::Response& response) {
      response.set_content(html, "text/html; charset=utf-8");
    });
  }
  static std::string page(const std::string& script, const std::string& body = "") {
    return "<!doctype html><title>Page</title><body style='margin:0;background:#fff'>" + body +
           "<script>const tell = value =>"
           "webkit.messageHandlers.ZOVKPopup.postMessage(value);" +
           script + "</script>";
  }
  void open(const std::string& script, const std::string& body = "") {
    screen_.open();
    screen_.load(serve("/page", page(script, body)));
  }
  boost::json::value told() { return helper_.await("web.message").at("body"); }

  LoopbackServer site_;  // before the helper, which it keeps from proxies
  const ScratchDirectory home_;
  HelperUnderTest helper_{HelperUnderTest::Start::kGreeted, {"HOME=" + home_.path().string()}};
  PopupScreen screen_{helper_};
};

}  // namespace zovk
