#include "platform/linux/http/CurlQueue.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "text/WebAddress.h"

namespace zovk {
namespace {

CurlQueue::Job takeFirst(std::deque<CurlQueue::Job>& line) {
  CurlQueue::Job job = std::move(line.front());
  line.pop_front();
  return job;
}

void moveCancelled(std::deque<CurlQueue::Job>& line, std::vector<CurlQueue::Job>& cancelled) {
  const auto first = std::stable_partition(
      line.begin(), line.end(), [](const auto& job) { return !job->task->isCancelled(); });
  std::move(first, line.end(), std::back_inserter(cancelled));
  line.erase(first, line.end());
}

}  // namespace

void CurlQueue::add(Job job) {
  if (const auto address = readWebAddress(job->request.url)) job->host = address->host;
  const bool isData = job->kind == CurlJob::Kind::kData;
  Line& line = isData ? data_ : downloads_[job->host];
  line.push_back(std::move(job));
}

std::vector<CurlQueue::Job> CurlQueue::takeCancelled() {
  std::vector<Job> cancelled;
  moveCancelled(data_, cancelled);
  for (auto& [host, line] : downloads_) moveCancelled(line, cancelled);
  std::erase_if(downloads_, [](const auto& entry) { return entry.second.empty(); });
  return cancelled;
}

CurlQueue::Job CurlQueue::nextData() {
  return data_.empty() ? nullptr : takeFirst(data_);
}

CurlQueue::Job CurlQueue::nextDownload(
    const std::function<bool(const std::string& host)>& hasRoom) {
  for (auto entry = downloads_.begin(); entry != downloads_.end(); ++entry) {
    auto& [host, line] = *entry;
    if (!hasRoom(host)) continue;
    Job job = takeFirst(line);
    if (line.empty()) downloads_.erase(entry);
    return job;
  }
  return nullptr;
}

}  // namespace zovk
