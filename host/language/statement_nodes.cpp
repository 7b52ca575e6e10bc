#include "host/language/statement_nodes.h"

#include "host/language/array_members.h"
#include "host/language/execution.h"
#include "host/language/operators.h"
#include "host/language/value_nodes.h"
#include "host/objects/runtime.h"

#include <new>
#include <utility>

namespace host::language {
namespace {

class BlockStatement final : public StatementNode {
public:
    BlockStatement(int line, BlockNode block)
        : StatementNode(line)
        , block_(std::move(block)) {}
    Flow execute(Machine& machine) const override { return block_.execute(machine); }

private:
    BlockNode block_;
};

class Evaluate final : public StatementNode {
public:
    Evaluate(int line, NodePointer expression)
        : StatementNode(line)
        , expression_(std::move(expression)) {}
    Flow execute(Machine& machine) const override {
        expression_->evaluate(machine);
        return Flow::Next;
    }

private:
    NodePointer expression_;
};

class Assign final : public StatementNode {
public:
    Assign(int line, std::unique_ptr<Place> target, NodePointer value)
        : StatementNode(line)
        , target_(std::move(target))
        , value_(std::move(value)) {}
    Flow execute(Machine& machine) const override {
        target_->assign(machine, value_->evaluate(machine));
        return Flow::Next;
    }

private:
    std::unique_ptr<Place> target_;
    NodePointer value_;
};

void resize(Array& array, std::int64_t upperBound) {
    if (upperBound < -1)
        raise("OutOfBoundsException", "An array's upper bound cannot be " +
                                          std::to_string(upperBound) + "; -1 makes it empty");
    if (upperBound >= maximumElementCount)
        raise("OutOfMemoryException", "An array cannot have the upper bound " +
                                          std::to_string(upperBound) + "; it can have " +
                                          std::to_string(maximumElementCount) + " elements");
    try {
        array.elements.resize(static_cast<std::size_t>(upperBound + 1),
                              neutralValue(array.elementType));
    } catch (const std::bad_alloc&) {
        raise("OutOfMemoryException",
              "There is no memory for an array with the upper bound " + std::to_string(upperBound));
    }
}

class NewArray final : public StatementNode {
public:
    NewArray(int line, std::unique_ptr<Place> variable, NodePointer upperBound)
        : StatementNode(line)
        , variable_(std::move(variable))
        , upperBound_(std::move(upperBound)) {}
    Flow execute(Machine& machine) const override {
        Value array = newArray(variable_->type().element());
        if (upperBound_) resize(*arrayOf(array), upperBound_->integer(machine));
        variable_->assign(machine, std::move(array));
        return Flow::Next;
    }

private:
    std::unique_ptr<Place> variable_;
    NodePointer upperBound_;
};

class Redim final : public StatementNode {
public:
    Redim(int line, NodePointer array, NodePointer upperBound)
        : StatementNode(line)
        , array_(std::move(array))
        , upperBound_(std::move(upperBound)) {}
    Flow execute(Machine& machine) const override {
        const std::int64_t upperBound = upperBound_->integer(machine);
        resize(ArrayAccess(*array_, machine).array(), upperBound);
        return Flow::Next;
    }

private:
    NodePointer array_;
    NodePointer upperBound_;
};

class Print final : public StatementNode {
public:
    Print(int line, NodePointer text)
        : StatementNode(line)
        , text_(std::move(text)) {}
    Flow execute(Machine& machine) const override {
        std::string line;
        if (text_) line = text_->evaluate(machine).get<StringRef>()->utf8();
        line += '\n';
        machine.execution().write(line);
        return Flow::Next;
    }

private:
    NodePointer text_;
};

class If final : public StatementNode {
public:
    If(int line, std::vector<Branch> branches, BlockNode otherwise)
        : StatementNode(line)
        , branches_(std::move(branches))
        , otherwise_(std::move(otherwise)) {}
    Flow execute(Machine& machine) const override {
        for (const Branch& branch : branches_) {
            machine.line = branch.line;
            if (branch.condition->truth(machine)) return branch.body.execute(machine);
        }
        return otherwise_.execute(machine);
    }

private:
    std::vector<Branch> branches_;
    BlockNode otherwise_;
};

class Select final : public StatementNode {
public:
    Select(int line, StatementPointer keepSubject, std::vector<SelectBranch> branches,
           BlockNode otherwise)
        : StatementNode(line)
        , keepSubject_(std::move(keepSubject))
        , branches_(std::move(branches))
        , otherwise_(std::move(otherwise)) {}
    Flow execute(Machine& machine) const override {
        keepSubject_->execute(machine);
        for (const SelectBranch& branch : branches_) {
            machine.line = branch.line;
            for (const NodePointer& condition : branch.conditions)
                if (condition->truth(machine)) return branch.body.execute(machine);
        }
        return otherwise_.execute(machine);
    }

private:
    StatementPointer keepSubject_;
    std::vector<SelectBranch> branches_;
    BlockNode otherwise_;
};

class Loop : public StatementNode {
public:
    Loop(int line, const void* identity)
        : StatementNode(line)
        , identity_(identity) {}

protected:
    /// Runs the body once. True when the loop goes on; otherwise `flow` is how it is left.
    bool runBody(Machine& machine, const BlockNode& body, Flow& flow) const {
        const Flow left = body.execute(machine);
        machine.line = line;
        const bool isLeft =
            left == Flow::Return || (left != Flow::Next && machine.loop != identity_);
        if (isLeft) flow = left;
        if (isLeft || left == Flow::Exit) return false;
        machine.endRound();
        return true;
    }

private:
    const void* identity_;
};

class IntegerFor final : public Loop {
public:
    IntegerFor(int line, const void* identity, ForParts parts)
        : Loop(line, identity)
        , parts_(std::move(parts)) {}
    Flow execute(Machine& machine) const override {
        const Kind kind = parts_.variable->type().kind;
        const Place& variable = *parts_.variable;
        variable.assign(machine, integerValue(parts_.first->integer(machine), kind));
        Flow flow = Flow::Next;
        while (true) {
            const std::int64_t step = parts_.step ? parts_.step->integer(machine) : 1;
            const std::int64_t current = variable.integer(machine);
            const bool down = parts_.downwards != (step < 0);
            const std::int64_t last = parts_.last->integer(machine);
            if (down ? isBelow(current, last, kind) : isBelow(last, current, kind)) return flow;
            if (!runBody(machine, parts_.body, flow)) return flow;
            std::int64_t next = variable.integer(machine);
            const bool overflow = parts_.downwards ? __builtin_sub_overflow(next, step, &next)
                                                   : __builtin_add_overflow(next, step, &next);
            // The loop is over where the type has no further number.
            if (overflow || wrapped(next, kind) != next) return flow;
            variable.assign(machine, integerValue(next, kind));
        }
    }

private:
    static bool isBelow(std::int64_t left, std::int64_t right, Kind kind) {
        if (kind == Kind::UInt64)
            return static_cast<std::uint64_t>(left) < static_cast<std::uint64_t>(right);
        return left < right;
    }

