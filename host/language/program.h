#pragma once

/// Programs in the host's language: their text is compiled against the classes of the running host,
/// then run.

#include "host/language/machine.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace host::language {

struct BoundProgram;

/// Why a program could not be compiled, or ended early.
struct ProgramError {
    int line = 0;          ///< counted from 1
    std::string className; ///< of the exception that ended the program, or "SyntaxError"
    std::string message;

    /// `file:line: class: message`
    std::string text(std::string_view file) const;
};

struct RunOptions {
    std::vector<std::string> arguments = {}; ///< in UTF-8
    TextSink output = {};      ///< takes what the program prints, line by line; empty drops it
    TextSink errorOutput = {}; ///< takes what it writes to StdErr
};

struct RunResult {
    int status = 0; ///< 0, what Quit was given, 1 for an exception, 2 for a syntax error
    std::optional<ProgramError> error;
};

class Program {
public:
    Program(Program&&) noexcept;
    Program& operator=(Program&&) noexcept;
    ~Program();

    /// Nothing when the text is no program; `error` then says why.
    static std::optional<Program> compile(std::string_view source, ProgramError& error);

    /// Every reference that the run took is given back when it returns. The program itself keeps
    /// strings of its own for as long as it lives.
    RunResult run(const RunOptions& options = {}) const;

private:
    explicit Program(std::unique_ptr<BoundProgram> bound);

    std::unique_ptr<BoundProgram> bound_;
};

/// Compiles and runs.
RunResult runProgram(std::string_view source, const RunOptions& options = {});

} // namespace host::language
