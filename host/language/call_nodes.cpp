#include "host/language/call_nodes.h"

#include "host/language/execution.h"
#include "host/language/operators.h"
#include "host/language/value_nodes.h"
#include "host/objects/runtime.h"
#include "host/objects/thread.h"

#include <utility>

namespace host::language {
namespace {

std::vector<Value> evaluateAll(const NodeList& nodes, Machine& machine) {
    std::vector<Value> values;
    values.reserve(nodes.size());
    for (const NodePointer& node : nodes)
        values.push_back(node->evaluate(machine));
    return values;
}

class RoutineCall final : public Node {
public:
    RoutineCall(const RoutineNode& routine, ArgumentList arguments, std::vector<bool> isReference)
        : Node(routine.result)
        , routine_(routine)
        , arguments_(std::move(arguments))
        , isReference_(std::move(isReference)) {}

    Value evaluate(Machine& machine) const override {
        Frame frame(routine_.variableCount, routine_.referenceCount);
        if (routine_.referenceCount == 0) {
            for (std::size_t i = 0; i < arguments_.size(); ++i)
                frame.variables[i] = arguments_[i]->evaluate(machine);
            return machine.call(routine_, frame);
        }
        std::vector<std::unique_ptr<Place::Reference>> references;
        for (std::size_t i = 0; i < arguments_.size(); ++i) {
            if (!isReference_[i]) {
                frame.variables[i] = arguments_[i]->evaluate(machine);
                continue;
            }
            const auto& place = static_cast<const Place&>(*arguments_[i]);
            references.push_back(place.reference(machine));
            frame.references[i] = references.back()->variable();
        }
        Value result = machine.call(routine_, frame);
        for (const auto& reference : references)
            reference->finish();
        return result;
    }

private:
    const RoutineNode& routine_;
    ArgumentList arguments_;
    std::vector<bool> isReference_;
};

class DelegateNode final : public Node {
public:
    DelegateNode(const RoutineNode& routine, bool takesThread)
        : Node(Type::object("Delegate"))
        , routine_(routine)
        , takesThread_(takesThread) {}

    Value evaluate(Machine& machine) const override {
        return newDelegate([this, &execution = machine.execution()](const ObjectRef& thread) {
            execution.perform([&](Machine& inThread) {
                Frame frame(routine_.variableCount, routine_.referenceCount);
                if (takesThread_) frame.variables[0] = thread;
                inThread.call(routine_, frame);
            });
        });
    }

private:
    const RoutineNode& routine_;
    bool takesThread_;
};

class FunctionCall final : public Node {
public:
    FunctionCall(const Method& function, ArgumentList arguments)
        : Node(function.signature.result)
        , function_(function)
        , arguments_(std::move(arguments)) {}

    Value evaluate(Machine& machine) const override {
        std::vector<Value> arguments = evaluateAll(arguments_, machine);
        return function_.body(nullptr, arguments);
    }

private:
    const Method& function_;
    ArgumentList arguments_;
};

class MethodCall final : public Node {
public:
    MethodCall(const Method& method, NodePointer object, ArgumentList arguments)
        : Node(method.signature.result)
        , method_(method)
        , object_(std::move(object))
        , arguments_(std::move(arguments)) {
        for (std::size_t i = 0; i < arguments_.size(); ++i)
            if (method.signature.parameters[i].isByRef) byReference_.push_back(i);
    }

    Value evaluate(Machine& machine) const override {
        const Value target = object_ ? object_->evaluate(machine) : Value(nullptr);
        std::vector<Value> arguments = evaluateAll(arguments_, machine);
        Runtime& runtime = Runtime::current();
        if (byReference_.empty()) return runtime.call(method_, target.object(), arguments);
        std::vector<std::unique_ptr<Place::Reference>> references;
        for (const std::size_t i : byReference_)
            references.push_back(static_cast<const Place&>(*arguments_[i]).reference(machine));
        Value result = runtime.call(method_, target.object(), arguments);
        for (std::size_t i = 0; i < references.size(); ++i) {
            *references[i]->variable() = std::move(arguments[byReference_[i]]);
            references[i]->finish();
        }
        return result;
    }

private:
    const Method& method_;
    NodePointer object_;
    ArgumentList arguments_;
    std::vector<std::size_t> byReference_;
};

class PropertyPlace final : public Place {
public:
    PropertyPlace(const Property& property, NodePointer object)
        : Place(property.type)
        , property_(property)
        , object_(std::move(object)) {}

    Value evaluate(Machine& machine) const override {
        const Value target = evaluateTarget(machine);
        return Runtime::current().get(property_, target.object());
    }
    void assign(Machine& machine, Value value) const override {
        const Value target = evaluateTarget(machine);
        Runtime::current().set(property_, target.object(), value);
    }

private:
    Value evaluateTarget(Machine& machine) const {
        return object_ ? object_->evaluate(machine) : Value(nullptr);
    }

    const Property& property_;
    NodePointer object_;
};

class VariantView final : public Node {
public:
    VariantView(const Property& property, NodePointer variant)
        : Node(property.type)
        , property_(property)
        , variant_(std::move(variant)) {}

