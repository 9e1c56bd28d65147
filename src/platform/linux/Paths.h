#pragma once

#include <optional>
#include <string>

namespace zovk {

/// The path of the program that runs; empty when the system does not tell.
std::string programPath();

/// The path as one from the root, without dots and without a trailing slash.
std::string absolutePath(const std::string& path);

/// Finds what was installed with the library: `relativePath` is looked for in the directory of the
/// library, or of the program it is linked into, and in those above it, a few levels up. Any
/// thread.
std::optional<std::string> findNearLibrary(const std::string& relativePath);

}  // namespace zovk
