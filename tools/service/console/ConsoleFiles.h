#pragma once

#include <optional>
#include <string>

namespace zovk {

// The files of the console's page, which the program carries with it.
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
std::string consoleFile_starter_html();

}  // namespace zovk

namespace zovk::service {

struct ConsoleFile {
  std::string bytes;
  std::string type;
};

/// A file by the name that the page knows it by; absent when there is none. The library that draws
/// plots belongs to the system and may not be there.
std::optional<ConsoleFile> consoleFile(const std::string& name);

}  // namespace zovk::service
