#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "capi/Boundary.h"

namespace zovk {

/// Structs of the C interface begin with their own size, as the game was compiled with it, and grow
/// at their end. Throws unless `size` is that of some version: it holds a member, and ends with
/// one.
template <class Struct>
void requireSizeOfSomeVersion(std::size_t size) {
  if (size >= sizeof(std::size_t) + alignof(Struct) && size % alignof(Struct) == 0) return;
  throw Fault{ZOVKPOPUP_ERROR_SIZE, {}};
}

/// The game's struct as the library knows it: members that it lacks are zero.
template <class Struct>
Struct readSized(const Struct& given) {
  requireSizeOfSomeVersion<Struct>(given.size);
  Struct known{};
  std::memcpy(&known, &given, std::min(given.size, sizeof known));
  return known;
}

/// Gives the game as much of `known` as its struct has room for. Its size stays.
template <class Struct>
void writeSized(Struct& given, Struct known) {
  requireSizeOfSomeVersion<Struct>(given.size);
  known.size = given.size;
  std::memcpy(&given, &known, std::min(given.size, sizeof known));
}

}  // namespace zovk
