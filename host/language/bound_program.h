#pragma once

/// A whole program whose names are resolved, ready to run.

#include "host/language/functions.h"
#include "host/language/machine.h"
#include "host/objects/class.h"

#include <memory>
#include <vector>

namespace host::language {

/// A Sub or Function of the program. Its overloads are told apart like those of any method.
struct BoundRoutine {
    Method method; ///< the signature only
    RoutineNode node;
};

/// The variables that every program has, by slot.
enum PredefinedVariable : std::size_t {
    ArgumentsVariable, ///< `Arguments`, a String()
    StdErrVariable,    ///< `StdErr`
    AppVariable,       ///< `App`, the application
    PredefinedVariableCount,
};

struct BoundProgram {
    FunctionLibrary functions;
    std::vector<std::unique_ptr<BoundRoutine>> routines;
    /// Of the variables that routines can name; they are neutral until their Dim is reached.
    std::vector<std::pair<std::size_t, Type>> globals;
    std::size_t globalCount = 0;
    BlockNode main;
};

} // namespace host::language
