#pragma once

#include <string>

namespace zovk::helper {

/// Whether the machine has a device that a graphics driver works with; what the processor draws by
/// itself needs none.
bool hasGraphicsDevice();

/// The name of what draws for GL on the display that the toolkit takes; empty when there is none or
/// the driver fails. A process of its own asks, with `program`, the helper itself: a driver can
/// crash, hang, and keep much memory. Waits for five seconds at most.
/// `displays` are those to try, in order, as the toolkit takes them.
std::string rendererOf(const std::string& program, const std::string& displays);

/// Whether a renderer of that name is the processor.
bool isSoftwareRenderer(const std::string& name);

/// What that process does: writes the name to its standard output. Its exit status.
int writeRenderer(const char* displays);

/// What the helper is started with to write the name, before the displays.
constexpr const char* kWriteRenderer = "--renderer";

}  // namespace zovk::helper
