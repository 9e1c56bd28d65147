#pragma once

#include <string>
#include <vector>

#include <boost/json/parse.hpp>

#include "DocumentTest.h"

namespace zovk {

/// A document with one page file, and places to publish it to.
class PublishTest : public DocumentTest {
 protected:
  /// Writes the page and the document, whose only entry shows it.
  std::string documentWith(const std::string& page) const {
    boost::json::object entry = pageFile("shop");
    write("shop.html", page);
    entry["sig"] = md5Hex(page);
    return document({entry});
  }
  static std::string key(const std::string& page) { return "pages/" + md5Hex(page) + "/shop.html"; }

  static ProgramRun publish(const std::string& file, const std::string& to,
                            std::vector<std::string> more = {}) {
    more.insert(more.begin(), {"publish", file, "--to", to});
    return runTool(more);
  }

  std::string site() const { return path("site"); }
  std::string live(const std::string& name = "popup/get_info") const {
    return read(site() + "/current/" + name);
  }
  /// Returns the only popup of a published document.
  static boost::json::object popupOf(const std::string& text) {
    boost::json::error_code error;
    const boost::json::value document = boost::json::parse(text, error);
    EXPECT_FALSE(error) << text;
    return error ? boost::json::object() : document.at("popups").at(0).as_object();
  }
};

}  // namespace zovk
