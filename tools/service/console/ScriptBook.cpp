#include "service/console/ScriptBook.h"

#include <chrono>
#include <utility>

#include "text/Md5.h"
#include "zovkpopup/InstalledHelper.h"
#include "zovkpopup/ToolError.h"

namespace zovk::service {
namespace {

constexpr std::chrono::seconds kLongestRun{10};

std::string whyNoHelper() {
  try {
    tool::installedHelper();
    return "";
  } catch (const tool::ToolError& error) {
    return error.what();
  }
}

}  // namespace

bool ScriptBook::knows(const std::string& page, bool again) const {
  const LockGuard lock(mutex_);
  const auto found = known_.find(md5Hex(page));
  return found != known_.end() && (!again || found->second.unchecked.empty());
}

void ScriptBook::learn(const std::vector<std::string>& pages) {
  std::string missing = whyNoHelper();
  std::vector<Known> learned(pages.size());
  if (missing.empty()) {
    tool::ScriptBatch batch;
    for (std::size_t i = 0; i < pages.size(); ++i) {
      if (!batch.add(i, pages[i])) learned[i].unchecked = "the encoding of a page is not known";
    }
    try {
      for (tool::ScriptFault& fault : batch.parse(kLongestRun)) {
        learned[fault.page].faults.push_back(std::move(fault));
      }
    } catch (const tool::ToolError& error) {
      for (Known& page : learned) page.unchecked = error.what();
    }
  }
  const LockGuard lock(mutex_);
  missing_ = std::move(missing);
  if (!missing_.empty()) return;
  if (known_.size() + pages.size() > kMostRemembered) known_.clear();
  for (std::size_t i = 0; i < pages.size(); ++i) known_[md5Hex(pages[i])] = std::move(learned[i]);
}

std::vector<tool::ScriptFault> ScriptBook::faultsOf(const std::string& page) const {
  const LockGuard lock(mutex_);
  const auto found = known_.find(md5Hex(page));
  return found == known_.end() ? std::vector<tool::ScriptFault>() : found->second.faults;
}

std::string ScriptBook::unchecked() const {
  const LockGuard lock(mutex_);
  if (!missing_.empty()) return missing_;
  for (const auto& [digest, page] : known_) {
    if (!page.unchecked.empty()) return page.unchecked;
  }
  return "";
}

void ScriptReader::add(const std::string& page) {
  constexpr std::size_t kBytesAtOnce = 16U << 20;
  if (rounds_ == 0 || book_.knows(page, again_)) return;
  if (bytes_ + page.size() > kBytesAtOnce) finish();
  bytes_ += page.size();
  if (rounds_ > 0) pages_.push_back(page);
}

void ScriptReader::finish() {
  if (pages_.empty() || rounds_ == 0) return;
  book_.learn(pages_);
  --rounds_;
  pages_.clear();
  bytes_ = 0;
}

}  // namespace zovk::service
