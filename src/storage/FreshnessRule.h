#pragma once

#include "zovkpopup/platform/Clock.h"
#include "zovkpopup/platform/FileSystem.h"

namespace zovk {

/// Returns whether a file's identity may stand for its content. File times advance in steps of some
/// milliseconds: a file that has just changed could change again without a new identity. Call it
/// before the file is read, because reading takes time too.
inline bool identityIsSettled(const FileIdentity& identity, const Clock& clock) {
  constexpr double kSettledSeconds = 0.05;
  return clock.secondsSince1970() - static_cast<double>(identity.changedNanoseconds) * 1e-9 >
         kSettledSeconds;
}

}  // namespace zovk
