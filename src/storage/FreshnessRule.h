#pragma once

#include "zovkpopup/platform/Clock.h"
#include "zovkpopup/platform/FileSystem.h"

namespace zovk {

/// Whether a file's identity may stand for its content. File times move in steps of some
/// milliseconds: a file that changed only now could change again without a new identity. To be
/// asked before the file is read, since reading takes time too.
inline bool identityIsSettled(const FileIdentity& identity, const Clock& clock) {
  constexpr double kSettledSeconds = 0.05;
  return clock.secondsSince1970() - static_cast<double>(identity.changedNanoseconds) * 1e-9 >
         kSettledSeconds;
}

}  // namespace zovk
