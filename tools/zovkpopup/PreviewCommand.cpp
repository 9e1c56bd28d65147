#include <cstdio>
#include <filesystem>

#include "zovkpopup/Commands.h"
#include "zovkpopup/Preview.h"
#include "zovkpopup/PreviewAnswerText.h"
#include "zovkpopup/PreviewLook.h"
#include "zovkpopup/PreviewMatrix.h"
#include "zovkpopup/ToolError.h"
#include "zovkpopup/WatchedPreview.h"

namespace zovk::tool {
namespace {

int endedEarly(const Preview& preview, const char* what) {
  preview.say(std::string("zovkpopup: ended before ") + what);
  return kProblems;
}

int showAndAnswer(Preview& preview, bool json) {
  const auto answer = preview.awaitAnswer();
  if (!answer) return endedEarly(preview, "the page answered");
  return json ? printAnswerAsJson(*answer, preview.findings()) : printAnswer(*answer);
}

}  // namespace

int runPreview(const PreviewOptions& options) {
  const int wishes = int{!options.screenshot.empty()} + int{!options.matrix.empty()} +
                     int{options.watch} + int{options.json};
  if (wishes > 1) {
    throw ToolError("--screenshot, --matrix, --watch and --json do not go together");
  }
  const StopSignals signals;
  if (options.watch) return watchPreview(options, signals);
  if (!options.matrix.empty()) return writeMatrix(options, signals);
  setLook(options);
  const PreviewBundle bundle(options);
  Preview preview(bundle, sizeOf(options.size), signals);
  if (options.screenshot.empty()) return showAndAnswer(preview, options.json);
  const std::string picture = std::filesystem::absolute(options.screenshot).string();
  if (!preview.takePicture(picture)) return endedEarly(preview, "the picture was taken");
  std::puts(options.screenshot.c_str());
  return kSuccess;
}

}  // namespace zovk::tool
