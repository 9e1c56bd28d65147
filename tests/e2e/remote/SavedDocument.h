#pragma once

#include <string>

namespace zovk {

/// Returns a large configuration document, as a service would send it. Documents with different
/// numbers differ in length and in all parts of their text.
inline std::string savedDocument(int number) {
  constexpr int kPopups = 1000;
  std::string popups;
  for (int i = 0; i < kPopups + number; ++i) {
    if (i > 0) popups += ',';
    popups += R"({"pop_id":)" + std::to_string(i) + R"(,"scene":"scene)" + std::to_string(i) +
              R"(","scene_type":5,"pop_type":1,"content_type":3,"pop_freq":2,"publish_time":)" +
              std::to_string(number) + R"(,"uri":"","sig":""})";
  }
  return R"({"code":0,"popups":[)" + popups + "]}";
}

}  // namespace zovk
