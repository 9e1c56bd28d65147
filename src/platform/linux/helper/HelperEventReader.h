#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/helper/HelperJournal.h"
#include "zovkpopup/platform/Geometry.h"

namespace zovk {

/// Reads the members of an event. A member that is missing or of the wrong kind gives an empty
/// value and makes the whole event ill-formed.
class HelperEventReader {
 public:
  explicit HelperEventReader(const HelperMessage& event) : event_(event) {}

  /// Reads a positive integer.
  HelperId id(std::string_view member);
  std::string text(std::string_view member);
  bool flag(std::string_view member);
  /// Reads a finite number that is not negative.
  double length(std::string_view member);
  /// Reads four finite numbers.
  Rect rect(std::string_view member);
  std::vector<std::string> texts(std::string_view member);
  bool has(std::string_view member) const { return event_.contains(member); }
  /// Marks the event as ill-formed, for members that contradict each other.
  void reject() { wellFormed_ = false; }
  bool isWellFormed() const { return wellFormed_; }

 private:
  const boost::json::value& member(std::string_view name) const;

  const HelperMessage& event_;
  bool wellFormed_ = true;
};

}  // namespace zovk
