#pragma once

#include <optional>
#include <string>

namespace zovk {

/// Small texts that outlive the process, one store per application. Any thread; calls block until
/// done. Callers own what they get. Nothing throws: a store that cannot be read holds nothing, and
/// a write that cannot be kept is logged by the store and lost.
class SettingsStore {
 public:
  virtual ~SettingsStore() = default;
  virtual std::optional<std::string> value(const std::string& key) const = 0;
  virtual void set(const std::string& key, const std::string& value) = 0;
  virtual void remove(const std::string& key) = 0;
  /// Returns once everything set and removed so far is on disk.
  virtual void synchronize() = 0;
};

}  // namespace zovk
