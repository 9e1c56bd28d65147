// A game that starts, tells what it found, and then saves configurations and settings over and
// over until it is ended. Usage: zovkpopup_saving_game HOME RESOURCES
#include <cstdio>

#include "e2e/remote/SavedDocument.h"
#include "engine/ZOVKPopupManager.h"
#include "storage/ZOVKPopupFileManager.h"
#include "zovkpopup/Host.h"

namespace {

constexpr const char* kConfig = "ZOVKPopupRemote.config";
constexpr const char* kKey = "round";

void tell(const std::string& line) {
  std::printf("%s\n", line.c_str());
  std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 1;
  zovk::ZOVKPopupHostSettings settings;
  settings.applicationId = "zovkpopup-test";
  settings.dataDirectory = argv[1];
  settings.resourceDirectory = argv[2];
  settings.helperPath = "/nowhere/zovkpopup-helper";
  settings.logSink = [](std::string_view) {};
  if (!zovk::ZOVKPopupHost::setUp(settings)) return 1;
  const auto popups = zovk::ZOVKPopupManager::sharedInstance()->remotePopupArr().size();
  auto& files = *zovk::ZOVKPopupFileManager::sharedInstance();
  tell("popups:" + std::to_string(popups) + " id:" + files.getUUID().value_or("") +
       " round:" + files.valueForKey(kKey));
  const std::string documents[] = {zovk::savedDocument(0), zovk::savedDocument(1)};
  for (int round = 0;; ++round) {
    if (!files.saveInternalFile(kConfig, documents[round % 2], false)) tell("a save failed");
    files.saveValue(std::to_string(round % 2), kKey);
    if (round % 10 == 0) tell("saved");
  }
}
