#include "storage/DigestCache.h"

#include <cstdint>

#include "storage/FreshnessRule.h"
#include "text/Md5.h"

namespace zovk {
namespace {

// More pages than this are not kept by any real configuration; the cache starts over.
constexpr std::size_t kMaximumEntries = 20000;

}  // namespace

std::optional<std::string> DigestCache::digest(const std::string& path, FileGlance& glance) {
  const auto before = glance.identity(path);
  if (!before) return std::nullopt;
  if (auto known = remembered(path, *before)) return known;
  const bool settled = identityIsSettled(*before, clock_);
  Md5 md5;
  std::uint64_t size = 0;
  const auto take = [&](std::string_view piece) {
    md5.update(piece);
    size += piece.size();
  };
  if (!files_.readPieces(path, take)) return std::nullopt;
  std::string result = md5.finish();
  // A read that broke off gives the digest of what was read, but is not worth remembering.
  const bool whole = size == before->size && files_.identity(path) == before;
  if (settled && whole) remember(path, *before, result);
  return result;
}

std::optional<std::string> DigestCache::remembered(const std::string& path,
                                                   const FileIdentity& identity) {
  const LockGuard lock(mutex_);
  const auto found = entries_.find(path);
  if (found == entries_.end() || found->second.identity != identity) return std::nullopt;
  return found->second.digest;
}

void DigestCache::remember(const std::string& path, const FileIdentity& identity,
                           const std::string& digest) {
  const LockGuard lock(mutex_);
  if (entries_.size() >= kMaximumEntries) entries_.clear();
  entries_.insert_or_assign(path, Entry{identity, digest});
}

}  // namespace zovk
