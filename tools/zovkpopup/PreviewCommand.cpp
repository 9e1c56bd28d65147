#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include <boost/json/object.hpp>

#include "zovkpopup/Commands.h"
#include "zovkpopup/JsonText.h"
#include "zovkpopup/Preview.h"
#include "zovkpopup/PreviewScreen.h"
#include "zovkpopup/ToolError.h"

namespace zovk::tool {
namespace {

// The helper inherits the environment and dresses by it.
void setLook(const PreviewOptions& options) {
  const auto set = [](const char* name, const std::string& value) {
    ::setenv(name, value.c_str(), 1);
  };
  if (options.theme == "light") set("GTK_THEME", "Default");
  if (options.theme == "dark") set("GTK_THEME", "Default-dark");
  if (options.theme == "high-contrast") set("GTK_THEME", "Default-hc");
  if (options.scale > 0) set("GDK_SCALE", std::to_string(options.scale));
}

const char* nameOf(std::int32_t code) {
  switch (code) {
    case 0:
      return "skip";
    case 1:
      return "commit";
    case 2:
      return "cancel";
    default:
      return "error";
  }
}

int endedEarly(const char* what) {
  std::fprintf(stderr, "zovkpopup: ended before %s\n", what);
  return kProblems;
}

int printAnswer(const PreviewAnswer& answer, bool json) {
  if (json) {
    const boost::json::object result{
        {"code", answer.code}, {"answer", nameOf(answer.code)}, {"message", answer.message}};
    std::fputs(prettyJson(result).c_str(), stdout);
  } else {
    std::printf("%d %s %s\n", answer.code, nameOf(answer.code), answer.message.c_str());
  }
  return answer.code >= 0 ? kSuccess : kProblems;
}

int showAndAnswer(Preview& preview, bool json) {
  const auto answer = preview.awaitAnswer();
  if (!answer) return endedEarly("the page answered");
  if (answer->code < 0) std::fputs(preview.errors().c_str(), stderr);
  return printAnswer(*answer, json);
}

}  // namespace

int runPreview(const PreviewOptions& options) {
  setLook(options);
  const PreviewBundle bundle(options);
  Preview preview(bundle, sizeOf(options.size));
  if (options.screenshot.empty()) return showAndAnswer(preview, options.json);
  const std::string picture = std::filesystem::absolute(options.screenshot).string();
  if (!preview.takePicture(picture)) return endedEarly("the picture was taken");
  std::puts(options.screenshot.c_str());
  return kSuccess;
}

}  // namespace zovk::tool
