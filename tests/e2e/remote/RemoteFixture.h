#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <gmock/gmock.h>

#include "e2e/remote/LogBook.h"
#include "e2e/service/ServiceFolder.h"
#include "fixtures/ChildProcess.h"
#include "fixtures/HostFixture.h"

namespace zovk {

/// A game and its popup service: the real component on the real platform, and the real service in
/// its own process. The game ships a popup for the scene "lobby", of scene type 1; each test
/// decides what the service offers. Starting the game again stands for the next day.
class RemoteFixture : public HostFixture {
 protected:
  static constexpr const char* kGame = "1001";
  static constexpr const char* kKey = "s3cret-key";
  static constexpr const char* kConfigPath = "/popup/get_info";
  static constexpr const char* kPage = "<!DOCTYPE html><p>from the service</p>";
  static constexpr std::uint64_t kLocalType = 1;
  static constexpr std::uint64_t kRemoteType = 2;

  RemoteFixture();
  ~RemoteFixture() override;

  // The service.
  void startService(std::vector<std::string> arguments = {});
  void stopService();
  /// Sets a fault while the service runs or, with "none", removes it.
  void setFault(const std::string& path, const std::string& kind, std::uint64_t times = 0);
  const std::string& base() const { return base_; }
  ServiceFolder& folder() { return folder_; }
  boost::json::array reports() const;
  /// Writes a configuration document with these popups.
  void offer(const boost::json::array& popups, const std::string& name = "config.json");
  /// Returns a popup of the service with a page file.
  static boost::json::object pageFile(const std::string& scene, std::uint64_t sceneType,
                                      const std::string& page);
  /// Returns a conditional popup of the service, a web page, whose condition is asked at
  /// `checkPath`.
  static boost::json::object conditional(const std::string& scene, const std::string& checkPath);
  /// Returns the request lines of the service, each with the status of its answer. They are
  /// complete once the service has been stopped.
  std::string requestLog() const;

  // The game.
  /// Starts the game without a screen and lets it ask the service at the address. What it logs up
  /// to the request is forgotten.
  void startGame(const std::string& address);
  void startGame() { startGame(base_); }
  void endGame();
  /// Starts the game, waits until it has all `pages`, and ends it.
  void letADayPass(std::size_t pages = 1);
  virtual ZOVKPopupHostSettings gameSettings();
  LogBook& log() { return *log_; }
  /// Waits for a line with this end. Fails the test with the log if it does not come.
  void await(const std::string& message, std::size_t times = 1);
  void awaitPages(std::size_t count);

  std::filesystem::path cachePath(const std::string& name = "") const;
  std::filesystem::path settingsPath() const;
  std::string savedConfig() const { return readFile(cachePath("ZOVKPopupRemote.config")); }
  /// Returns where the game keeps a page file of the service.
  std::filesystem::path cachedPage(const std::string& html,
                                   std::uint64_t sceneType = kRemoteType) const;
  std::vector<std::string> cacheListing() const;
  static std::string readFile(const std::filesystem::path& path);

  /// Matches the error line of a request to the path that failed for this reason.
  testing::Matcher<std::string> requestError(const std::string& path,
                                             const std::string& reason) const;

 private:
  std::shared_ptr<LogBook> log_ = std::make_shared<LogBook>();
  ServiceFolder folder_;
  std::unique_ptr<ChildProcess> process_;
  std::string base_;
};

}  // namespace zovk
