#pragma once

/// The state of a running program.

#include "host/language/node.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace host::language {

/// A Sub or Function, ready to be called.
struct RoutineNode {
    /// Parameters are the first variables.
    std::size_t variableCount = 0;
    /// As many as there are parameters when one of them is ByRef, otherwise 0.
    std::size_t referenceCount = 0;
    Type result; ///< Kind::Nothing for a Sub
    BlockNode body;
};

/// Takes text that a program writes.
using TextSink = std::function<void(std::string_view)>;

/// Thrown by Quit. No Catch and no Finally of the program sees it.
struct QuitRequest {
    int status = 0;
};

/// The variables of one call.
struct Frame {
    Frame(std::size_t variableCount, std::size_t referenceCount)
        : variables(variableCount)
        , references(referenceCount) {}

    std::vector<Value> variables;
    std::vector<Value*> references; ///< what the ByRef parameters refer to, by parameter
};

class Machine {
public:
    Machine(std::size_t globalCount, TextSink output);

    /// Runs the routine in a frame that holds its arguments. The result of a Function that returned
    /// without a value is neutral.
    Value call(const RoutineNode& routine, Frame& frame);

    /// Raises StackOverflowException when the stack has little room left.
    void checkStack() const;

    Frame& frame() { return *frame_; }
    std::vector<Value>& globals() { return main_.variables; }
    void write(std::string_view text) { output_(text); }

    int line = 0;               ///< of the statement at work
    Value result;               ///< what Return gave
    const void* loop = nullptr; ///< that an Exit or Continue leads to

private:
    Frame main_;
    Frame* frame_ = &main_;
    TextSink output_;
    const char* stackLimit_;
};

} // namespace host::language
