#include "e2e/navigation/NavigationFixture.h"

#include <cstdlib>
#include <fstream>

#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>
#include <fmt/format.h>

#include "fixtures/LogLines.h"
#include "text/Md5.h"

namespace zovk {
namespace {

constexpr const char* kDecision = "Decide policy for navigation action, url:";

// Pages give way to other programs: on a busy machine they take their time.
constexpr std::chrono::seconds kBound{60};

}  // namespace

std::string NavigationFixture::page(const std::string& script, const std::string& body) const {
  return fmt::format(R"page(<!doctype html><meta charset="utf-8"><title>Page</title>
<style>html, body {{ height: 100%; margin: 0 }}</style>
<body>{0}
<script>
const tell = text => webkit.messageHandlers.ZOVKPopup.postMessage(
    JSON.stringify({{action: 'skip', msg: text}}));
// A load that begins takes the request away; then it asks again.
const tellLater = () => fetch('{1}').then(() => tell(location.href), tellLater);
const ready = () => location.hash = 'ready';
addEventListener('load', () => requestAnimationFrame(() => requestAnimationFrame(() => {{
{2}
}})));
</script>)page",
                     body, site_.gate(), script);
}

void NavigationFixture::show(const std::string& uri, int contentType) {
  const boost::json::object popup{{"pop_id", 1},     {"scene", "web"},
                                  {"scene_type", 1}, {"pop_type", 1},
                                  {"pop_freq", 2},   {"content_type", contentType},
                                  {"uri", uri},      {"sig", md5Hex(uri)}};
  std::ofstream(bundle().bundle() / "ZOVKPopupLocal.config")
      << boost::json::serialize(boost::json::object{{"popups", {popup}}});
  start();
  ZOVKPopup::showPopup("web", 0, recordAnswer());
}

std::string NavigationFixture::showFile(const std::string& script, const std::string& body) {
  const std::string address = addFile(page(script, body));
  bundle().write();
  start();
  ZOVKPopup::showPopup("file" + std::to_string(bundle().pagePaths().size()), 0, recordAnswer());
  return address;
}

std::string NavigationFixture::addFile(const std::string& html) {
  bundle().addPage(popup("file" + std::to_string(bundle().pagePaths().size() + 1), 1), html);
  return "file://" + bundle().pagePaths().back();
}

void NavigationFixture::start() {
  std::ofstream(std::filesystem::path(bundle().resourceDirectory()) / "Info.json")
      << R"({"ZOVK_DEBUG": true})";
  ASSERT_TRUE(ZOVKPopupHost::setUp(settings()));
}

void NavigationFixture::openOnly(std::initializer_list<const char*> schemes) {
  opener_.reset();
  opener_ = std::make_unique<AddressOpener>(schemes);
}

std::vector<std::string> NavigationFixture::navigationLines() {
  std::vector<std::string> found;
  for (const std::string& whole : lines()) {
    const std::string line = shortLine(whole);
    const bool isNavigation = line.starts_with("D did") || line.starts_with("D decide");
    if (isNavigation) found.push_back(line.substr(line.find(": ") + 2));
  }
  return found;
}

std::vector<std::string> NavigationFixture::decided() {
  std::vector<std::string> found;
  for (const std::string& line : navigationLines()) {
    if (line.starts_with(kDecision)) found.push_back(line.substr(std::string(kDecision).size()));
  }
  return found;
}

void NavigationFixture::awaitDecided(std::size_t count) {
  pumpUntil([&] { return decided().size() >= count; }, std::to_string(count) + " decisions",
            kBound);
}

void NavigationFixture::awaitOpened(std::size_t count) {
  pumpUntil([&] { return opener().opened().size() >= count; },
            std::to_string(count) + " opened addresses", kBound);
}

std::string NavigationFixture::pageTells() {
  site_.openGate();
  pumpUntil([&] { return !answers().empty(); }, "the page's answer", kBound);
  if (answers().empty()) return "nothing";
  return std::string(boost::json::parse(answers().front().second).at("msg").as_string());
}

void NavigationFixture::clickPage() {
  pumpUntil([&] { return !decided().empty() && decided().back().ends_with("#ready"); }, "the page",
            kBound);
  ASSERT_EQ(std::system("xdotool mousemove 640 450 click 1"), 0);
}

}  // namespace zovk
