#include "zovkpopup/PreviewBundle.h"

#include <cstdlib>

#include <boost/json/object.hpp>

#include "engine/ZOVKPopupModel.h"
#include "network/ZOVKPopupCommonTool.h"
#include "platform/linux/Paths.h"
#include "support/Md5.h"
#include "zovkpopup/JsonText.h"
#include "zovkpopup/TextFile.h"
#include "zovkpopup/ToolError.h"

namespace zovk::tool {
namespace {

namespace fs = std::filesystem;

// This program stands in a folder of its own beside the library's.
fs::path libraryFolder() {
  return fs::path(programPath()).parent_path().parent_path() / "zovkpopup";
}

fs::path installedBundle() {
  const fs::path path = libraryFolder() / "ZOVKPopupResource.bundle";
  std::error_code error;
  if (!fs::is_directory(path, error)) throw ToolError(path.string() + " is not installed");
  return path;
}

std::string sceneFor(const std::string& kind) {
  if (kind == "policy") return kPolicyScene;
  return kind == "permission" ? kPermissionScene : "preview";
}

ZOVKPopupModel popupFor(const PreviewOptions& options, const std::string& page) {
  ZOVKPopupModel popup;
  popup.scene = sceneFor(options.kind);
  popup.pop_type = options.kind == "game" ? kPopTypeGame : 1;
  popup.content_type = isAddress(options.target) ? kContentTypeWebPage : 1;
  popup.uri = isAddress(options.target) ? options.target : "";
  popup.sig = popup.isPageFile() ? md5Hex(page) : ZOVKPopupCommonTool::getTextMD5(popup.uri);
  return popup;
}

// A commit needs somebody to be reported to; on this port of the own machine nobody listens.
constexpr const char* kNobody = "http://127.0.0.1:9/report";

std::string documentWith(const ZOVKPopupModel& popup) {
  const boost::json::object entry{
      {"scene", popup.scene}, {"pop_type", popup.pop_type}, {"content_type", popup.content_type},
      {"uri", popup.uri},     {"sig", popup.sig},           {"pop_freq", 2},
      {"report_url", kNobody}};
  return prettyJson(boost::json::object{{"popups", {entry}}});
}

}  // namespace

OwnFolder::OwnFolder() {
  std::string pattern = (fs::temp_directory_path() / "zovkpopup-preview-XXXXXX").string();
  if (::mkdtemp(pattern.data()) == nullptr) throw ToolError(pattern + ": cannot be made");
  path_ = pattern;
}

OwnFolder::~OwnFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

fs::path PreviewBundle::helper() const {
  return libraryFolder() / "zovkpopup-webhost";
}

PreviewBundle::PreviewBundle(const PreviewOptions& options) {
  const std::string page = isAddress(options.target) ? "" : readFile(options.target);
  const ZOVKPopupModel popup = popupFor(options, page);
  scene_ = popup.scene;
  fs::create_directory(resources());
  fs::create_directory(home());
  fs::copy(installedBundle(), bundle(), fs::copy_options::recursive);
  if (popup.isPageFile()) writeFile(bundle() / popup.getPopupFileName(), page);
  writeFile(bundle() / "ZOVKPopupLocal.config", documentWith(popup));
  // The engine tells that a page has loaded in its debug lines only.
  writeFile(resources() / "Info.json", R"({"ZOVK_DEBUG": true})");
}

}  // namespace zovk::tool