    ForParts parts_;
};

class NumberFor final : public Loop {
public:
    NumberFor(int line, const void* identity, ForParts parts)
        : Loop(line, identity)
        , parts_(std::move(parts)) {}
    Flow execute(Machine& machine) const override {
        const Type& type = parts_.variable->type();
        const Place& variable = *parts_.variable;
        variable.assign(machine, parts_.first->evaluate(machine));
        Flow flow = Flow::Next;
        while (true) {
            const double step = parts_.step ? parts_.step->number(machine) : 1;
            const double current = variable.number(machine);
            const bool down = parts_.downwards != (step < 0);
            const double last = parts_.last->number(machine);
            if (!(down ? current >= last : current <= last)) return flow;
            if (!runBody(machine, parts_.body, flow)) return flow;
            const double next = variable.number(machine) + (parts_.downwards ? -step : step);
            variable.assign(machine, converted(next, type));
        }
    }

private:
    ForParts parts_;
};

class ForEach final : public Loop {
public:
    ForEach(int line, const void* identity, std::unique_ptr<Place> variable, NodePointer list,
            BlockNode body)
        : Loop(line, identity)
        , variable_(std::move(variable))
        , list_(std::move(list))
        , body_(std::move(body))
        , converts_(list_->type().element() != variable_->type()) {}
    Flow execute(Machine& machine) const override {
        const Value list = list_->evaluate(machine);
        const Array* const array = arrayOf(list);
        if (!array) raise("NilObjectException", "The array is Nil");
        Flow flow = Flow::Next;
        // The body may change the array.
        for (std::size_t i = 0; i < array->elements.size(); ++i) {
            const Value& element = array->elements[i];
            variable_->assign(machine, converts_ ? converted(element, variable_->type()) : element);
            if (!runBody(machine, body_, flow)) return flow;
        }
        return flow;
    }

private:
    std::unique_ptr<Place> variable_;
    NodePointer list_;
    BlockNode body_;
    bool converts_;
};

class Do final : public Loop {
public:
    Do(int line, const void* identity, DoParts parts)
        : Loop(line, identity)
        , parts_(std::move(parts)) {}
    Flow execute(Machine& machine) const override {
        Flow flow = Flow::Next;
        while (!parts_.before || parts_.before->truth(machine) != parts_.beforeUntil) {
            if (!runBody(machine, parts_.body, flow)) return flow;
            if (parts_.after && parts_.after->truth(machine) == parts_.afterUntil) return flow;
        }
        return flow;
    }

private:
    DoParts parts_;
};

class Jump final : public StatementNode {
public:
    Jump(int line, Flow flow, const void* loop)
        : StatementNode(line)
        , flow_(flow)
        , loop_(loop) {}
    Flow execute(Machine& machine) const override {
        machine.loop = loop_;
        return flow_;
    }

private:
    Flow flow_;
    const void* loop_;
};

class Return final : public StatementNode {
public:
    Return(int line, NodePointer value, const Type& result)
        : StatementNode(line)
        , value_(std::move(value))
        , result_(result) {}
    Flow execute(Machine& machine) const override {
        machine.result = value_ ? value_->evaluate(machine) : neutralValue(result_);
        return Flow::Return;
    }

private:
    NodePointer value_;
    Type result_;
};

class Raise final : public StatementNode {
public:
    Raise(int line, NodePointer exception)
        : StatementNode(line)
        , exception_(std::move(exception)) {}
    Flow execute(Machine& machine) const override {
        ObjectRef exception = exception_->evaluate(machine).objectRef();
        if (!exception) raise("NilObjectException", "The exception to raise is Nil");
        throw Raised(std::move(exception));
    }

private:
    NodePointer exception_;
};

class Try final : public StatementNode {
public:
    Try(int line, TryParts parts)
        : StatementNode(line)
        , parts_(std::move(parts)) {}
    Flow execute(Machine& machine) const override {
        if (!parts_.finally) return executeGuarded(machine);
        Flow flow;
        try {
            flow = executeGuarded(machine);
        } catch (const Raised&) {
            const int raisedLine = machine.line;
            // Leaving the Finally block by a Return or an Exit drops the exception.
            flow = parts_.finally->execute(machine);
            if (flow != Flow::Next) return flow;
            machine.line = raisedLine;
            throw;
        }
        Value result = std::exchange(machine.result, Value());
        const void* const loop = machine.loop;
        const Flow finallyFlow = parts_.finally->execute(machine);
        if (finallyFlow != Flow::Next) return finallyFlow;
        machine.result = std::move(result);
        machine.loop = loop;
        return flow;
    }

private:
    Flow executeGuarded(Machine& machine) const {
        ObjectRef exception;
        const CatchBranch* handler = nullptr;
        try {
            return executeWithinMemory(parts_.body, machine);
        } catch (const Raised& raised) {
            handler = handlerFor(raised);
            if (!handler) throw;
            exception = raised.exception();
        }
        if (handler->variable) handler->variable->assign(machine, std::move(exception));
        exception = nullptr;
        return executeWithinMemory(handler->body, machine);
    }

