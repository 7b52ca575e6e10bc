#pragma once

/// How a program runs.

#include "host/language/node.h"
#include "host/threads/scheduler.h"

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

/// Thrown by Quit. No Catch and no Finally of the program sees it.
struct QuitRequest {
    int status = 0;
};
/// Thrown in a thread that shall end. No Catch and no Finally sees it either.
struct EndRequest {};

/// The variables of one call.
struct Frame {
    Frame(std::size_t variableCount, std::size_t referenceCount)
        : variables(variableCount)
        , references(referenceCount) {}

    std::vector<Value> variables;
    std::vector<Value*> references; ///< what the ByRef parameters refer to, by parameter
};

class Execution;

/// The state of one thread of a running program, on that thread.
class Machine {
public:
    explicit Machine(Execution& execution);

    /// Runs the routine in a frame that holds its arguments. The result of a Function that returned
    /// without a value is neutral.
    Value call(const RoutineNode& routine, Frame& frame);

    /// Raises StackOverflowException when the stack has little room left.
    void checkStack() const;

    /// Throws EndRequest when the thread shall end. Asked before each statement.
    void checkEnd() const {
        if (thread_.isEnding()) throw EndRequest();
    }
    /// At the end of each round of a loop: other threads may have a turn then.
    void endRound() const {
        scheduler_.yieldAfterTurn();
        checkEnd();
    }

    Execution& execution() { return execution_; }
    Frame& frame() { return *frame_; }
    std::vector<Value>& globals() { return globals_.variables; }

    int line = 0;               ///< of the statement at work
    Value result;               ///< what Return gave
    const void* loop = nullptr; ///< that an Exit or Continue leads to

private:
    Execution& execution_;
    Frame& globals_;
    Frame* frame_ = &globals_;
    Scheduler& scheduler_;
    const HostThread& thread_;
    const char* stackLimit_;
};

} // namespace host::language
