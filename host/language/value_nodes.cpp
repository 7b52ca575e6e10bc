#include "host/language/value_nodes.h"

#include "host/language/machine.h"
#include "host/language/operators.h"
#include "host/objects/runtime.h"

#include <string>
#include <utility>

namespace host::language {
namespace {

class Literal final : public Node {
public:
    Literal(Value value, const Type& type)
        : Node(type)
        , value_(std::move(value))
        , integer_(integerBits(value_))
        , number_(value_.toDouble()) {}

    Value evaluate(Machine&) const override { return value_; }
    std::int64_t integer(Machine&) const override { return integer_; }
    double number(Machine&) const override { return number_; }
    const Value* constant() const override { return &value_; }
    const Value* peek(Machine&) const override { return &value_; }

private:
    Value value_;
    std::int64_t integer_;
    double number_;
};

class VariableReference final : public Place::Reference {
public:
    explicit VariableReference(Value& variable)
        : variable_(variable) {}
    Value* variable() override { return &variable_; }

private:
    Value& variable_;
};

struct InFrame {
    static Value& find(Machine& machine, std::size_t slot) {
        return machine.frame().variables[slot];
    }
};
struct InMain {
    static Value& find(Machine& machine, std::size_t slot) { return machine.globals()[slot]; }
};
struct InCaller {
    static Value& find(Machine& machine, std::size_t slot) {
        return *machine.frame().references[slot];
    }
};

template <typename Where>
class Variable final : public Place {
public:
    Variable(std::size_t slot, const Type& type)
        : Place(type)
        , slot_(slot) {}

    Value evaluate(Machine& machine) const override { return Where::find(machine, slot_); }
    std::int64_t integer(Machine& machine) const override {
        return integerBits(Where::find(machine, slot_));
    }
    double number(Machine& machine) const override {
        const Value& value = Where::find(machine, slot_);
        const auto* number = value.template get<double>();
        return number ? *number : value.toDouble();
    }
    bool truth(Machine& machine) const override { return Where::find(machine, slot_).toBoolean(); }
    const Value* peek(Machine& machine) const override { return &Where::find(machine, slot_); }
    /// The old value goes only when the new one is in its place: its destructors may look.
    void assign(Machine& machine, Value value) const override {
        std::swap(Where::find(machine, slot_), value);
    }
    bool canBeReferenced() const override { return true; }
    std::unique_ptr<Reference> reference(Machine& machine) const override {
        return std::make_unique<VariableReference>(Where::find(machine, slot_));
    }

private:
    std::size_t slot_;
};

/// The element is written back after the call, if the array still has it.
class ElementReference final : public Place::Reference {
public:
    ElementReference(Value array, std::int64_t index, Value element)
        : array_(std::move(array))
        , index_(static_cast<std::size_t>(index))
        , element_(std::move(element)) {}
    Value* variable() override { return &element_; }
    void finish() override {
        std::vector<Value>& elements = arrayOf(array_)->elements;
        if (index_ < elements.size()) elements[index_] = element_;
    }

private:
    Value array_;
    std::size_t index_;
    Value element_;
};

class Element final : public Place {
public:
    Element(NodePointer array, NodePointer index)
        : Place(array->type().element())
        , array_(std::move(array))
        , index_(std::move(index)) {}

