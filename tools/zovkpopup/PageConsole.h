#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zovk::tool {

/// A message of a page to its console, or of the web engine about the page.
struct ConsoleMessage {
  std::string level;  ///< "log", "info", "debug", "warning", "error", or "blocked" for a load.
  std::string place;  ///< NAME:LINE:COLUMN, as far as it is known.
  std::string text;

  /// Returns the message for people, with a hint if the cause is a usual one.
  std::string line() const;
};

/// Reads the lines that the web engine writes for a page's console.
class PageConsole {
 public:
  /// The messages call the file at `address` by `name`, and files beside it by their names alone.
  PageConsole(std::string address, std::string name)
      : address_(std::move(address)), name_(std::move(name)) {}

  /// Returns nothing if the line is not one of the console's.
  std::optional<ConsoleMessage> read(std::string_view line) const;
  const std::string& name() const { return name_; }

 private:
  std::string shortened(std::string_view text) const;

  std::string address_;
  std::string name_;
};

}  // namespace zovk::tool