    Value evaluate(Machine& machine) const override {
        const ObjectRef box = boxed(variant_->evaluate(machine));
        return property_.get(box.get());
    }

private:
    const Property& property_;
    NodePointer variant_;
};

class NewObject final : public Node {
public:
    NewObject(const Class& type, const Method* constructor, ArgumentList arguments)
        : Node(Type::object(type.name()))
        , class_(type)
        , constructor_(constructor)
        , arguments_(std::move(arguments)) {}

    Value evaluate(Machine& machine) const override {
        std::vector<Value> arguments = evaluateAll(arguments_, machine);
        Runtime& runtime = Runtime::current();
        ObjectRef object = runtime.newInstance(class_);
        runtime.throwPending();
        if (!object) raise("OutOfMemoryException", "No instance of " + class_.name() + " was made");
        if (constructor_) runtime.call(*constructor_, object.get(), arguments);
        return object;
    }

private:
    const Class& class_;
    const Method* constructor_;
    ArgumentList arguments_;
};

class Cast final : public Node {
public:
    Cast(const Class& type, NodePointer object)
        : Node(Type::object(type.name()))
        , class_(type)
        , object_(std::move(object)) {}

    Value evaluate(Machine& machine) const override {
        Value value = object_->evaluate(machine);
        if (value.isNil() || isA(value.object(), &class_)) return value;
        raise("IllegalCastException", value.type().name() + " cannot be cast to " + class_.name());
    }

private:
    const Class& class_;
    NodePointer object_;
};

class IsANode final : public Node {
public:
    IsANode(const Class& type, NodePointer object)
        : Node(Kind::Boolean)
        , class_(type)
        , object_(std::move(object)) {}

    Value evaluate(Machine& machine) const override {
        const Value value = object_->evaluate(machine);
        return isA(value.object(), &class_);
    }

private:
    const Class& class_;
    NodePointer object_;
};

class ArrayCall final : public Node {
public:
    ArrayCall(const Type& result, ArrayBody body, NodePointer array, ArgumentList arguments)
        : Node(result)
        , body_(body)
        , array_(std::move(array))
        , arguments_(std::move(arguments)) {}

    Value evaluate(Machine& machine) const override {
        std::vector<Value> arguments = evaluateAll(arguments_, machine);
        const ArrayAccess access(*array_, machine);
        return body_(access.array(), arguments);
    }

private:
    ArrayBody body_;
    NodePointer array_;
    ArgumentList arguments_;
};

class UpperBound final : public Node {
public:
    explicit UpperBound(NodePointer array)
        : Node(Type::integer())
        , array_(std::move(array)) {}

    Value evaluate(Machine& machine) const override {
        return integerValue(integer(machine), type().kind);
    }
    std::int64_t integer(Machine& machine) const override {
        return ArrayAccess(*array_, machine).array().upperBound();
    }

private:
    NodePointer array_;
};

class ArrayOf final : public Node {
public:
    ArrayOf(const Type& elementType, ArgumentList elements)
        : Node(elementType.array())
        , elements_(std::move(elements)) {}

    Value evaluate(Machine& machine) const override {
        std::vector<Value> elements = evaluateAll(elements_, machine);
        ObjectRef object = newArray(type().element());
        arrayOf(object)->elements = std::move(elements);
        return object;
    }

private:
    ArgumentList elements_;
};

} // namespace

NodePointer makeRoutineCall(const RoutineNode& routine, ArgumentList arguments,
                            std::vector<bool> isReference) {
    return std::make_unique<RoutineCall>(routine, std::move(arguments), std::move(isReference));
}

NodePointer makeDelegate(const RoutineNode& routine, bool takesThread) {
    return std::make_unique<DelegateNode>(routine, takesThread);
}

NodePointer makeFunctionCall(const Method& function, ArgumentList arguments) {
    return std::make_unique<FunctionCall>(function, std::move(arguments));
}

NodePointer makeMethodCall(const Method& method, NodePointer object, ArgumentList arguments) {
    return std::make_unique<MethodCall>(method, std::move(object), std::move(arguments));
}

std::unique_ptr<Place> makeProperty(const Property& property, NodePointer object) {
    return std::make_unique<PropertyPlace>(property, std::move(object));
}

NodePointer makeVariantView(const Property& property, NodePointer variant) {
    return std::make_unique<VariantView>(property, std::move(variant));
}

NodePointer makeNew(const Class& type, const Method* constructor, ArgumentList arguments) {
    return std::make_unique<NewObject>(type, constructor, std::move(arguments));
}

NodePointer makeCast(const Class& type, NodePointer object) {
    return std::make_unique<Cast>(type, std::move(object));
}

NodePointer makeIsA(const Class& type, NodePointer object) {
    return std::make_unique<IsANode>(type, std::move(object));
}

NodePointer makeArrayCall(const Type& result, ArrayBody body, NodePointer array,
                          ArgumentList arguments) {
    return std::make_unique<ArrayCall>(result, body, std::move(array), std::move(arguments));
}

NodePointer makeUpperBound(NodePointer array) {
    return std::make_unique<UpperBound>(std::move(array));
}

NodePointer makeArray(const Type& elementType, ArgumentList elements) {
    return std::make_unique<ArrayOf>(elementType, std::move(elements));
}

} // namespace host::language
