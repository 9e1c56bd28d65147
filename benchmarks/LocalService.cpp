#include "LocalService.h"

#include <fstream>
#include <stdexcept>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>

namespace zovk {
namespace {

namespace fs = std::filesystem;

std::string pageName(int number) {
  return "page" + std::to_string(number) + ".html";
}

void fill(const fs::path& folder, int pages) {
  std::ofstream(folder / "games.json")
      << boost::json::object{{LocalService::kGame, LocalService::kKey}};
  fs::create_directories(folder / "pages");
  boost::json::array popups;
  for (int i = 0; i < pages; ++i) {
    std::string page = "<!doctype html><title>" + std::to_string(i) + "</title>";
    page.resize(LocalService::kPageBytes, ' ');
    std::ofstream(folder / "pages" / pageName(i)) << page;
    popups.push_back({{"pop_id", i}, {"scene", pageName(i)}, {"page", pageName(i)}});
  }
  std::ofstream(folder / "config.json")
      << boost::json::object{{"code", 0}, {"popups", std::move(popups)}};
}

std::string started(ChildProcess& process) {
  const std::string expected = "listening on ";
  const std::string line = process.nextLine().value_or("");
  if (!line.starts_with(expected)) throw std::runtime_error("the service does not start: " + line);
  return line.substr(expected.size());
}

// Fills the folder before the service reads it.
const fs::path& filled(const fs::path& folder, int pages) {
  fill(folder, pages);
  return folder;
}

}  // namespace

LocalService::LocalService(int pages)
    : process_({ZOVKPOPUP_SERVICE_PROGRAM, filled(folder_.path(), pages).string()},
               (folder_.path() / "errors.log").string()),
      base_(started(process_)) {}

std::string LocalService::pageUrl(int number) const {
  return base_ + "/pages/" + pageName(number);
}

}  // namespace zovk
