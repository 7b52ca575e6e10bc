#pragma once

/// The arguments of the rbhost command.

#include "host/objects/runtime.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace host::language {

struct CommandLine {
    enum class Command { Help, Run, List };

    Command command = Command::Help;
    Options options;
    /// Files to load in place of the built parts; none loads those.
    std::vector<std::string> plugins;
    std::string file;                   ///< of Run
    std::vector<std::string> arguments; ///< of the program
    std::string className;              ///< of List; empty for every class
};

/// `arguments` is without the command's own name. Nothing when they make no sense; `error` then
/// says why. Options stand before the program's file: what follows it belongs to the program.
std::optional<CommandLine> parseCommandLine(std::span<const std::string> arguments,
                                            std::string& error);

std::string_view helpText();

} // namespace host::language
