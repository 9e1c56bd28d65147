#pragma once

#include <optional>
#include <string>

namespace zovk {

/// Small texts that outlive the process, one store per application. Any thread; calls block until
/// done, for 50 milliseconds at most where another process holds the store. Callers own what they
/// get. Nothing throws: a store that cannot be read holds nothing but what it gave before, and a
/// write that cannot be kept is logged by the store and lost, unless it is only the other process
/// that is waited for: then it counts at once, and is kept later.
class SettingsStore {
 public:
  virtual ~SettingsStore() = default;
  virtual std::optional<std::string> value(const std::string& key) const = 0;
  virtual void set(const std::string& key, const std::string& value) = 0;
  virtual void remove(const std::string& key) = 0;
  /// False while another process holds the store: a value that was not given may be there.
  virtual bool isReadable() const { return true; }
  /// Returns once everything set and removed so far is on disk, or waits for another process.
  virtual void synchronize() = 0;
};

}  // namespace zovk
