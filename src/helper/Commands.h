#pragma once

#include <functional>
#include <map>
#include <string>

#include "helper/Arguments.h"

namespace zovk::helper {

class Program;

/// The effect of each type of command. Every command reads all of its arguments before it changes
/// anything.
using CommandTable =
    std::map<std::string, std::function<void(Program&, const Arguments&)>, std::less<>>;

void addWindowCommands(CommandTable& table);
void addViewCommands(CommandTable& table);
void addLayoutCommands(CommandTable& table);
void addWebCommands(CommandTable& table);

}  // namespace zovk::helper
