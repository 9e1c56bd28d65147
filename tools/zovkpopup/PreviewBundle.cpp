#include "zovkpopup/PreviewBundle.h"

#include <boost/json/object.hpp>

#include "record/ZOVKPopupModel.h"
#include "text/Md5.h"
#include "text/ZOVKPopupCommonTool.h"
#include "zovkpopup/InstalledHelper.h"
#include "zovkpopup/JsonText.h"
#include "zovkpopup/TextFile.h"
#include "zovkpopup/ToolError.h"

namespace zovk::tool {
namespace {

namespace fs = std::filesystem;

fs::path installedBundle() {
  fs::path path = libraryFolder() / "ZOVKPopupResource.bundle";
  std::error_code error;
  if (!fs::is_directory(path, error))
    throw ToolError(path.string() + " is not installed", kUnavailable);
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

// Pages in UTF-16 are recognised by their first two bytes.
bool isBinary(const std::string& page) {
  const bool isWide = page.starts_with("\xff\xfe") || page.starts_with("\xfe\xff");
  return !isWide && page.find('\0') != std::string::npos;
}

std::string readPage(const std::string& file) {
  std::string page = readFile(file);
  if (page.find_first_not_of(" \t\r\n") == std::string::npos) {
    throw ToolError(file + ": is empty, and no page", kBadData);
  }
  if (isBinary(page))
    throw ToolError(file + ": is no page, but holds bytes that are no text", kBadData);
  const JsonText json = parseJson(page);
  if (json.error.empty() && (json.value.is_object() || json.value.is_array())) {
    throw ToolError(file +
                        ": is JSON, no page; \"zovkpopup check\" is for documents, and a page "
                        "file is named for a preview",
                    kBadData);
  }
  return page;
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

fs::path PreviewBundle::helper() const {
  return libraryFolder() / "zovkpopup-helper";
}

std::string PreviewBundle::pageAddress() const {
  return file_.empty() ? target_ : "file://" + (bundle() / file_).string();
}

std::string PreviewBundle::pageName() const {
  return file_.empty() ? target_ : fs::path(target_).filename().string();
}

void PreviewBundle::update() const {
  if (!file_.empty()) writeFile(bundle() / file_, readPage(target_));
}

PreviewBundle::PreviewBundle(const PreviewOptions& options) {
  const std::string page = isAddress(options.target) ? "" : readPage(options.target);
  const ZOVKPopupModel popup = popupFor(options, page);
  scene_ = popup.scene;
  target_ = options.target;
  fs::create_directory(resources());
  fs::create_directory(home());
  fs::copy(installedBundle(), bundle(), fs::copy_options::recursive);
  if (popup.isPageFile()) {
    file_ = popup.getPopupFileName();
    writeFile(bundle() / file_, page);
  }
  writeFile(bundle() / "ZOVKPopupLocal.config", documentWith(popup));
  // Only the engine's debug lines say that a page has loaded.
  writeFile(resources() / "Info.json", R"({"ZOVK_DEBUG": true})");
}

}  // namespace zovk::tool
