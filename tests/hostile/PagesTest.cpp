#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "hostile/HostileScreen.h"
#include "hostile/Tally.h"

namespace zovk {
namespace {

namespace fs = std::filesystem;

/// A pump's budget, and what it may take beyond it.
constexpr std::chrono::duration<double> kPumpBound = std::chrono::milliseconds(3);
/// From the press of the button, by a program of its own, to the game's callback.
constexpr std::chrono::milliseconds kClickBound{100};
constexpr double kGrowthBound = 2;  // megabytes
const std::chrono::milliseconds kAttack(300 * rounds(1, 5));

class HostilePages : public HostileScreen {
 protected:
  std::vector<std::string> addPages() {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(ZOVKPOPUP_HOSTILE_PAGES)) {
      std::ifstream file(entry.path());
      names.push_back(entry.path().stem());
      bundle().addPage(popup(names.back(), 1), {std::istreambuf_iterator<char>(file), {}});
    }
    std::sort(names.begin(), names.end());
    bundle().addPage(popup("well", 1), answeringPage("skip", "", true));
    return names;
  }
  void expectAllIsWell(const std::string& after) {
    const std::size_t before = answers().size();
    ZOVKPopup::showPopup("well", 0, recordAnswer());
    ASSERT_TRUE(playUntil([&] { return answers().size() > before; }, std::chrono::seconds(30)))
        << "no page after " << after << "\n"
        << allLines();
    EXPECT_EQ(answers().back().first, 0) << after;
    settle();
  }
  /// Shows a page, lets it do its worst, and ends it as a player would.
  std::string endure(const std::string& page, Tally& tally) {
    const std::size_t before = answers().size();
    const std::size_t linesBefore = lines().size();
    forgetPumps();
    ZOVKPopup::showPopup(page, 0, recordAnswer());
    std::string outcome = "answered by the page";
    const bool answered = playUntil([&] { return answers().size() > before; }, kAttack);
    if (const auto waited = answered ? std::nullopt : pressTheCross()) {
      tally.measure("milliseconds from the click to the answer", waited->count() * 1e3);
      clicks_.push_back(*waited);
      outcome = "ended by a click";
    }
    settle();
    EXPECT_EQ(answers().size(), before + 1) << page;
    EXPECT_LE(longestPump().count(), kPumpBound.count()) << page;
    tally.measure("milliseconds of the longest pump", longestPump().count() * 1e3);
    tally.measure("log lines", static_cast<double>(lines().size() - linesBefore));
    return outcome;
  }
  /// Returns the median of the clicks that ended a page. A single one may meet a busy machine.
  Seconds usualClick() {
    if (clicks_.empty()) return {};
    const auto middle = clicks_.begin() + static_cast<std::ptrdiff_t>(clicks_.size() / 2);
    std::nth_element(clicks_.begin(), middle, clicks_.end());
    return *middle;
  }

 private:
  std::vector<Seconds> clicks_;
};

TEST_F(HostilePages, CostTheGameNoMoreThanItsPumpsAndEndWithOneAnswer) {
  const std::vector<std::string> names = addPages();
  ASSERT_FALSE(names.empty());
  start();
  expectAllIsWell("the start");
  Tally tally("pages");
  const std::size_t count = rounds(1, 5);
  for (std::size_t round = 0; round < count; ++round) {
    for (const std::string& name : names) {
      SCOPED_TRACE(name);
      const double before = megabytes();
      tally.add(endure(name, tally));
      expectAllIsWell(name);
      const double growth = megabytes() - before;
      EXPECT_LE(growth, kGrowthBound);
      tally.measure("megabytes that the game kept", growth);
      if (HasFatalFailure()) return;
    }
  }
  EXPECT_LE(usualClick(), kClickBound);
}

}  // namespace
}  // namespace zovk
