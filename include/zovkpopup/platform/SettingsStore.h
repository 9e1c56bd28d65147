#pragma once

#include <optional>
#include <string>

namespace zovk {

/// Small texts that outlive the process, one store per application. Any thread; calls block until
/// done, or for at most 50 milliseconds if another process holds the store. Callers own the
/// results. Nothing throws. If the store cannot be read, only values that it returned before are
/// available. If a write fails, the store logs that and the write is lost. A write that only waits
/// for another process counts at once and is stored later.
class SettingsStore {
 public:
  virtual ~SettingsStore() = default;
  virtual std::optional<std::string> value(const std::string& key) const = 0;
  virtual void set(const std::string& key, const std::string& value) = 0;
  virtual void remove(const std::string& key) = 0;
  /// Returns false while another process holds the store: it may then have values that it does not
  /// return.
  virtual bool isReadable() const { return true; }
  /// Returns once all changes so far are on disk, or wait for another process.
  virtual void synchronize() = 0;
};

}  // namespace zovk
