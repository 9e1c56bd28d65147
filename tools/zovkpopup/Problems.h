#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zovk::tool {

/// An error makes the engine reject the document, or never show the popup. A warning marks
/// something that is allowed but probably not intended. A hint is good to know, and never counts as
/// an error.
enum class Severity { kError, kWarning, kHint };

struct Problem {
  Severity severity = Severity::kError;
  std::string path;  ///< As a JSON pointer, such as /popups/3/sig; empty for the whole document.
  std::string message;
  std::size_t line = 0;  ///< With `column`, the place where the text stops being JSON; else 0.
  std::size_t column = 0;
};

/// A page file that the check has read.
struct ReadPage {
  std::size_t entry = 0;  ///< The first popup that shows it, by its place in "popups".
  std::filesystem::path file;
};

class Problems {
 public:
  void error(std::string path, std::string message) {
    list_.push_back({Severity::kError, std::move(path), std::move(message)});
  }
  void warning(std::string path, std::string message) {
    list_.push_back({Severity::kWarning, std::move(path), std::move(message)});
  }
  void hint(std::string path, std::string message) {
    list_.push_back({Severity::kHint, std::move(path), std::move(message)});
  }
  void add(Problem problem) { list_.push_back(std::move(problem)); }

  std::size_t count(Severity severity) const {
    std::size_t result = 0;
    for (const Problem& problem : list_) result += problem.severity == severity ? 1 : 0;
    return result;
  }
  const std::vector<Problem>& list() const { return list_; }

  void addPage(ReadPage page) { pages_.push_back(std::move(page)); }
  /// Returns the page files that were read, each once.
  const std::vector<ReadPage>& pages() const { return pages_; }

 private:
  std::vector<Problem> list_;
  std::vector<ReadPage> pages_;
};

/// Returns the JSON pointer of a member of an entry of "popups".
inline std::string entryPath(std::size_t index, std::string_view key = {}) {
  std::string path = "/popups/" + std::to_string(index);
  return key.empty() ? path : path + "/" + std::string(key);
}

}  // namespace zovk::tool
