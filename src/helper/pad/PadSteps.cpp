#include "helper/pad/PadSteps.h"

#include <algorithm>
#include <cmath>

namespace zovk::helper {
namespace {

constexpr double kOutOfLine = 2;

struct Span {
  double begin;
  double end;
  double middle() const { return (begin + end) / 2; }
};

Span across(const PadPlace& place) {
  return {place.x, place.x + place.width};
}

Span down(const PadPlace& place) {
  return {place.y, place.y + place.height};
}

/// Returns how far `to` lies ahead of `from`, or nothing if it does not.
std::optional<double> ahead(const Span& from, const Span& to, bool forward) {
  const double way = forward ? to.middle() - from.middle() : from.middle() - to.middle();
  const double gap = forward ? to.begin - from.end : from.begin - to.end;
  // Places may overlap a little; one that lies within the other lies nowhere.
  if (way <= 0 || gap < -std::min(from.end - from.begin, to.end - to.begin) / 2) {
    return std::nullopt;
  }
  return std::max(gap, 0.0);
}

double outOfLine(const Span& from, const Span& to) {
  return std::max({to.begin - from.end, from.begin - to.end, 0.0});
}

}  // namespace

std::optional<std::size_t> nextPlace(const PadPlace& from, const std::vector<PadPlace>& places,
                                     PadDirection direction) {
  const bool vertical = direction == PadDirection::kUp || direction == PadDirection::kDown;
  const bool forward = direction == PadDirection::kDown || direction == PadDirection::kRight;
  const auto along = vertical ? down : across;
  const auto beside = vertical ? across : down;
  std::optional<std::size_t> best;
  double least = 0;
  for (std::size_t i = 0; i < places.size(); ++i) {
    const auto gap = ahead(along(from), along(places[i]), forward);
    if (!gap) continue;
    const double far = *gap + kOutOfLine * outOfLine(beside(from), beside(places[i])) +
                       std::abs(beside(from).middle() - beside(places[i]).middle()) / 1000;
    if (best && far >= least) continue;
    best = i;
    least = far;
  }
  return best;
}

}  // namespace zovk::helper
