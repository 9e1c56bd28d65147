#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "capi/Boundary.h"

namespace zovk {

/// Structs of the C interface begin with their own size, as the game was compiled with it, and grow
/// at their end. Throws unless `size` fits a version of the struct: it must hold at least one
/// member, and end with one.
template <class Struct>
void requireSizeOfSomeVersion(std::size_t size) {
  if (size >= sizeof(std::size_t) + alignof(Struct) && size % alignof(Struct) == 0) return;
  throw Fault{ZOVKPOPUP_ERROR_SIZE, {}};
}

/// Returns the game's struct as the library knows it. Missing members are zero.
template <class Struct>
Struct readSized(const Struct& given) {
  requireSizeOfSomeVersion<Struct>(given.size);
  Struct known{};
  std::memcpy(&known, &given, std::min(given.size, sizeof known));
  return known;
}

/// Copies as much of `known` as the game's struct has room for. Keeps the struct's size.
template <class Struct>
void writeSized(Struct& given, Struct known) {
  requireSizeOfSomeVersion<Struct>(given.size);
  known.size = given.size;
  std::memcpy(&given, &known, std::min(given.size, sizeof known));
}

}  // namespace zovk
