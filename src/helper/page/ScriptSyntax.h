#pragma once

namespace zovk::helper {

/// Checks whether scripts can be parsed, without running them and without a display. Reads a JSON
/// array of {"text", "line", "module"} from the file `scripts`, and writes to the file `faults` an
/// array with null for each good script and {"line", "message"} for each other one. Returns the
/// exit status of the program: 0, or 1 if a file cannot be read or written.
int checkScripts(const char* scripts, const char* faults);

/// The helper's argument for this, before the two files.
constexpr const char* kCheckScripts = "--check-scripts";

}  // namespace zovk::helper
