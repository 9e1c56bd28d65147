#include "e2e/navigation/AddressOpener.h"

#include <array>
#include <filesystem>
#include <fstream>

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zovk {
namespace {

namespace fs = std::filesystem;

constexpr const char* kEntry = "zovk-test-opener.desktop";

}  // namespace

AddressOpener::AddressOpener(std::initializer_list<const char*> schemes) {
  for (const char* name : {"data/applications", "share", "config", "etc"}) {
    fs::create_directories(pathOf(name));
  }
  writeProgram();
  writeAssociations(schemes);
  linkSystemData();
  ::mkfifo(pathOf("opened").c_str(), 0600);
  // Open both ways, it never ends and no writer waits.
  pipe_ = UniqueFd(::open(pathOf("opened").c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC));
}

const std::vector<std::string>& AddressOpener::opened() {
  std::array<char, 4096> buffer;
  for (ssize_t size = 0; (size = ::read(pipe_.get(), buffer.data(), buffer.size())) > 0;) {
    read_.append(buffer.data(), static_cast<std::size_t>(size));
  }
  for (std::size_t end = 0; (end = read_.find('\n')) != std::string::npos;) {
    opened_.push_back(read_.substr(0, end));
    read_.erase(0, end + 1);
  }
  return opened_;
}

void AddressOpener::writeProgram() const {
  std::ofstream(pathOf("opener")) << "#!/bin/sh\nprintf '%s\\n' \"$1\" >" << pathOf("opened")
                                  << '\n';
  fs::permissions(pathOf("opener"), fs::perms::owner_all);
}

void AddressOpener::writeAssociations(std::initializer_list<const char*> schemes) const {
  const fs::path applications = pathOf("data/applications");
  std::string types;
  std::ofstream list(applications / "mimeapps.list");
  list << "[Default Applications]\n";
  for (const char* scheme : schemes) {
    types += fmt::format("x-scheme-handler/{};", scheme);
    list << fmt::format("x-scheme-handler/{}={};\n", scheme, kEntry);
  }
  std::ofstream(applications / kEntry)
      << fmt::format("[Desktop Entry]\nType=Application\nName=Opener\nExec={} %u\nMimeType={}\n",
                     pathOf("opener"), types);
}

// All that programs need of the system, but no applications.
void AddressOpener::linkSystemData() const {
  for (const auto& entry : fs::directory_iterator("/usr/share")) {
    if (entry.path().filename() == "applications") continue;
    fs::create_symlink(entry.path(), fs::path(pathOf("share")) / entry.path().filename());
  }
}

}  // namespace zovk
