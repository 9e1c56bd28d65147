#pragma once

#include <string>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>
#include <gmock/gmock.h>

#include "ProgramRun.h"
#include "text/Md5.h"

namespace zovk {

/// Documents for the tool to judge, at a time that the test chooses.
class DocumentTest : public ToolTest {
 protected:
  static constexpr const char* kNow = "1000000";

  /// Returns an entry without any problem.
  static boost::json::object webPage(const std::string& scene, int popId = 1) {
    const std::string uri = "https://popups.example/" + scene;
    return {{"pop_id", popId},     {"scene", scene},
            {"scene_type", 1},     {"pop_type", 1},
            {"content_type", 3},   {"uri", uri},
            {"sig", md5Hex(uri)},  {"pop_freq", 2},
            {"publish_time", 100}, {"report_url", "https://popups.example/report"}};
  }
  /// Returns a page without any problem.
  static std::string pageText(const std::string& scene) {
    return "<!doctype html><meta charset=\"utf-8\"><meta name=\"viewport\" content=\"x\">"
           "<title>" +
           scene + "</title><style>body { background: #000 }</style>" +
           "<script>window.webkit.messageHandlers.ZOVKPopup.postMessage('')</script>";
  }
  /// Returns an entry with a page file, which is written as NAME.html.
  boost::json::object pageFile(const std::string& scene, int popId = 1) const {
    boost::json::object entry = webPage(scene, popId);
    const std::string page = pageText(scene);
    write(scene + ".html", page);
    entry["content_type"] = 1;
    entry["uri"] = "https://popups.example/pages/" + scene + ".html";
    entry["sig"] = md5Hex(page);
    return entry;
  }
  static boost::json::object with(boost::json::object entry, const std::string& key,
                                  const auto& value) {
    entry[key] = value;
    return entry;
  }
  static boost::json::object without(boost::json::object entry, const std::string& key) {
    entry.stable_erase(key);
    return entry;
  }
  /// Writes a document of these entries.
  std::string document(const boost::json::array& entries) const {
    return write("popups.json", boost::json::serialize(boost::json::object{{"popups", entries}}));
  }

  /// Returns "error /path message" for each problem, in order.
  static std::vector<std::string> problems(const ProgramRun& run) {
    std::vector<std::string> result;
    const boost::json::value report = run.json();
    for (const auto& problem : report.at("problems").as_array()) {
      std::string text;
      for (const char* key : {"severity", "path", "message"}) {
        if (!text.empty()) text += " ";
        text += problem.at(key).as_string();
      }
      result.push_back(text);
    }
    return result;
  }
  static ProgramRun check(const std::string& file, std::vector<std::string> more = {}) {
    more.insert(more.begin(), {"check", file, "--at", kNow, "--json"});
    return runTool(more);
  }
  std::vector<std::string> problemsOf(const boost::json::object& entry) const {
    return problems(check(document({entry})));
  }
};

}  // namespace zovk
