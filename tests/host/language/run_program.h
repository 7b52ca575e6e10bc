#pragma once

#include "host/language/program.h"
#include "tests/support/host.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// What a program did in a host of its own without plug-ins, which checks that every reference was
/// given back.
struct Ran {
    int status = 0;
    std::string output;
    std::string errorOutput;
    std::string error; ///< "line: class: message", empty when there was none
};

inline Ran runInHost(std::string_view source, std::vector<std::string> arguments = {}) {
    Ran ran;
    host::language::RunOptions options;
    options.arguments = std::move(arguments);
    options.output = [&](std::string_view text) { ran.output += text; };
    options.errorOutput = [&](std::string_view text) { ran.errorOutput += text; };
    const host::language::RunResult result = host::language::runProgram(source, options);
    ran.status = result.status;
    if (result.error)
        ran.error = std::to_string(result.error->line) + ": " + result.error->className + ": " +
                    result.error->message;
    return ran;
}

inline Ran run(std::string_view source, std::vector<std::string> arguments = {}) {
    Host host{{.bare = true}};
    return runInHost(source, std::move(arguments));
}

/// The output, or the error when there was one.
inline std::string outputOf(std::string_view source) {
    const Ran ran = run(source);
    return ran.error.empty() ? ran.output : ran.error;
}