    /// A program can handle that memory ran out, as it can any exception: what the block held is
    /// free again by then.
    static Flow executeWithinMemory(const BlockNode& block, Machine& machine) {
        try {
            return block.execute(machine);
        } catch (const std::bad_alloc&) {
            raise("OutOfMemoryException", "There is no memory left");
        }
    }

    const CatchBranch* handlerFor(const Raised& raised) const {
        for (const CatchBranch& handler : parts_.catches)
            if (!handler.type || isA(raised.exception().get(), handler.type)) return &handler;
        return nullptr;
    }

    TryParts parts_;
};

} // namespace

StatementPointer makeBlock(int line, BlockNode block) {
    return std::make_unique<BlockStatement>(line, std::move(block));
}

StatementPointer makeEvaluate(int line, NodePointer expression) {
    return std::make_unique<Evaluate>(line, std::move(expression));
}

StatementPointer makeAssign(int line, std::unique_ptr<Place> target, NodePointer value) {
    return std::make_unique<Assign>(line, std::move(target), std::move(value));
}

StatementPointer makeNewArray(int line, std::unique_ptr<Place> variable, NodePointer upperBound) {
    return std::make_unique<NewArray>(line, std::move(variable), std::move(upperBound));
}

StatementPointer makePrint(int line, NodePointer text) {
    return std::make_unique<Print>(line, std::move(text));
}

StatementPointer makeRedim(int line, NodePointer array, NodePointer upperBound) {
    return std::make_unique<Redim>(line, std::move(array), std::move(upperBound));
}

StatementPointer makeIf(int line, std::vector<Branch> branches, BlockNode otherwise) {
    return std::make_unique<If>(line, std::move(branches), std::move(otherwise));
}

StatementPointer makeSelect(int line, StatementPointer keepSubject,
                            std::vector<SelectBranch> branches, BlockNode otherwise) {
    return std::make_unique<Select>(line, std::move(keepSubject), std::move(branches),
                                    std::move(otherwise));
}

StatementPointer makeFor(int line, const void* identity, ForParts parts) {
    if (parts.variable->type().isInteger())
        return std::make_unique<IntegerFor>(line, identity, std::move(parts));
    return std::make_unique<NumberFor>(line, identity, std::move(parts));
}

StatementPointer makeForEach(int line, const void* identity, std::unique_ptr<Place> variable,
                             NodePointer list, BlockNode body) {
    return std::make_unique<ForEach>(line, identity, std::move(variable), std::move(list),
                                     std::move(body));
}

StatementPointer makeDo(int line, const void* identity, DoParts parts) {
    return std::make_unique<Do>(line, identity, std::move(parts));
}

StatementPointer makeJump(int line, Flow flow, const void* loop) {
    return std::make_unique<Jump>(line, flow, loop);
}

StatementPointer makeReturn(int line, NodePointer value, const Type& result) {
    return std::make_unique<Return>(line, std::move(value), result);
}

StatementPointer makeRaise(int line, NodePointer exception) {
    return std::make_unique<Raise>(line, std::move(exception));
}

StatementPointer makeTry(int line, TryParts parts) {
    return std::make_unique<Try>(line, std::move(parts));
}

} // namespace host::language
