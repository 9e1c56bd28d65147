#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include <boost/json/value.hpp>

#include "zovkpopup/platform/WebView.h"

namespace zovk {

/// Receives what a popup page posts and turns it into a result code. Main thread only; the
/// callback is called from within the message. It holds its own copy of the callback. Anything
/// that is not one of the known messages is ignored, without a log line and without an answer.
class ZOVKPopupWebviewMessageHandler : public ScriptMessageHandler {
 public:
  /// `message` is the page's "msg" as it stands, an empty text when the page gave none.
  using Callback = std::function<void(std::int32_t code, const boost::json::value& message)>;

  static constexpr const char* kPopupChannel = "ZOVKPopup";
  static constexpr const char* kOpenSdkChannel = "__qvOpenSdk";

  void setCallback(Callback callback) { callback_ = std::move(callback); }
  const Callback& callback() const { return callback_; }

  void didReceiveScriptMessage(const std::string& name,
                               const std::optional<boost::json::value>& body) override;

 private:
  void deliver(std::int32_t code, const boost::json::value& message) const;

  Callback callback_;
};

}  // namespace zovk
