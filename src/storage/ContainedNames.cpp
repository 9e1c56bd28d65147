#include "storage/ContainedNames.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <random>
#include <unordered_map>

#include "storage/CommaList.h"

namespace zovk {
namespace {

using Names = std::unordered_set<std::string_view>;

// A hash of a window of bytes. Moving it on by one byte costs the same however wide the window is.
// The base is chosen at random, so that nobody can make names that collide.
class RollingHash {
 public:
  explicit RollingHash(std::size_t width) {
    for (std::size_t i = 1; i < width; ++i) first_ = first_ * base() % kPrime;
  }
  static std::uint64_t of(std::string_view window) {
    std::uint64_t hash = 0;
    for (const char c : window) hash = (hash * base() + byte(c)) % kPrime;
    return hash;
  }
  std::uint64_t moved(std::uint64_t hash, char gone, char added) const {
    const std::uint64_t rest = hash + kPrime - byte(gone) * first_ % kPrime;
    return (rest * base() + byte(added)) % kPrime;
  }

 private:
  static constexpr std::uint64_t kPrime = (std::uint64_t{1} << 31U) - 1;
  static std::uint64_t byte(char c) { return static_cast<unsigned char>(c) + std::uint64_t{1}; }
  static std::uint64_t base() {
    static const std::uint64_t chosen = 256 + std::random_device()() % (kPrime - 512);
    return chosen;
  }

  std::uint64_t first_ = 1;  // what the first byte of a window counts
};

// Which hashes names have, or nearly: most windows of a long text are passed over by one look.
class Sieve {
 public:
  void add(std::uint64_t hash) { bits_[hash % kBits] = true; }
  bool mayHold(std::uint64_t hash) const { return bits_[hash % kBits]; }

 private:
  static constexpr std::size_t kBits = std::size_t{1} << 20U;
  std::vector<bool> bits_ = std::vector<bool>(kBits);
};

// Adds the names, which all have one width, that some window of the text is equal to.
void addNamesOfWidth(const std::vector<std::string_view>& names, std::string_view text,
                     Names& found) {
  const std::size_t width = names.front().size();
  if (width > text.size()) return;
  std::unordered_multimap<std::uint64_t, std::string_view> byHash;
  Sieve sieve;
  for (const std::string_view name : names) {
    const std::uint64_t hash = RollingHash::of(name);
    byHash.emplace(hash, name);
    sieve.add(hash);
  }
  const RollingHash roll(width);
  std::uint64_t hash = RollingHash::of(text.substr(0, width));
  for (std::size_t i = 0; !byHash.empty(); ++i) {
    if (sieve.mayHold(hash)) {
      const auto [first, last] = byHash.equal_range(hash);
      for (auto name = first; name != last;) {
        const bool here = text.substr(i, width) == name->second;
        if (here) found.insert(name->second);
        name = here ? byHash.erase(name) : std::next(name);
      }
    }
    if (i + width == text.size()) return;
    hash = roll.moved(hash, text[i], text[i + width]);
  }
}

}  // namespace

std::unordered_set<std::string_view> containedNames(const std::vector<std::string>& names,
                                                    std::string_view text) {
  const Names items = itemsBetweenCommas(text);
  Names found;
  std::map<std::size_t, std::vector<std::string_view>> othersByWidth;
  for (const std::string& name : names) {
    if (items.contains(name)) {
      found.insert(name);
    } else {
      othersByWidth[name.size()].push_back(name);
    }
  }
  for (const auto& [width, others] : othersByWidth) addNamesOfWidth(others, text, found);
  return found;
}

}  // namespace zovk
