#include "zovkpopup/PublishRecord.h"

#include <algorithm>

#include <boost/json/array.hpp>
#include <boost/json/value_from.hpp>

#include "zovkpopup/JsonText.h"
#include "zovkpopup/TextFile.h"
#include "zovkpopup/ToolError.h"

namespace zovk::tool {
namespace {

namespace fs = std::filesystem;

constexpr const char* kFile = "record.json";

// Looks at everything that is used later on, so that it may be relied upon there.
bool isUnderstood(const boost::json::value& record) {
  try {
    for (const auto& target : record.at("targets").as_object()) {
      static_cast<void>(target.value().at("live").as_string());
      for (const auto& entry : target.value().at("releases").as_array()) {
        static_cast<void>(entry.at("id").as_string());
        static_cast<void>(entry.at("time").to_number<std::time_t>());
      }
    }
    return true;
  } catch (const std::exception&) {
    return false;
  }
}

boost::json::object readRecord(const fs::path& path) {
  std::error_code ignored;
  if (!fs::exists(path, ignored)) return {{"targets", boost::json::object()}};
  const JsonText json = parseJson(readFile(path));
  if (!isUnderstood(json.value)) {
    throw ToolError(path.string() + ": is no record of publications", kBadData);
  }
  return json.value.as_object();
}

Release releaseOf(const boost::json::value& entry, const fs::path& folder) {
  Release release;
  release.id = entry.at("id").as_string();
  release.time = entry.at("time").to_number<std::time_t>();
  release.folder = folder / release.id;
  return release;
}

}  // namespace

PublishRecord::PublishRecord(fs::path folder, std::string target)
    : folder_(std::move(folder)),
      target_(std::move(target)),
      record_(readRecord(folder_ / kFile)) {}

boost::json::object& PublishRecord::targetRecord() {
  boost::json::object& targets = record_.at("targets").as_object();
  auto [place, added] = targets.emplace(
      target_, boost::json::object{{"live", ""}, {"releases", boost::json::array()}});
  return place->value().as_object();
}

std::time_t PublishRecord::nextTime(std::time_t now) const {
  std::time_t latest = 0;
  for (const auto& target : record_.at("targets").as_object()) {
    for (const auto& entry : target.value().at("releases").as_array()) {
      latest = std::max(latest, entry.at("time").to_number<std::time_t>());
    }
  }
  return std::max(now, latest + 1);
}

std::optional<Release> PublishRecord::before() const {
  const auto* const target = record_.at("targets").as_object().if_contains(target_);
  if (target == nullptr) return std::nullopt;
  const boost::json::array& releases = target->at("releases").as_array();
  const auto live = std::find_if(releases.begin(), releases.end(), [&](const auto& entry) {
    return entry.at("id") == target->at("live");
  });
  if (live == releases.begin() || live == releases.end()) return std::nullopt;
  return releaseOf(*(live - 1), folder_);
}

void PublishRecord::add(const Release& release, const std::string& document) {
  boost::json::object& target = targetRecord();
  target["releases"].as_array().push_back(
      boost::json::object{{"id", release.id},
                          {"time", release.time},
                          {"document", document},
                          {"pages", boost::json::value_from(release.pages)}});
  setLive(release);
}

void PublishRecord::setLive(const Release& release) {
  targetRecord()["live"] = release.id;
  save();
}

void PublishRecord::save() const {
  const fs::path unfinished = folder_ / (std::string(kFile) + ".unfinished");
  writeFile(unfinished, prettyJson(record_));
  std::error_code error;
  fs::rename(unfinished, folder_ / kFile, error);
  if (error) throw ToolError((folder_ / kFile).string() + ": " + error.message(), kInputOutput);
}

}  // namespace zovk::tool
