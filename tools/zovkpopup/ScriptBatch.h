#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <boost/json/array.hpp>

#include "zovkpopup/Problems.h"

namespace zovk::tool {

/// A script of a page that cannot be parsed.
struct ScriptFault {
  std::size_t page = 0;   ///< The number that was given with the page.
  std::int64_t line = 1;  ///< The line of the page.
  std::string message;    ///< In the words of the web engine.
};

/// Collects the scripts of pages and has the helper program parse them, without running them and
/// without a display. Starting the helper takes longer than parsing, so many pages share one run.
class ScriptBatch {
 public:
  /// Takes the scripts of a page. Returns false if its text cannot be decoded.
  bool add(std::size_t page, const std::string& bytes);
  /// Returns the size of the scripts so far.
  std::size_t bytes() const { return bytes_; }
  /// Returns the faults of the scripts so far, and forgets the scripts. Throws ToolError if the
  /// helper program is not installed, fails, or needs more time than `limit`.
  std::vector<ScriptFault> parse(std::chrono::seconds limit);

 private:
  boost::json::array scripts_;
  std::vector<std::size_t> pages_;  ///< The page of each script.
  std::size_t bytes_ = 0;
};

/// Returns the problem that a fault is for the popup that shows the page.
Problem problemOf(const ScriptFault& fault, const ReadPage& page);

}  // namespace zovk::tool
