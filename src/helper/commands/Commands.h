#pragma once

#include <functional>
#include <map>
#include <string_view>

#include "helper/commands/Arguments.h"

namespace zovk::helper {

class Program;

/// The effect of each type of command. Every command reads all of its arguments before it changes
/// anything.
using CommandTable = std::map<std::string_view, std::function<void(Program&, const Arguments&)>>;

void addWindowCommands(CommandTable& table);
void addViewCommands(CommandTable& table);
void addLayoutCommands(CommandTable& table);
void addWebCommands(CommandTable& table);

}  // namespace zovk::helper
