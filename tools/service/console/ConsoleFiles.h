#pragma once

#include <optional>
#include <string>

namespace zovk {

// The files of the console's page, which are built into the program.
std::string consoleFile_index_html();
std::string consoleFile_console_css();
std::string consoleFile_answers_js();
std::string consoleFile_common_js();
std::string consoleFile_console_js();
std::string consoleFile_controls_js();
std::string consoleFile_editor_js();
std::string consoleFile_popups_js();
std::string consoleFile_preview_js();
std::string consoleFile_why_js();
std::string consoleFile_starter_announcement_html();
std::string consoleFile_starter_event_html();
std::string consoleFile_starter_reward_html();
std::string consoleFile_starter_survey_html();
std::string consoleFile_starter_policy_html();

}  // namespace zovk

namespace zovk::service {

struct ConsoleFile {
  std::string bytes;
  std::string type;
};

/// Returns a file by its name in the page, or nothing if there is none. The library that draws
/// plots belongs to the system and may be missing.
std::optional<ConsoleFile> consoleFile(const std::string& name);

}  // namespace zovk::service
