#include "service/console/ConsoleFiles.h"

#include <fstream>
#include <iterator>
#include <map>

namespace zovk::service {
namespace {

constexpr const char* kPlotLibrary = "/usr/share/javascript/chart.js/chart.min.js";
constexpr const char* kHtml = "text/html; charset=utf-8";
constexpr const char* kScript = "text/javascript; charset=utf-8";

std::optional<ConsoleFile> plotLibrary() {
  std::ifstream file(kPlotLibrary, std::ios::binary);
  if (!file) return std::nullopt;
  return ConsoleFile{std::string(std::istreambuf_iterator<char>(file), {}), kScript};
}

}  // namespace

std::optional<ConsoleFile> consoleFile(const std::string& name) {
  using Make = std::string (*)();
  static const std::map<std::string, std::pair<Make, const char*>> kFiles{
      {"index.html", {&consoleFile_index_html, kHtml}},
      {"console.css", {&consoleFile_console_css, "text/css; charset=utf-8"}},
      {"answers.js", {&consoleFile_answers_js, kScript}},
      {"common.js", {&consoleFile_common_js, kScript}},
      {"console.js", {&consoleFile_console_js, kScript}},
      {"controls.js", {&consoleFile_controls_js, kScript}},
      {"editor.js", {&consoleFile_editor_js, kScript}},
      {"popups.js", {&consoleFile_popups_js, kScript}},
      {"preview.js", {&consoleFile_preview_js, kScript}},
      {"why.js", {&consoleFile_why_js, kScript}},
      {"starter-announcement.html", {&consoleFile_starter_announcement_html, kHtml}},
      {"starter-event.html", {&consoleFile_starter_event_html, kHtml}},
      {"starter-reward.html", {&consoleFile_starter_reward_html, kHtml}},
      {"starter-survey.html", {&consoleFile_starter_survey_html, kHtml}},
      {"starter-policy.html", {&consoleFile_starter_policy_html, kHtml}}};
  if (name == "plots.js") return plotLibrary();
  const auto found = kFiles.find(name);
  if (found == kFiles.end()) return std::nullopt;
  return ConsoleFile{found->second.first(), found->second.second};
}

}  // namespace zovk::service
