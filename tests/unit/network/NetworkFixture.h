#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include "fixtures/EngineFixture.h"
#include "fixtures/LogLines.h"
#include "network/ZOVKPopupNetwork.h"

namespace zovk {

/// Returns the parameters of a request of the game 1001.
inline ZOVKPopupUrlParams params(const std::string& urlStr, const std::string& actionPath = "") {
  ZOVKPopupUrlParams result;
  result.urlStr = urlStr;
  result.actionPath = actionPath;
  result.gameID = "1001";
  result.gameKey = "secret";
  result.version = "1.0.0";
  result.installID = "ABC";
  return result;
}

/// A request object on the memory session, with an empty log, and the arguments of its completion.
class NetworkFixture : public EngineFixture {
 protected:
  using Result = std::pair<bool, std::optional<std::string>>;

  NetworkFixture() {
    ZPLogger::ZPLog(0, "NetworkFixture", "NetworkFixture::start", 1, "the switch is decided");
    log().clear();
  }

  ZOVKPopupNetwork& network() { return *network_; }
  MemoryUrlSession& session() { return memory().urlSession; }
  std::vector<std::string> lines() { return shortLines(log()); }

  /// Returns a completion that adds its arguments to `results_`.
  ZOVKPopupNetwork::RequestComplete record() {
    return [this](bool success, const std::optional<std::string>& data) {
      results_.emplace_back(success, data);
    };
  }
  void get(const ZOVKPopupUrlParams& urlParams) {
    network_->startRequest(ZOVKPopupNetwork::kGet, urlParams, record());
  }

  std::shared_ptr<ZOVKPopupNetwork> network_ =
      std::make_shared<ZOVKPopupNetwork>(memory().urlSession);
  std::vector<Result> results_;
};

}  // namespace zovk
