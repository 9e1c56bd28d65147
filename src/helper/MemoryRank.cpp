#include "helper/MemoryRank.h"

#include <algorithm>
#include <fstream>

namespace zovk::helper {
namespace {

constexpr const char* kRankFile = "/proc/self/oom_score_adj";
constexpr int kAheadOfTheGame = 500;  // of 1000: half of the machine's memory more than there is
constexpr int kHighest = 1000;

int rankOfTheGame() {
  static const int inherited = [] {
    int rank = 0;
    std::ifstream(kRankFile) >> rank;
    return rank;
  }();
  return inherited;
}

void rank(int value) {
  std::ofstream(kRankFile) << value;
}

}  // namespace

void goFirstWhenMemoryRunsOut() {
  rank(std::min(kHighest, rankOfTheGame() + kAheadOfTheGame));
}

void countLikeAnyOther() {
  rank(rankOfTheGame());
}

}  // namespace zovk::helper
