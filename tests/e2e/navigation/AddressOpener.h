#pragma once

#include <initializer_list>
#include <string>
#include <vector>

#include "ScopedVariable.h"
#include "fixtures/LocalBundle.h"
#include "support/UniqueFd.h"

namespace zovk {

/// While it lives, the only program of the machine that opens addresses: it records the addresses
/// it gets. Programs that are started meanwhile find no other.
class AddressOpener {
 public:
  explicit AddressOpener(std::initializer_list<const char*> schemes);

  /// Returns the addresses so far, in the order of arrival.
  const std::vector<std::string>& opened();

 private:
  void writeProgram() const;
  void writeAssociations(std::initializer_list<const char*> schemes) const;
  void linkSystemData() const;
  std::string pathOf(const char* name) const { return (directory_.path() / name).string(); }

  ScratchDirectory directory_;
  const ScopedVariable dataHome_{"XDG_DATA_HOME", pathOf("data")};
  const ScopedVariable dataDirectories_{"XDG_DATA_DIRS", pathOf("share")};
  const ScopedVariable configHome_{"XDG_CONFIG_HOME", pathOf("config")};
  const ScopedVariable configDirectories_{"XDG_CONFIG_DIRS", pathOf("etc")};
  const ScopedVariable desktop_{"XDG_CURRENT_DESKTOP", std::nullopt};
  UniqueFd pipe_;
  std::string read_;
  std::vector<std::string> opened_;
};

}  // namespace zovk
