#pragma once

/// A program as it runs: a tree whose names, types and overloads are resolved.

#include "host/objects/value.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace host::language {

class Machine;

/// An expression. What it evaluates to is a value of its type.
class Node {
public:
    explicit Node(Type type)
        : type_(std::move(type)) {}
    virtual ~Node() = default;
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;

    const Type& type() const { return type_; }

    virtual Value evaluate(Machine& machine) const = 0;

    // The same without a Value in between, for the types that these suit. Nodes of numbers and
    // Booleans override what they can answer faster.

    /// Of a UInt64, its bits.
    virtual std::int64_t integer(Machine& machine) const;
    virtual double number(Machine& machine) const;
    virtual bool truth(Machine& machine) const;

    /// Where the value is kept already; null when it has to be made. Good until the program goes
    /// on.
    virtual const Value* peek(Machine&) const { return nullptr; }
    /// The value of a node that is the same whenever it is evaluated.
    virtual const Value* constant() const { return nullptr; }

private:
    Type type_;
};

using NodePointer = std::unique_ptr<Node>;
using NodeList = std::vector<NodePointer>;

/// The integer of these bits in an integer type.
Value integerValue(std::int64_t bits, Kind kind);
/// The bits of an integer value.
std::int64_t integerBits(const Value& value);

/// Something that can be assigned to.
class Place : public Node {
public:
    using Node::Node;

    /// Takes a value of the place's type.
    virtual void assign(Machine& machine, Value value) const = 0;

    /// What a ByRef parameter refers to while a call runs.
    class Reference {
    public:
        virtual ~Reference() = default;
        virtual Value* variable() = 0;
        /// Called when the call returned.
        virtual void finish() {}
    };
    /// Null when the place cannot be passed ByRef.
    virtual std::unique_ptr<Reference> reference(Machine&) const { return nullptr; }
    virtual bool canBeReferenced() const { return false; }
};

/// How a statement was left.
enum class Flow { Next, Exit, Continue, Return };

class StatementNode {
public:
    explicit StatementNode(int line)
        : line(line) {}
    virtual ~StatementNode() = default;
    StatementNode(const StatementNode&) = delete;
    StatementNode& operator=(const StatementNode&) = delete;

    virtual Flow execute(Machine& machine) const = 0;

    const int line;
};

using StatementPointer = std::unique_ptr<StatementNode>;

/// Statements and the variables that live as long as one run through them.
struct BlockNode {
    std::vector<StatementPointer> statements;
    std::size_t firstVariable = 0;
    std::size_t variableCount = 0;

    Flow execute(Machine& machine) const;

private:
    Flow executeStatements(Machine& machine) const;
};

} // namespace host::language
