#include <cstdlib>
#include <fstream>

#include <fcntl.h>
#include <sys/stat.h>

#include "e2e/remote/RemoteFixture.h"
#include "hostile/Tally.h"

namespace zovk {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

/// The kinds of things that are put in the place of a file.
struct Damage {
  const char* name;
  void (*apply)(const fs::path& place, const fs::path& elsewhere);
};

void writeText(const fs::path& place, const std::string& text) {
  std::ofstream(place, std::ios::binary) << text;
}

const Damage kDamages[] = {
    {"gone", [](const fs::path&, const fs::path&) {}},
    {"empty", [](const fs::path& place, const fs::path&) { writeText(place, ""); }},
    {"garbage",
     [](const fs::path& place, const fs::path&) { writeText(place, std::string(9000, '\xee')); }},
    {"a long text",
     [](const fs::path& place, const fs::path&) { writeText(place, std::string(12 << 20, 'x')); }},
    {"a directory", [](const fs::path& place, const fs::path&) { fs::create_directory(place); }},
    {"a full directory",
     [](const fs::path& place, const fs::path&) {
       fs::create_directories(place / "in");
       writeText(place / "in/file", "x");
     }},
    {"a pipe", [](const fs::path& place, const fs::path&) { mkfifo(place.c_str(), 0600); }},
    {"a device",
     [](const fs::path& place, const fs::path&) { fs::create_symlink("/dev/zero", place); }},
    {"a link to elsewhere",
     [](const fs::path& place, const fs::path& elsewhere) {
       fs::create_symlink(elsewhere, place);
     }},
    {"a link to nothing",
     [](const fs::path& place, const fs::path&) { fs::create_symlink("/nowhere/at/all", place); }},
    {"a link to itself",
     [](const fs::path& place, const fs::path&) { fs::create_symlink(place.filename(), place); }},
    {"forbidden",
     [](const fs::path& place, const fs::path&) {
       fs::create_directory(place);
       fs::permissions(place, fs::perms::none);
     }},
};

const char* const kPlaces[] = {"Library",
                               "Library/Caches",
                               "Library/Caches/ZOVKPopup",
                               "Library/Caches/ZOVKPopup/ZOVKPopupRemote.config",
                               "Library/Caches/ZOVKPopup/ZOVKPopupFrequencyOnce.config",
                               "Library/Caches/downloads.db",
                               "Library/Preferences",
                               "Library/Preferences/settings.db",
                               "webhost"};

class HostileFiles : public RemoteFixture {};

TEST_F(HostileFiles, LeaveTheGameRunningAndWhatLiesElsewhereAlone) {
  startService();
  letADayPass();
  const ScratchDirectory good;
  fs::copy(home(), good.path() / "home", fs::copy_options::recursive);
  Tally tally("broken files");
  for (const char* place : kPlaces) {
    for (const Damage& damage : kDamages) {
      SCOPED_TRACE(std::string(place) + " is " + damage.name);
      for (const auto& entry : fs::directory_iterator(home())) fs::remove_all(entry.path());
      fs::copy(good.path() / "home", home(),
               fs::copy_options::recursive | fs::copy_options::overwrite_existing);
      const ScratchDirectory elsewhere;
      writeText(elsewhere.path() / "mine.html", "the player's own");
      fs::remove_all(home() / place);
      damage.apply(home() / place, elsewhere.path());
      const auto start = Clock::now();
      startGame();
      // The service's popup takes the place of the shipped one where it was kept.
      const bool remote = ZOVKPopup::havePopup(kRemoteType);
      EXPECT_TRUE(remote || ZOVKPopup::havePopup(kLocalType));
      const std::size_t before = answers().size();
      ZOVKPopup::showPopup("lobby", 0, recordAnswer());
      pumpUntil([&] { return answers().size() > before; }, "an answer");
      EXPECT_EQ(answers().back().first, -1);  // there is no helper
      endGame();
      const std::chrono::duration<double> taken = Clock::now() - start;
      EXPECT_LT(taken.count(), 10.0);
      tally.measure("milliseconds of a start, a request and the end", taken.count() * 1e3);
      EXPECT_EQ(readFile(elsewhere.path() / "mine.html"), "the player's own");
      std::error_code ignored;
      fs::permissions(home() / place, fs::perms::owner_all, ignored);
      tally.add(remote ? "with the service's popup" : "with the shipped popup");
    }
  }
}

}  // namespace
}  // namespace zovk
