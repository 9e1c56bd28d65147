#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/helper/HelperJournal.h"
#include "zovkpopup/platform/Geometry.h"

namespace zovk {

/// Takes an event of the helper apart. A member that is missing or of the wrong kind yields an
/// empty value and makes the whole event ill-formed.
class HelperEventReader {
 public:
  explicit HelperEventReader(const HelperMessage& event) : event_(event) {}

  /// A positive integer.
  HelperId id(std::string_view member);
  std::string text(std::string_view member);
  bool flag(std::string_view member);
  /// A finite number that is not negative.
  double length(std::string_view member);
  /// Four finite numbers.
  Rect rect(std::string_view member);
  std::vector<std::string> texts(std::string_view member);
  bool has(std::string_view member) const { return event_.contains(member); }
  /// For what the event's members contradict.
  void reject() { wellFormed_ = false; }
  bool isWellFormed() const { return wellFormed_; }

 private:
  const boost::json::value& member(std::string_view name) const;

  const HelperMessage& event_;
  bool wellFormed_ = true;
};

}  // namespace zovk
