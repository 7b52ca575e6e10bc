#pragma once

/// Statements, ready to run.

#include "host/language/machine.h"
#include "host/language/node.h"
#include "host/language/syntax.h"
#include "host/objects/class.h"

#include <optional>

namespace host::language {

StatementPointer makeBlock(int line, BlockNode block);
StatementPointer makeEvaluate(int line, NodePointer expression);
/// `value` is of the place's type.
StatementPointer makeAssign(int line, std::unique_ptr<Place> target, NodePointer value);
/// Gives a variable a new array with elements 0 to `upperBound`; none when that is null.
StatementPointer makeNewArray(int line, std::unique_ptr<Place> variable, NodePointer upperBound);
StatementPointer makePrint(int line, NodePointer text);
StatementPointer makeRedim(int line, NodePointer array, NodePointer upperBound);

struct Branch {
    int line;
    NodePointer condition;
    BlockNode body;
};
StatementPointer makeIf(int line, std::vector<Branch> branches, BlockNode otherwise);

/// A branch is taken where one of its conditions holds; they read what `keepSubject` keeps.
struct SelectBranch {
    int line;
    NodeList conditions;
    BlockNode body;
};
StatementPointer makeSelect(int line, StatementPointer keepSubject,
                            std::vector<SelectBranch> branches, BlockNode otherwise);

/// The loop of numbers; `first` and `last` are of the variable's type, `step` is an Int64 or a
/// Double. The last number and the step are evaluated anew for every round.
struct ForParts {
    std::unique_ptr<Place> variable;
    NodePointer first;
    NodePointer last;
    NodePointer step; ///< null steps by 1
    bool downwards = false;
    BlockNode body;
};
/// Loops are told apart by an identity of the binder's making, which Exit and Continue name.
StatementPointer makeFor(int line, const void* identity, ForParts parts);
StatementPointer makeForEach(int line, const void* identity, std::unique_ptr<Place> variable,
                             NodePointer list, BlockNode body);

struct DoParts {
    NodePointer before; ///< null when there is no condition
    NodePointer after;
    bool beforeUntil = false;
    bool afterUntil = false;
    BlockNode body;
};
StatementPointer makeDo(int line, const void* identity, DoParts parts);

/// Leaves the statement to the loop with Flow::Exit or Flow::Continue.
StatementPointer makeJump(int line, Flow flow, const void* loop);
/// `value` is of the routine's result type; null returns nothing or the type's neutral value.
StatementPointer makeReturn(int line, NodePointer value, const Type& result);
StatementPointer makeRaise(int line, NodePointer exception);

struct CatchBranch {
    const Class* type = nullptr;     ///< null catches every exception
    std::unique_ptr<Place> variable; ///< may be null
    BlockNode body;
};
struct TryParts {
    BlockNode body;
    std::vector<CatchBranch> catches;
    std::optional<BlockNode> finally;
};
StatementPointer makeTry(int line, TryParts parts);

} // namespace host::language
