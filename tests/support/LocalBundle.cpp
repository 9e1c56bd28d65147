#include "support/LocalBundle.h"

#include <cstdlib>
#include <fstream>

#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>
#include <fmt/format.h>

#include "text/Md5.h"

namespace zovk {
namespace {

namespace fs = std::filesystem;

// The build's own bundle, found from the running program upwards.
fs::path builtBundle() {
  for (fs::path at = fs::read_symlink("/proc/self/exe").parent_path(); at != at.root_path();
       at = at.parent_path()) {
    const fs::path bundle = at / "zovkpopup/ZOVKPopupResource.bundle";
    if (fs::exists(bundle)) return bundle;
  }
  return {};
}

void writeFile(const fs::path& path, const std::string& text) {
  std::ofstream(path, std::ios::binary) << text;
}

}  // namespace

ScratchDirectory::ScratchDirectory() {
  std::string pattern = (fs::temp_directory_path() / "zovkpopup-test-XXXXXX").string();
  path_ = mkdtemp(pattern.data());
}

ScratchDirectory::~ScratchDirectory() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

LocalBundle::LocalBundle() {
  const fs::path built = builtBundle();
  if (!built.empty()) fs::copy(built, bundle(), fs::copy_options::recursive);
  fs::create_directories(bundle());
}

void LocalBundle::addPage(ZOVKPopupModel popup, const std::string& html) {
  popup.content_type = 1;
  popup.sig = md5Hex(html);
  pagePaths_.push_back((bundle() / popup.getPopupFileName()).string());
  writeFile(pagePaths_.back(), html);
  entries_.push_back({{"pop_id", popup.pop_id},
                      {"scene", popup.scene},
                      {"scene_type", popup.scene_type},
                      {"pop_type", popup.pop_type},
                      {"content_type", popup.content_type},
                      {"sig", popup.sig},
                      {"pop_freq", popup.pop_freq},
                      {"priority", popup.priority},
                      {"publish_time", popup.publish_time},
                      {"report_url", popup.report_url}});
}

void LocalBundle::write() const {
  writeFile(bundle() / "ZOVKPopupLocal.config",
            boost::json::serialize(boost::json::object{{"popups", entries_}}));
}

std::string answeringPage(const std::string& action, const std::string& message, bool atOnce) {
  const std::string body = boost::json::serialize(boost::json::value(
      boost::json::serialize(boost::json::object{{"action", action}, {"msg", message}})));
  return fmt::format(R"page(<!doctype html><meta charset="utf-8"><title>{0}</title>
<style>html,body{{margin:0;height:100%}}button{{position:fixed;inset:25%;font-size:2em}}</style>
<button onclick="answer()">{0}</button>
<script>
function answer() {{ window.webkit.messageHandlers.ZOVKPopup.postMessage({1}); }}
{2}
</script>)page",
                     action, body, atOnce ? "addEventListener('load', answer);" : "");
}

}  // namespace zovk
