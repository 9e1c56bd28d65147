#pragma once

#include <string>

namespace zovk::helper {

/// Returns whether the machine has a device for a graphics driver. Software rendering needs none.
bool hasGraphicsDevice();
/// Returns whether one of the devices in that folder is for a graphics driver.
bool holdsGraphicsDevice(const std::string& devices);

/// Returns the name of the GL renderer on the display that the toolkit uses; empty if there is none
/// or the driver fails. A separate process asks, with `program`, which is the helper itself,
/// because a driver can crash, hang, and keep much memory. Waits for at most five seconds.
/// `displays` are those to try, in order, in the toolkit's form.
std::string rendererOf(const std::string& program, const std::string& displays);

/// Returns whether the renderer of that name is the processor.
bool isSoftwareRenderer(const std::string& name);

/// The work of that process: writes the name to its standard output. Returns its exit status.
int writeRenderer(const char* displays);

/// The helper's argument for writing the name, before the displays.
constexpr const char* kWriteRenderer = "--renderer";

}  // namespace zovk::helper