    Value evaluate(Machine& machine) const override {
        const std::int64_t index = index_->integer(machine);
        const ArrayAccess access(*array_, machine);
        return elementAt(access.array(), index);
    }
    std::int64_t integer(Machine& machine) const override {
        const std::int64_t index = index_->integer(machine);
        const ArrayAccess access(*array_, machine);
        return integerBits(elementAt(access.array(), index));
    }
    void assign(Machine& machine, Value value) const override {
        const std::int64_t index = index_->integer(machine);
        const ArrayAccess access(*array_, machine);
        std::swap(elementAt(access.array(), index), value);
    }
    bool canBeReferenced() const override { return true; }
    std::unique_ptr<Reference> reference(Machine& machine) const override {
        const std::int64_t index = index_->integer(machine);
        const ArrayAccess access(*array_, machine);
        return std::make_unique<ElementReference>(access.value(), index,
                                                  elementAt(access.array(), index));
    }

private:
    NodePointer array_;
    NodePointer index_;
};

class Conversion final : public Node {
public:
    Conversion(NodePointer node, const Type& type)
        : Node(type)
        , node_(std::move(node)) {}
    Value evaluate(Machine& machine) const override {
        return converted(node_->evaluate(machine), type());
    }

private:
    NodePointer node_;
};

class IntegerToInteger final : public Node {
public:
    IntegerToInteger(NodePointer node, Kind kind)
        : Node(kind)
        , node_(std::move(node)) {}
    Value evaluate(Machine& machine) const override {
        return integerValue(node_->integer(machine), type().kind);
    }
    std::int64_t integer(Machine& machine) const override {
        return wrapped(node_->integer(machine), type().kind);
    }
    double number(Machine& machine) const override { return evaluate(machine).toDouble(); }

private:
    NodePointer node_;
};

class ToDouble final : public Node {
public:
    explicit ToDouble(NodePointer node)
        : Node(Kind::Double)
        , node_(std::move(node)) {}
    Value evaluate(Machine& machine) const override { return node_->number(machine); }
    double number(Machine& machine) const override { return node_->number(machine); }

private:
    NodePointer node_;
};

/// References pass as they are where the type allows every value of the node.
bool isFreeConversion(const Type& from, const Type& to) {
    if (from == to || (to.kind == Kind::Variant && !to.isArray)) return true;
    if (from.kind == Kind::Nil) return to.isReference();
    return from.kind == Kind::Object && to.kind == Kind::Object && !from.isArray && !to.isArray;
}

} // namespace

NodePointer makeLiteral(Value value, const Type& type) {
    return std::make_unique<Literal>(std::move(value), type);
}

NodePointer makeLiteral(Value value) {
    const Type type = value.type();
    return makeLiteral(std::move(value), type);
}

std::unique_ptr<Place> makeVariable(Storage storage, std::size_t slot, const Type& type) {
    switch (storage) {
    case Storage::Local:
        return std::make_unique<Variable<InFrame>>(slot, type);
    case Storage::Global:
        return std::make_unique<Variable<InMain>>(slot, type);
    case Storage::Reference:
        return std::make_unique<Variable<InCaller>>(slot, type);
    }
    return nullptr;
}

std::unique_ptr<Place> makeElement(NodePointer array, NodePointer index) {
    return std::make_unique<Element>(std::move(array), std::move(index));
}

NodePointer makeConversion(NodePointer node, const Type& type) {
    const Type from = node->type();
    if (isFreeConversion(from, type)) return node;
    if (const Value* constant = node->constant())
        return makeLiteral(converted(*constant, type), type);
    if (from.isInteger() && type.isInteger())
        return std::make_unique<IntegerToInteger>(std::move(node), type.kind);
    if (from.isNumber() && type == Type(Kind::Double))
        return std::make_unique<ToDouble>(std::move(node));
    return std::make_unique<Conversion>(std::move(node), type);
}

ArrayAccess::ArrayAccess(const Node& node, Machine& machine)
    : value_(node.peek(machine)) {
    if (!value_) {
        kept_ = node.evaluate(machine);
        value_ = &kept_;
    }
    array_ = arrayOf(*value_);
    if (!array_) raise("NilObjectException", "The array is Nil");
}

Value& elementAt(Array& array, std::int64_t index) {
    if (index >= 0 && static_cast<std::uint64_t>(index) < array.elements.size())
        return array.elements[static_cast<std::size_t>(index)];
    const std::string text = std::to_string(index);
    if (array.elements.empty())
        raise("OutOfBoundsException", "The index is " + text + ", but the array is empty");
    raise("OutOfBoundsException", "The index is " + text +
                                      ", but the array has the elements 0 to " +
                                      std::to_string(array.upperBound()));
}

} // namespace host::language
