#include "zovkpopup/PopupCheck.h"

#include <boost/url/parse.hpp>
#include <boost/url/url_view.hpp>
#include <fmt/chrono.h>
#include <fmt/format.h>

#include "text/LowerCase.h"
#include "zovkpopup/PageCheck.h"
#include "zovkpopup/TextFile.h"

namespace zovk::tool {
namespace {

constexpr std::uint64_t kPopTypeOrdinary = 1;

std::string dateText(std::int32_t seconds) {
  return fmt::format("{} ({:%Y-%m-%d %H:%M:%S} UTC)", seconds, fmt::gmtime(std::time_t{seconds}));
}

std::int64_t number(std::uint64_t kind) {
  return static_cast<std::int64_t>(kind);  // kinds are integers widened with their sign
}

}  // namespace

void PopupCheck::check(const ZOVKPopupModel& popup, std::size_t index) {
  index_ = index;
  checkContent(popup);
  checkPage(popup);
  checkKinds(popup);
  checkAddresses(popup);
  checkCondition(popup);
  checkTimes(popup);
  checkScene(popup);
  checkNames(popup);
}

void PopupCheck::checkContent(const ZOVKPopupModel& popup) {
  const Judgement judgement = engine_.judgeContent(popup);
  if (judgement.verdict == Verdict::kFileMissing) {
    error("sig", missingPageText(pages_, popup));
  } else if (judgement.verdict == Verdict::kDigestDiffers) {
    checkDigest(popup, judgement.digest);
  }
}

// Checks each file once, at the first popup that shows it.
void PopupCheck::checkPage(const ZOVKPopupModel& popup) {
  const auto file = popup.isPageFile() ? pages_.find(popup) : std::nullopt;
  if (!file || !readPages_.insert(*file).second) return;
  problems_.addPage({index_, *file});
  for (const PageProblem& problem : pageProblems(readFile(*file))) {
    problems_.add({problem.severity, entryPath(index_),
                   "the page " + file->filename().string() + " " + problem.message});
  }
}

void PopupCheck::checkDigest(const ZOVKPopupModel& popup, const std::string& digest) {
  if (!popup.isPageFile() && popup.uri.empty()) return;  // the missing address is reported instead
  const auto file = popup.isPageFile() ? pages_.find(popup) : std::nullopt;
  const std::string what = file ? file->string() : popup.uri;
  if (digest.empty()) {
    return error("sig", fmt::format("matches nothing, as {} cannot be read", what));
  }
  if (lowerCase(popup.sig) == digest) {
    return error("sig", "mixes upper and lower case, which never matches; write " + digest);
  }
  error("sig", fmt::format("is {}, but the MD5 of {} is {}",
                           popup.sig.empty() ? "missing" : "\"" + popup.sig + "\"", what, digest));
}

void PopupCheck::checkKinds(const ZOVKPopupModel& popup) {
  if (popup.content_type != kContentTypeWebPage && !popup.isPageFile()) {
    warning("content_type", fmt::format("is {} and counts as a web page; write 1 or 2 for a page "
                                        "file, 3 for a web page",
                                        number(popup.content_type)));
  }
  if (popup.pop_type != kPopTypeOrdinary && popup.pop_type != kPopTypeGame) {
    warning("pop_type", fmt::format("is {} and counts as an ordinary popup; write 1, or 2 for a "
                                    "game page",
                                    number(popup.pop_type)));
  }
  if (popup.pop_freq < kPopFreqOnce || popup.pop_freq > kPopFreqConditional) {
    warning("pop_freq", fmt::format("is {} and counts as no limit; write 1 for once, 2 for no "
                                    "limit, 3 for conditional",
                                    number(popup.pop_freq)));
  }
  if (popup.pop_freq == kPopFreqOnce && !popup.isPageFile()) {
    warning("pop_freq", "is 1 for once, which has no effect on a web page");
  }
}

void PopupCheck::checkAddresses(const ZOVKPopupModel& popup) {
  const bool needed = !popup.isPageFile() || popup.config_type == kConfigRemote;
  if (popup.uri.empty() && needed) {
    error("uri", popup.isPageFile() ? "is missing, so that the page is never downloaded"
                                    : "is missing, so that there is no page to load");
  }
  checkAddress("uri", popup.uri, !popup.isPageFile());
  checkAddress("check_url", popup.check_url, false);
  checkAddress("report_url", popup.report_url, false);
}

void PopupCheck::checkAddress(const char* key, const std::string& address, bool mayHaveFragment) {
  if (address.empty()) return;
  const auto parsed = boost::urls::parse_uri(address);
  if (!parsed) return warning(key, "is no complete address: \"" + address + "\"");
  if (parsed->scheme_id() == boost::urls::scheme::http) {
    warning(key, "is not https, so that others on the way can read and change it");
  } else if (parsed->scheme_id() != boost::urls::scheme::https) {
    warning(key, "is neither an https nor an http address");
  }
  if (!mayHaveFragment && parsed->has_fragment()) warning(key, "must not have a fragment (#)");
}

void PopupCheck::checkCondition(const ZOVKPopupModel& popup) {
  const bool conditional = popup.pop_freq == kPopFreqConditional;
  if (conditional && popup.check_url.empty()) {
    error("check_url",
          "is missing, which counts as no: a conditional popup (pop_freq 3) is never "
          "shown without it");
  }
  if (!conditional && !popup.check_url.empty()) {
    warning("check_url", "is never asked unless pop_freq is 3");
  }
  if (popup.report_url.empty()) {
    warning("report_url", "is missing: a commit of the page closes the popup unreported");
  }
}

void PopupCheck::checkTimes(const ZOVKPopupModel& popup) {
  if (popup.expire_time == 0) return;
  if (popup.valid_time != 0 && popup.valid_time >= popup.expire_time) {
    warning("expire_time", fmt::format("is not after valid_time ({} against {}), so that the popup "
                                       "is never valid",
                                       popup.expire_time, popup.valid_time));
  } else if (now_ >= popup.expire_time) {
    const std::string text = "is past: " + dateText(popup.expire_time);
    if (mayTakeBack_) return problems_.hint(entryPath(index_, "expire_time"), text);
    warning("expire_time", text);
  }
}

void PopupCheck::checkScene(const ZOVKPopupModel& popup) {
  const bool isPolicy = popup.scene == kPolicyScene || popup.scene == kPermissionScene;
  if (static_cast<std::int64_t>(popup.scene_type) < 0) {
    warning("scene_type",
            fmt::format("is {}; games ask for types from 1", number(popup.scene_type)));
  } else if (popup.scene_type == 0 && !isPolicy) {
    warning("scene_type", "is 0, which is for the policy: games that ask by type never get it");
  }
  if (popup.scene.find_first_of(" \t\r\n") != std::string::npos) {
    warning("scene",
            "has blanks: \"" + popup.scene + "\"; games must ask for it with the same ones");
  }
}

void PopupCheck::checkNames(const ZOVKPopupModel& popup) {
  if (popup.scene.empty()) {
    warning("scene", "is missing: the popup can be asked for by its scene type only");
  } else if (const auto [first, isNew] = scenes_.emplace(popup.scene, index_); !isNew) {
    warning("scene", fmt::format("is \"{}\" as in {}: asked for by its scene, only the first that "
                                 "is valid for the player is looked at",
                                 popup.scene, entryPath(first->second)));
  }
  if (const auto [first, isNew] = popIds_.emplace(popup.pop_id, index_); !isNew) {
    warning("pop_id", fmt::format("is {} as in {}: reports cannot tell them apart", popup.pop_id,
                                  entryPath(first->second)));
  }
  if (popup.valid_platform.find_first_not_of("0123456789,") != std::string::npos) {
    warning("valid_platform", "is \"" + popup.valid_platform +
                                  "\"; write channel numbers with commas between, such as 1,2");
  }
}

}  // namespace zovk::tool
