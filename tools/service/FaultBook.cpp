#include "service/FaultBook.h"

#include <charconv>
#include <stdexcept>

#include <boost/json/serialize.hpp>

#include "service/Folder.h"

namespace zovk::service {
namespace {

struct Kind {
  FaultKind kind;
  std::uint64_t standard;  // where no argument is given; 0 where one is needed or none is taken
  std::uint64_t largest;   // 0 where no number is taken
};

constexpr std::uint64_t kTenMinutes = 600'000;
constexpr std::uint64_t kGigabyte = 1 << 30;

const std::map<std::string, Kind>& kinds() {
  static const std::map<std::string, Kind> kKinds{
      {"delay", {FaultKind::kDelay, 0, kTenMinutes}},
      {"drop", {FaultKind::kDrop, 0, 0}},
      {"truncate", {FaultKind::kTruncate, 1000, kGigabyte}},
      {"slow-drip", {FaultKind::kSlowDrip, 100, kGigabyte}},
      {"status-500", {FaultKind::kStatus500, 0, 0}},
      {"empty", {FaultKind::kEmpty, 0, 0}},
      {"not-json", {FaultKind::kNotJson, 0, 0}},
      {"huge", {FaultKind::kHuge, 50, 1024}},
      {"redirect-loop", {FaultKind::kRedirectLoop, 0, 0}},
      {"changed", {FaultKind::kChanged, 0, kGigabyte}}};
  return kKinds;
}

std::uint64_t numberIn(const std::string& text, const std::string& what, std::uint64_t largest) {
  std::uint64_t number = 0;
  const char* const end = text.data() + text.size();
  const auto read = std::from_chars(text.data(), end, number);
  if (read.ec != std::errc() || read.ptr != end || number == 0 || number > largest) {
    throw std::invalid_argument(what + " takes a number from 1 to " + std::to_string(largest) +
                                ", not \"" + text + "\"");
  }
  return number;
}

// Splits N:FILE.
void readChange(Fault& fault, const std::string& argument, std::uint64_t largest) {
  const std::size_t colon = argument.find(':');
  fault.number = numberIn(argument.substr(0, colon), "changed", largest);
  if (colon != std::string::npos) fault.file = argument.substr(colon + 1);
  if (!isPlainName(fault.file)) {
    throw std::invalid_argument("changed takes N:FILE, a file of the folder");
  }
}

// Returns a member as text, so that numbers may be written as numbers.
std::string textOf(const boost::json::object& request, std::string_view name) {
  const auto* value = request.if_contains(name);
  if (value == nullptr || value->is_null()) return "";
  std::string text =
      value->is_string() ? std::string(value->get_string()) : boost::json::serialize(*value);
  if (text.size() > FaultBook::kLongestText) {
    throw std::invalid_argument("\"" + std::string(name) + "\" may have " +
                                std::to_string(FaultBook::kLongestText) + " bytes");
  }
  return text;
}

}  // namespace

Fault makeFault(const std::string& kind, const std::string& argument, std::uint64_t times) {
  const auto found = kinds().find(kind);
  if (found == kinds().end()) throw std::invalid_argument("unknown fault \"" + kind + "\"");
  const Kind& known = found->second;
  Fault fault{known.kind, kind, known.standard, "", times};
  if (known.kind == FaultKind::kChanged) {
    readChange(fault, argument, known.largest);
  } else if (known.largest == 0) {
    if (!argument.empty()) throw std::invalid_argument(kind + " takes no argument");
  } else if (!argument.empty() || known.standard == 0) {
    fault.number = numberIn(argument, kind, known.largest);
  }
  return fault;
}

void FaultBook::set(const std::string& text) {
  const std::size_t sign = text.find('=');
  if (sign == std::string::npos) throw std::invalid_argument("a fault is PATH=KIND[:ARGUMENT]");
  const std::string fault = text.substr(sign + 1);
  const std::size_t colon = fault.find(':');
  put(text.substr(0, sign), fault.substr(0, colon),
      colon == std::string::npos ? "" : fault.substr(colon + 1), 0);
}

void FaultBook::set(const boost::json::object& request) {
  const std::string times = textOf(request, "times");
  put(textOf(request, "path"), textOf(request, "fault"), textOf(request, "arg"),
      times.empty() || times == "0" ? 0 : numberIn(times, "times", kGigabyte));
}

void FaultBook::put(const std::string& path, const std::string& kind, const std::string& argument,
                    std::uint64_t times) {
  // A fault in the controls would lock their user out.
  if (!path.starts_with('/') || path.starts_with("/_control")) {
    throw std::invalid_argument("no fault can be set for the path \"" + path + "\"");
  }
  if (kind == "none") {
    const LockGuard lock(mutex_);
    entries_.erase(path);
    return;
  }
  Entry entry{makeFault(kind, argument, times)};
  const LockGuard lock(mutex_);
  if (entries_.size() >= kMostFaults && !entries_.contains(path)) {
    throw std::invalid_argument("there may be " + std::to_string(kMostFaults) + " faults");
  }
  entries_.insert_or_assign(path, std::move(entry));
}

std::optional<Fault> FaultBook::take(const std::string& path) {
  const LockGuard lock(mutex_);
  const auto found = entries_.find(path);
  if (found == entries_.end()) return std::nullopt;
  Entry& entry = found->second;
  ++entry.requests;
  if (entry.fault.kind == FaultKind::kChanged && entry.requests < entry.fault.number) {
    return std::nullopt;
  }
  ++entry.spoilt;
  Fault fault = entry.fault;
  if (entry.spoilt == fault.times) entries_.erase(found);
  return fault;
}

boost::json::array FaultBook::list() const {
  const LockGuard lock(mutex_);
  boost::json::array faults;
  for (const auto& [path, entry] : entries_) {
    faults.push_back(boost::json::object{{"path", path},
                                         {"fault", entry.fault.kindName},
                                         {"number", entry.fault.number},
                                         {"file", entry.fault.file},
                                         {"times", entry.fault.times},
                                         {"spoilt", entry.spoilt}});
  }
  return faults;
}

}  // namespace zovk::service
