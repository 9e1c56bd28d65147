#include "platform/memory/MemoryFileSystem.h"

#include <algorithm>

namespace zovk {
namespace {

constexpr int kMostLinks = 40;
constexpr std::size_t kLongestName = 255;
constexpr std::size_t kPiece = 4096;

std::optional<std::errc> faultFor(const std::map<std::string, std::errc>& faults,
                                  const std::string& key) {
  for (const auto& [prefix, error] : faults) {
    if (key.starts_with(prefix)) return error;
  }
  return std::nullopt;
}

bool hasPrefixOf(const std::set<std::string>& prefixes, const std::string& key) {
  return std::any_of(prefixes.begin(), prefixes.end(),
                     [&key](const auto& prefix) { return key.starts_with(prefix); });
}

}  // namespace

std::string MemoryFileSystem::pathAbove(const std::string& path) {
  const auto slash = path.rfind('/');
  return slash == std::string::npos ? std::string() : path.substr(0, slash);
}

MemoryFileSystem::MemoryFileSystem() {
  const LockGuard lock(mutex_);
  put("", Kind::kDirectory, "");
}

// Goes from a place to the entry `name` in it.
void MemoryFileSystem::step(Place& place, std::string_view name, LastLink lastLink,
                            int depth) const {
  if (place.entry == nullptr) {
    place.error = std::errc::no_such_file_or_directory;
  } else if (place.entry->kind != Kind::kDirectory) {
    place.error = std::errc::not_a_directory;
  } else if (name.size() > kLongestName) {
    place.error = std::errc::filename_too_long;
  } else if (name == "..") {
    place.key = pathAbove(place.key);
    place.entry = &entries_[place.key];
  } else if (name != "." && !name.empty()) {
    const std::string directory = place.key;
    place.key = directory + "/" + std::string(name);
    const auto found = entries_.find(place.key);
    place.entry = found == entries_.end() ? nullptr : &found->second;
    if (place.entry == nullptr || place.entry->kind != Kind::kLink) return;
    if (lastLink == LastLink::kKeep) return;
    const std::string& target = place.entry->content;
    place = find(target.starts_with('/') ? target : directory + "/" + target, LastLink::kFollow,
                 depth + 1);
  }
}

MemoryFileSystem::Place MemoryFileSystem::find(const std::string& path, LastLink lastLink,
                                               int depth) const {
  if (!path.starts_with('/') || path.find('\0') != std::string::npos) {
    return {path, nullptr, std::errc::no_such_file_or_directory};
  }
  if (depth > kMostLinks) return {path, nullptr, std::errc::too_many_symbolic_link_levels};
  const std::size_t last = path.find_last_not_of('/');
  Place place{"", &entries_[""], {}};
  for (std::size_t begin = 1; begin <= path.size() && place.error == std::errc{};) {
    const std::size_t end = std::min(path.find('/', begin), path.size());
    const bool isLast = last == std::string::npos || end > last;
    if (end > begin || place.entry != nullptr) {  // a slash may follow what is yet to be made
      step(place, std::string_view(path).substr(begin, end - begin),
           isLast ? lastLink : LastLink::kFollow, depth);
    }
    begin = end + 1;
    if (end == path.size()) break;
  }
  if (place.error != std::errc{}) place.entry = nullptr;
  return place;
}

std::pair<MemoryFileSystem::Entries::iterator, MemoryFileSystem::Entries::iterator>
MemoryFileSystem::below(const std::string& key) const {
  // '0' follows '/' in the order of characters.
  return {entries_.lower_bound(key + "/"), entries_.lower_bound(key + "0")};
}

std::optional<MemoryFileSystem::Entry> MemoryFileSystem::look(const std::string& path) const {
  const Place place = find(path);
  if (place.entry == nullptr) return std::nullopt;
  Entry seen = *place.entry;
  const auto left = faults_.looksLeft.find(place.key);
  if (left != faults_.looksLeft.end() && --left->second <= 0) {
    faults_.looksLeft.erase(left);
    erase(place.key);
  }
  return seen;
}

void MemoryFileSystem::put(const std::string& key, Kind kind, std::string_view content) {
  Entry& entry = entries_[key];
  entry.kind = kind;
  entry.content = content;
  entry.inode = ++lastInode_;
  touch(entry);
  if (!key.empty()) touch(entries_[pathAbove(key)]);
}

void MemoryFileSystem::erase(const std::string& key) const {
  if (key.empty()) return;
  const auto [begin, end] = below(key);
  entries_.erase(begin, end);
  entries_.erase(key);
  touch(entries_[pathAbove(key)]);
}

std::error_code MemoryFileSystem::whyNotChange(
    const Place& place, const std::map<std::string, std::errc>& faults) const {
  if (place.error != std::errc{}) return std::make_error_code(place.error);
  if (const auto fault = faultFor(faults, place.key)) return std::make_error_code(*fault);
  if (faults_.readOnly.contains(pathAbove(place.key))) {
    return std::make_error_code(std::errc::permission_denied);
  }
  return {};
}

bool MemoryFileSystem::exists(const std::string& path) const {
  const LockGuard lock(mutex_);
  return look(path).has_value();
}

std::optional<FileIdentity> MemoryFileSystem::identity(const std::string& path) const {
  const LockGuard lock(mutex_);
  const auto entry = look(path);
  if (!entry) return std::nullopt;
  return FileIdentity{1, entry->inode, entry->content.size(), entry->time, entry->time};
}

std::error_code MemoryFileSystem::createDirectory(const std::string& path) {
  const LockGuard lock(mutex_);
  const Place place = find(path, LastLink::kKeep);
  if (place.entry != nullptr) return std::make_error_code(std::errc::file_exists);
  if (const auto error = whyNotChange(place, faults_.directories)) return error;
  put(place.key, Kind::kDirectory, "");
  return {};
}

std::error_code MemoryFileSystem::remove(const std::string& path) {
  const LockGuard lock(mutex_);
  const Place place = find(path, LastLink::kKeep);
  if (const auto error = whyNotChange(place, faults_.removals)) return error;
  if (place.entry == nullptr) return std::make_error_code(std::errc::no_such_file_or_directory);
  if (place.key.empty()) return std::make_error_code(std::errc::device_or_resource_busy);
  if (faults_.freeSpace) {
    *faults_.freeSpace += place.entry->content.size();
    const auto [begin, end] = below(place.key);
    for (auto i = begin; i != end; ++i) *faults_.freeSpace += i->second.content.size();
  }
  erase(place.key);
  return {};
}

std::optional<std::vector<std::string>> MemoryFileSystem::listRecursively(
    const std::string& directory) const {
  const LockGuard lock(mutex_);
  const Place place = find(directory, LastLink::kKeep);
  if (place.entry == nullptr || place.entry->kind != Kind::kDirectory) return std::nullopt;
  if (hasPrefixOf(faults_.reads, place.key)) return std::nullopt;
  std::vector<std::string> paths;
  const auto [begin, end] = below(place.key);
  for (auto i = begin; i != end; ++i) paths.push_back(i->first.substr(place.key.size() + 1));
  return paths;
}

std::optional<std::string> MemoryFileSystem::openedFile(const std::string& path) const {
  const LockGuard lock(mutex_);
  const std::string key = find(path).key;
  auto entry = look(path);
  if (!entry || entry->kind != Kind::kFile || hasPrefixOf(faults_.reads, key)) return std::nullopt;
  ++reads_[key];
  return std::move(entry->content);
}

std::optional<std::string> MemoryFileSystem::read(const std::string& path) const {
  return openedFile(path);
}

bool MemoryFileSystem::readPieces(const std::string& path,
                                  const std::function<void(std::string_view piece)>& sink) const {
  const auto content = openedFile(path);
  if (!content) return false;
  std::string_view rest = *content;
  {
    const LockGuard lock(mutex_);
    const auto cut = faults_.cuts.find(path);
    if (cut != faults_.cuts.end()) rest = rest.substr(0, cut->second);
  }
  for (; !rest.empty(); rest.remove_prefix(std::min(kPiece, rest.size()))) {
    sink(rest.substr(0, kPiece));
  }
  return true;
}

std::error_code MemoryFileSystem::writeAtomically(const std::string& path, std::string_view bytes) {
  const LockGuard lock(mutex_);
  const Place place = find(path, LastLink::kKeep);
  if (const auto error = whyNotChange(place, faults_.writes)) return error;
  if (place.entry != nullptr && place.entry->kind == Kind::kDirectory) {
    return std::make_error_code(std::errc::is_a_directory);
  }
  if (auto& room = faults_.freeSpace) {
    if (bytes.size() > *room) return std::make_error_code(std::errc::no_space_on_device);
    *room -= bytes.size();
    if (place.entry != nullptr) *room += place.entry->content.size();
  }
  put(place.key, Kind::kFile, bytes);
  ++writes_[place.key];
  return {};
}

std::error_code MemoryFileSystem::append(const std::string& path, std::string_view bytes) {
  const LockGuard lock(mutex_);
  const Place place = find(path);
  if (place.error != std::errc{}) return std::make_error_code(place.error);
  if (place.entry == nullptr) return std::make_error_code(std::errc::no_such_file_or_directory);
  if (place.entry->kind == Kind::kDirectory) return std::make_error_code(std::errc::is_a_directory);
  if (const auto fault = faultFor(faults_.writes, place.key)) return std::make_error_code(*fault);
  const auto room = faults_.freeSpace.value_or(bytes.size());
  const auto fits = std::min<std::uint64_t>(room, bytes.size());
  place.entry->content += bytes.substr(0, fits);
  touch(*place.entry);
  if (faults_.freeSpace) *faults_.freeSpace -= fits;
  if (fits < bytes.size()) return std::make_error_code(std::errc::no_space_on_device);
  ++writes_[place.key];
  return {};
}

}  // namespace zovk
