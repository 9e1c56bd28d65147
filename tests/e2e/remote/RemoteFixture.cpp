#include "e2e/remote/RemoteFixture.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <iterator>

#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>
#include <httplib.h>

#include "text/Md5.h"

namespace zovk {

namespace fs = std::filesystem;

RemoteFixture::RemoteFixture() {
  // The service is on this machine, whatever the environment says of proxies.
  ::setenv("no_proxy", "*", 1);
  folder_.write("games.json", R"({"1001": "s3cret-key"})");
  folder_.write("pages/lobby.html", kPage);
  offer({pageFile("lobby", kRemoteType, "lobby.html")});
  bundle().addPage(popup("lobby", kLocalType), "<!DOCTYPE html><p>shipped</p>");
  bundle().write();
  std::ofstream(fs::path(bundle().resourceDirectory()) / "Info.json") << R"({"ZOVK_DEBUG": true})";
}

RemoteFixture::~RemoteFixture() {
  ZOVKPopupHost::shutDown();
}

void RemoteFixture::startService(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), {ZOVKPOPUP_SERVICE_PROGRAM, folder_.path(), "--verbose"});
  process_ = std::make_unique<ChildProcess>(std::move(arguments), folder_.path("errors.log"));
  const std::string line = process_->nextLine().value_or("");
  const std::string expected = "listening on ";
  ASSERT_TRUE(line.starts_with(expected)) << line << requestLog();
  base_ = line.substr(expected.size());
}

void RemoteFixture::stopService() {
  process_->signal(SIGTERM);
  EXPECT_EQ(process_->wait(), 0);
}

void RemoteFixture::setFault(const std::string& path, const std::string& kind,
                             std::uint64_t times) {
  const boost::json::object fault{{"path", path}, {"fault", kind}, {"times", times}};
  const auto answer = httplib::Client(base_).Post("/_control/fault", boost::json::serialize(fault),
                                                  "application/json");
  ASSERT_TRUE(answer && answer->status == 200);
}

boost::json::array RemoteFixture::reports() const {
  const auto answer = httplib::Client(base_).Get("/reports");
  if (!answer || answer->status != 200) return {};
  return boost::json::parse(answer->body).at("reports").as_array();
}

void RemoteFixture::offer(const boost::json::array& popups, const std::string& name) {
  folder_.write(name, boost::json::serialize(boost::json::object{{"code", 0}, {"popups", popups}}));
}

boost::json::object RemoteFixture::pageFile(const std::string& scene, std::uint64_t sceneType,
                                            const std::string& page) {
  return {{"pop_id", 7},   {"scene", scene}, {"scene_type", sceneType},
          {"pop_type", 1}, {"pop_freq", 2},  {"publish_time", 100},
          {"page", page}};
}

boost::json::object RemoteFixture::conditional(const std::string& scene,
                                               const std::string& checkPath) {
  return {{"pop_id", 8},
          {"scene", scene},
          {"scene_type", kRemoteType},
          {"pop_type", 1},
          {"pop_freq", 3},
          {"publish_time", 100},
          {"content_type", 3},
          {"uri", "{{base}}/pages/" + scene + ".html?a=1"},
          {"check_url", "{{base}}" + checkPath}};
}

ZOVKPopupHostSettings RemoteFixture::gameSettings() {
  auto game = settings();
  game.helperPath = "/nowhere/zovkpopup-helper";
  game.logSink = [log = log_](std::string_view line) { log->add(line); };
  return game;
}

std::string RemoteFixture::requestLog() const {
  std::string log = folder_.read("errors.log");
  // The service begins with the address of its console.
  if (log.starts_with("console at ")) log.erase(0, log.find('\n') + 1);
  return log;
}

void RemoteFixture::startGame(const std::string& address) {
  const auto settings = gameSettings();
  ASSERT_TRUE(ZOVKPopupHost::setUp(settings));
  if (!settings.helperPath.empty()) {
    pumpUntil([&] { return log_->has("No such file or directory), giving up"); }, "no helper");
  }
  ZOVKPopup::havePopup(kLocalType);  // makes the engine, which reads its files
  log_->clear();
  ZOVKPopup::startPopup(address, kGame, kKey);
}

void RemoteFixture::endGame() {
  ZOVKPopupHost::shutDown();
}

void RemoteFixture::letADayPass(std::size_t pages) {
  startGame();
  awaitPages(pages);
  endGame();
}

void RemoteFixture::await(const std::string& message, std::size_t times) {
  if (log_->waitFor(message, times)) return;
  std::string all;
  for (const std::string& line : log_->lines()) all += line + "\n";
  FAIL() << "waited in vain for " << message << "\n" << all;
}

void RemoteFixture::awaitPages(std::size_t count) {
  await(".html done, result:1", count);
}

fs::path RemoteFixture::cachePath(const std::string& name) const {
  return home() / "Library/Caches/ZOVKPopup" / name;
}

fs::path RemoteFixture::settingsPath() const {
  return home() / "Library/Preferences/settings.db";
}

fs::path RemoteFixture::cachedPage(const std::string& html, std::uint64_t sceneType) const {
  return cachePath("ZOVKPopup_" + std::to_string(sceneType) + "_1_1_" + md5Hex(html) + ".html");
}

std::vector<std::string> RemoteFixture::cacheListing() const {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(cachePath())) {
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::string RemoteFixture::readFile(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

testing::Matcher<std::string> RemoteFixture::requestError(const std::string& path,
                                                          const std::string& reason) const {
  return testing::AllOf(testing::StartsWith("Request url:" + base_ + path + "?game_id=1001&"),
                        testing::EndsWith(", error:" + reason));
}

}  // namespace zovk
