#pragma once

/// A program while it runs: what its threads share, and how it ends.

#include "host/language/machine.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace host::language {

/// Takes text that a program writes.
using TextSink = std::function<void(std::string_view)>;

/// Why a program could not be compiled, or ended early.
struct ProgramError {
    int line = 0;          ///< counted from 1
    std::string className; ///< of the exception that ended the program, or "SyntaxError"
    std::string message;

    /// `file:line: class: message`
    std::string text(std::string_view file) const;
};

struct RunResult {
    int status = 0; ///< 0, what Quit was given, 1 for an exception, 2 for a syntax error
    std::optional<ProgramError> error;
};

class Execution {
public:
    Execution(std::size_t globalCount, TextSink output)
        : globals_(globalCount, 0)
        , output_(std::move(output)) {}

    Frame& globals() { return globals_; }
    void write(std::string_view text) { output_(text); }

    /// Does the work of a thread, on that thread. A Quit or an exception that the work lets out
    /// ends all threads; the first of them is the program's result.
    void perform(const std::function<void(Machine& machine)>& work);

    const RunResult& result() const { return result_; }

private:
    void end(RunResult result);

    Frame globals_;
    TextSink output_;
    RunResult result_;
};

} // namespace host::language
