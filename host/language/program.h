#pragma once

/// Programs in the host's language: their text is compiled against the classes of the running host,
/// then run.

#include "host/language/execution.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace host::language {

struct BoundProgram;

struct RunOptions {
    std::vector<std::string> arguments = {}; ///< in UTF-8
    TextSink output = {};      ///< takes what the program prints, line by line; empty drops it
    TextSink errorOutput = {}; ///< takes what it writes to StdErr
};

class Program {
public:
    Program(Program&&) noexcept;
    Program& operator=(Program&&) noexcept;
    ~Program();

    /// Nothing when the text is no program; `error` then says why.
    static std::optional<Program> compile(std::string_view source, ProgramError& error);

    /// Returns when all of its threads have ended. Every reference that the run took is given back
    /// then. The program itself keeps
    /// strings of its own for as long as it lives.
    RunResult run(const RunOptions& options = {}) const;

private:
    explicit Program(std::unique_ptr<BoundProgram> bound);

    std::unique_ptr<BoundProgram> bound_;
};

/// Compiles and runs.
RunResult runProgram(std::string_view source, const RunOptions& options = {});

} // namespace host::language
