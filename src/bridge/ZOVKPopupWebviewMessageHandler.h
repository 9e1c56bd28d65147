#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include <boost/json/value.hpp>

#include "zovkpopup/platform/WebView.h"

namespace zovk {

/// Receives the posts of a popup page and turns them into result codes. Main thread only. It copies
/// the callback, and calls it while it handles the message. Everything that is not one of the known
/// messages is ignored, without a log line and without an answer.
class ZOVKPopupWebviewMessageHandler : public ScriptMessageHandler {
 public:
  /// `message` is the page's "msg", unchanged; an empty text if the page gave none.
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
