#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>
#include <gtest/gtest.h>
#include <httplib.h>

#include "e2e/service/ServiceFolder.h"
#include "fixtures/ChildProcess.h"
#include "network/ZOVKPopupUrlParams.h"

namespace zovk {

/// The service on its own folder. It gets requests as from a game: the component's code signs them.
class ServiceFixture : public ::testing::Test {
 protected:
  static constexpr const char* kGame = "1001";
  static constexpr const char* kKey = "s3cret-key";
  static constexpr const char* kPage = "<!DOCTYPE html><p>Welcome</p>";
  static constexpr const char* kConfigPath = "/popup/get_info";

  /// A folder with one game, one page and one popup.
  ServiceFixture();

  /// Starts the service and waits until it listens.
  void start(std::vector<std::string> arguments = {});
  /// Starts it and expects that it ends at once. Returns its exit code.
  int startInVain(std::vector<std::string> arguments);

  /// Returns the parameters of every request of the game to one address.
  ZOVKPopupUrlParams paramsFor(const std::string& path) const;
  /// Returns the signed request target, without the service's address.
  std::string signedTarget(const ZOVKPopupUrlParams& params) const;
  httplib::Result getSigned(const std::string& path);
  httplib::Result postSigned(const std::string& path, const boost::json::object& members);
  httplib::Result getConfig();
  httplib::Result postControl(const boost::json::object& request);

  ServiceFolder& folder() { return folder_; }
  ChildProcess& process() { return *process_; }
  httplib::Client& client() { return *client_; }
  const std::string& base() const { return base_; }
  int port() const { return port_; }
  std::string errors() const { return folder_.read("errors.log"); }

 private:
  ServiceFolder folder_;
  std::unique_ptr<ChildProcess> process_;
  std::unique_ptr<httplib::Client> client_;
  std::string base_;
  int port_ = 0;
};

/// Returns the JSON of an answer; null if it is not JSON.
boost::json::value jsonOf(const httplib::Result& result);

}  // namespace zovk
