#include "host/language/program.h"
#include "support/host.h"

Host::Outcome Host::run(std::string_view source, std::vector<std::string> arguments) {
    Outcome outcome;
    const host::language::RunResult result = host::language::runProgram(
        source, {.arguments = std::move(arguments),
                 .output = [&](std::string_view text) { outcome.output += text; },
                 .errorOutput = [&](std::string_view text) { outcome.error += text; }});
    outcome.status = result.status;
    if (result.error) outcome.error += result.error->text("program.bas") + "\n";
    return outcome;
}
