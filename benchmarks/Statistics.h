#pragma once

#include <chrono>
#include <vector>

namespace zovk {

using Milliseconds = std::chrono::duration<double, std::milli>;

/// Returns the median, or 0 for no values.
double medianOf(std::vector<double> values);
double largestOf(const std::vector<double>& values);

}  // namespace zovk
