// The functions by which tests prepare and examine the file system, and make it fail.
#include "platform/memory/MemoryFileSystem.h"

namespace zovk {
namespace {

int countOf(const std::map<std::string, int>& counts, const std::string& key) {
  const auto found = counts.find(key);
  return found == counts.end() ? 0 : found->second;
}

}  // namespace

// Makes the directories above a path; returns the path free of links.
std::string MemoryFileSystem::addAbove(const std::string& path) {
  const std::string above = pathAbove(path);
  std::string key;
  if (!above.empty()) {
    const Place place = find(above);
    key = place.entry != nullptr ? place.key : addAbove(above);
    if (place.entry == nullptr) put(key, Kind::kDirectory, "");
  }
  return key + path.substr(above.size());
}

void MemoryFileSystem::addFile(const std::string& path, std::string_view text) {
  const LockGuard lock(mutex_);
  put(addAbove(path), Kind::kFile, text);
}

void MemoryFileSystem::addDirectory(const std::string& path) {
  const LockGuard lock(mutex_);
  if (find(path).entry == nullptr) put(addAbove(path), Kind::kDirectory, "");
}

void MemoryFileSystem::addLink(const std::string& path, const std::string& target) {
  const LockGuard lock(mutex_);
  put(addAbove(path), Kind::kLink, target);
}

void MemoryFileSystem::take(const std::string& path) {
  const LockGuard lock(mutex_);
  const Place place = find(path, LastLink::kKeep);
  if (place.entry != nullptr) erase(place.key);
}

std::optional<std::string> MemoryFileSystem::text(const std::string& path) const {
  const LockGuard lock(mutex_);
  const Place place = find(path);
  if (place.entry == nullptr || place.entry->kind != Kind::kFile) return std::nullopt;
  return place.entry->content;
}

bool MemoryFileSystem::isDirectory(const std::string& path) const {
  const LockGuard lock(mutex_);
  const Place place = find(path);
  return place.entry != nullptr && place.entry->kind == Kind::kDirectory;
}

std::vector<std::string> MemoryFileSystem::list(const std::string& directory) const {
  const LockGuard lock(mutex_);
  const std::string key = find(directory).key;
  std::vector<std::string> paths;
  const auto [begin, end] = below(key);
  for (auto i = begin; i != end; ++i) paths.push_back(i->first.substr(key.size() + 1));
  return paths;
}

int MemoryFileSystem::writeCount(const std::string& path) const {
  const LockGuard lock(mutex_);
  return countOf(writes_, path);
}

int MemoryFileSystem::readCount(const std::string& path) const {
  const LockGuard lock(mutex_);
  return countOf(reads_, path);
}

void MemoryFileSystem::failWrites(const std::string& prefix, std::errc error) {
  const LockGuard lock(mutex_);
  faults_.writes[prefix] = error;
}

void MemoryFileSystem::failReads(const std::string& prefix) {
  const LockGuard lock(mutex_);
  faults_.reads.insert(prefix);
}

void MemoryFileSystem::cutReads(const std::string& path, std::size_t bytes) {
  const LockGuard lock(mutex_);
  faults_.cuts[path] = bytes;
}

void MemoryFileSystem::failRemovals(const std::string& prefix, std::errc error) {
  const LockGuard lock(mutex_);
  faults_.removals[prefix] = error;
}

void MemoryFileSystem::failCreateDirectory(const std::string& prefix, std::errc error) {
  const LockGuard lock(mutex_);
  faults_.directories[prefix] = error;
}

void MemoryFileSystem::makeReadOnly(const std::string& directory) {
  const LockGuard lock(mutex_);
  faults_.readOnly.insert(directory);
}

void MemoryFileSystem::setFreeSpace(std::uint64_t bytes) {
  const LockGuard lock(mutex_);
  faults_.freeSpace = bytes;
}

void MemoryFileSystem::vanishAfter(const std::string& path, int looks) {
  const LockGuard lock(mutex_);
  faults_.looksLeft[path] = looks;
}

void MemoryFileSystem::clearFaults() {
  const LockGuard lock(mutex_);
  faults_ = {};
}

}  // namespace zovk
