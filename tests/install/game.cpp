// The smallest game: shows one popup, prints how it was answered, and says from where the library
// and its helper program came.
//   game RESOURCE_DIRECTORY DATA_DIRECTORY
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <string_view>

#include <dlfcn.h>
#include <poll.h>
#include <unistd.h>
#include <zovkpopup/Host.h>
#include <zovkpopup/ZOVKPopup.h>

namespace fs = std::filesystem;

// The processes that this one has started; the library's helper is the only one.
void printChildren() {
  for (const auto& entry : fs::directory_iterator("/proc")) {
    std::ifstream stat(entry.path() / "stat");
    std::string line;
    if (!std::getline(stat, line)) continue;
    // The name before it may hold spaces: "PID (NAME) STATE PARENT ...".
    const pid_t parent = std::stoi(line.substr(line.rfind(')') + 4));
    std::error_code gone;
    if (parent != getpid()) continue;
    std::cout << "helper " << fs::read_symlink(entry.path() / "exe", gone).string() << "\n";
  }
}

void printLibrary() {
  Dl_info info{};
  dladdr(reinterpret_cast<void*>(&zovk::ZOVKPopupHost::shutDown), &info);
  std::cout << "library " << fs::canonical(info.dli_fname).string() << "\n";
}

int main(int count, char** arguments) {
  if (count != 3) return 2;
  zovk::ZOVKPopupHostSettings settings;
  settings.applicationId = "com.example.installed";
  settings.resourceDirectory = arguments[1];
  settings.dataDirectory = arguments[2];
  settings.logSink = [](std::string_view line) { std::cout << "log " + std::string(line) + "\n"; };
  if (!zovk::ZOVKPopupHost::setUp(settings)) return 1;

  bool answered = false;
  zovk::ZOVKPopup::showPopup("installed", 0, [&](std::int32_t code, const std::string& message) {
    std::cout << "answer " << code << " " << message << "\n";
    printChildren();
    answered = true;
  });
  printLibrary();
  while (!answered) {
    pollfd wake{zovk::ZOVKPopupHost::pollDescriptor(), POLLIN, 0};
    poll(&wake, 1, -1);
    zovk::ZOVKPopupHost::pump();
  }
  zovk::ZOVKPopupHost::shutDown();
  return 0;
}
