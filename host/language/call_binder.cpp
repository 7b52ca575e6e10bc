#include "host/language/array_members.h"
#include "host/language/binder.h"
#include "host/language/call_nodes.h"
#include "host/objects/runtime.h"

#include <algorithm>
#include <utility>

namespace host::language {
namespace {

std::string typesOf(const NodeList& arguments) {
    std::string text;
    for (const NodePointer& argument : arguments)
        text += (text.empty() ? "" : ", ") + argument->type().name();
    return "(" + text + ")";
}

std::vector<Type> typeList(const NodeList& arguments) {
    std::vector<Type> types;
    for (const NodePointer& argument : arguments)
        types.push_back(argument->type());
    return types;
}

/// The type that all the elements convert to without loss: numbers to a wider number, objects of
/// several classes to Object, the rest to Variant.
Type commonElementType(const NodeList& elements) {
    Type common = elements.front()->type();
    for (const NodePointer& element : elements) {
        const Type& type = element->type();
        if (type == common) continue;
        if (common.kind == Kind::Nil && type.isReference())
            common = type;
        else if (type.kind == Kind::Nil && common.isReference())
            continue;
        else if (type.isInteger() && common.isInteger())
            common = Kind::Int64;
        else if (type.isNumber() && common.isNumber())
            common = Kind::Double;
        else if (type.kind == Kind::Object && common.kind == Kind::Object && !type.isArray)
            common = Type::object("Object");
        else
            return Kind::Variant;
    }
    return common.kind == Kind::Nil || common.isArray ? Type(Kind::Variant) : common;
}

/// `image.representations(0)` is an element of the array that the method without arguments gives:
/// that method; null when the arguments are meant for the method.
const Method* arrayGetter(std::span<const Method* const> candidates, const NodeList& arguments) {
    if (arguments.size() != 1 || selectOverload(candidates, typeList(arguments))) return nullptr;
    const Method* const plain = selectOverload(candidates, {});
    return plain && plain->signature.result.isArray ? plain : nullptr;
}

} // namespace

NodeList Binder::bindArguments(const Arguments* arguments) {
    NodeList nodes;
    if (!arguments) return nodes;
    for (const ExpressionPointer& argument : *arguments)
        nodes.push_back(bindValue(*argument));
    return nodes;
}

const Method& Binder::select(const std::string& name, const Overloads& candidates,
                             const NodeList& arguments, int line) const {
    const std::vector<Type> types = typeList(arguments);
    if (const Method* method = selectOverload(candidates, types)) return *method;
    const bool ambiguous = std::ranges::any_of(candidates, [&](const Method* candidate) {
        return selectOverload({&candidate, 1}, types) != nullptr;
    });
    std::string known;
    for (const Method* candidate : candidates)
        known += (known.empty() ? "" : "; ") + candidate->signature.text();
    if (ambiguous)
        throw SourceError(line,
                          "More than one " + name + " takes " + typesOf(arguments) + ": " + known);
    if (arguments.empty()) throw SourceError(line, name + " needs arguments: " + known);
    throw SourceError(line, name + " does not take " + typesOf(arguments) + ", but: " + known);
}

NodeList Binder::fit(const Method& method, NodeList arguments, int line) const {
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const host::Parameter& parameter = method.signature.parameters[i];
        if (!parameter.isByRef) {
            arguments[i] = convertNode(std::move(arguments[i]), parameter.type, line);
            continue;
        }
        const auto* place = dynamic_cast<const Place*>(arguments[i].get());
        if (!place || !place->canBeReferenced() || place->type() != parameter.type)
            throw SourceError(line, "The ByRef parameter " + parameter.name + " of " +
                                        method.signature.name + " needs a variable of the type " +
                                        parameter.type.name());
    }
    return arguments;
}

NodeList Binder::fitAll(const Method& method, NodeList arguments, int line) const {
    NodeList fitted = fit(method, std::move(arguments), line);
    const std::vector<host::Parameter>& parameters = method.signature.parameters;
    for (std::size_t i = fitted.size(); i < parameters.size(); ++i) {
        const Type& type = parameters[i].type;
        fitted.push_back(
            makeLiteral(parameters[i].defaultValue.value_or(neutralValue(type)), type));
    }
    return fitted;
}

NodePointer Binder::bindCallExpression(const CallExpression& call, int line) {
    if (const auto* member = std::get_if<MemberExpression>(&call.callee->node))
        return bindMember(*member, &call.arguments, line);
    if (const auto* name = std::get_if<NameExpression>(&call.callee->node)) {
        const NamedSymbol* const symbol = scope_->find(name->name);
        if (!symbol) return bindNamedCall(name->name, call.arguments, line);
    }
    return bindElement(bindValue(*call.callee), call.arguments, line);
}

NodePointer Binder::bindElement(NodePointer array, const Arguments& arguments, int line) {
    if (!array->type().isArray)
        throw SourceError(line, "Only arrays have elements, but this is " + array->type().name());
    if (arguments.size() != 1)
        throw SourceError(line, "An element of an array is named by one number");
    return makeElement(std::move(array), bindInteger(*arguments.front()));
}

NodePointer Binder::bindNamedCall(const std::string& name, const Arguments& arguments, int line) {
    const bool isRoutine =
        std::ranges::any_of(program_->routines, [&](const std::unique_ptr<BoundRoutine>& routine) {
            return sameName(routine->method.signature.name, name);
        });
    if (isRoutine) return bindRoutineCall(name, arguments, line);
    if (NodePointer special = bindSpecialCall(name, arguments, line)) return special;
    if (const Overloads functions = program_->functions.find(name); !functions.empty()) {
        NodeList nodes = bindArguments(&arguments);
        const Method& function = select(name, functions, nodes, line);
        return makeFunctionCall(function, fitAll(function, std::move(nodes), line));
    }
    if (const Overloads functions = Runtime::current().findFunctions(name); !functions.empty())
        return bindMethod({}, name, functions, &arguments, line);
    if (const Class* type = findClass(name)) return bindCast(*type, arguments, line);
    throw SourceError(line, "There is nothing called " + name);
}

/// Functions whose arguments no declaration can state.
NodePointer Binder::bindSpecialCall(const std::string& name, const Arguments& arguments, int line) {
    if (sameName(name, "Array")) return bindArrayFunction(arguments, line);
    if (sameName(name, "UBound")) {
        if (arguments.size() != 1) throw SourceError(line, "UBound takes one array");
        NodePointer array = bindValue(*arguments.front());
        if (!array->type().isArray)
            throw SourceError(line, "UBound takes an array but found " + array->type().name());
        return makeUpperBound(std::move(array));
    }
    if ((sameName(name, "Min") || sameName(name, "Max")) && arguments.size() > 2) {
        NodePointer best = bindValue(*arguments.front());
        for (std::size_t i = 1; i < arguments.size(); ++i) {
            NodeList pair;
            pair.push_back(std::move(best));
            pair.push_back(bindValue(*arguments[i]));
            const Method& function = select(name, program_->functions.find(name), pair, line);
            best = makeFunctionCall(function, fitAll(function, std::move(pair), line));
        }
        return best;
    }
    return nullptr;
}

NodePointer Binder::bindArrayFunction(const Arguments& arguments, int line) {
    if (arguments.empty()) throw SourceError(line, "Array needs at least one element");
    NodeList elements = bindArguments(&arguments);
    const Type type = commonElementType(elements);
    for (NodePointer& element : elements)
        element = convertNode(std::move(element), type, line);
    return makeArray(type, std::move(elements));
}

NodePointer Binder::bindCast(const Class& type, const Arguments& arguments, int line) {
    if (arguments.size() != 1)
        throw SourceError(line, type.name() + " is a class; " + type.name() +
                                    "(object) casts an object to it");
    NodePointer object = bindValue(*arguments.front());
    if (!object->type().isReference() || object->type().isArray)
        throw SourceError(line, "Only objects can be cast to " + type.name() + ", but this is " +
                                    object->type().name());
    return makeCast(type, std::move(object));
}

NodePointer Binder::bindRoutineCall(const std::string& name, const Arguments& arguments, int line) {
    Overloads candidates;
    for (const auto& routine : program_->routines)
        if (sameName(routine->method.signature.name, name)) candidates.push_back(&routine->method);
    NodeList nodes = bindArguments(&arguments);
    if (arrayGetter(candidates, nodes))
        return bindElement(bindRoutineCall(name, {}, line), arguments, line);
    const Method& method = select(name, candidates, nodes, line);
    std::vector<bool> isReference;
    for (const host::Parameter& parameter : method.signature.parameters)
        isReference.push_back(parameter.isByRef);
    const auto bound =
        std::ranges::find_if(program_->routines, [&](const std::unique_ptr<BoundRoutine>& routine) {
            return &routine->method == &method;
        });
    return makeRoutineCall((*bound)->node, fitAll(method, std::move(nodes), line),
                           std::move(isReference));
}

/// What a thread can run: a Sub without parameters, or with the Thread that runs it.
NodePointer Binder::bindAddressOf(const std::string& name, int line) {
    const BoundRoutine* found = nullptr;
    bool isKnown = false;
    for (const auto& routine : program_->routines) {
        const Signature& signature = routine->method.signature;
        if (!sameName(signature.name, name)) continue;
        isKnown = true;
        const auto& parameters = signature.parameters;
        const bool takesThread = parameters.size() == 1 && !parameters[0].isByRef &&
                                 parameters[0].type == Type::object("Thread");
        if (signature.result.kind != Kind::Nothing || (!parameters.empty() && !takesThread))
            continue;
        if (found) throw SourceError(line, "AddressOf cannot choose: there are two Subs " + name);
        found = routine.get();
    }
    if (found) return makeDelegate(found->node, !found->method.signature.parameters.empty());
    if (!isKnown) throw SourceError(line, "There is no Sub called " + name);
    throw SourceError(line,
                      "AddressOf needs a Sub without parameters, or with one that is a Thread");
}

const Class& Binder::classOfObject(const Type& type, int line) const {
    if (type.kind == Kind::Variant) return Runtime::current().variantClass();
    if (type.kind != Kind::Object) throw SourceError(line, type.name() + " has no members");
    const std::string& name = type.className.empty() ? "Object" : type.className;
    const Class* const found = findClass(name);
    if (!found) throw SourceError(line, "There is no class called " + name);
    return *found;
}

Binder::Owner Binder::bindOwner(const Expression& expression) {
    if (const auto* name = std::get_if<NameExpression>(&expression.node)) {
        const Class* const type = findClass(name->name);
        if (type && !scope_->find(name->name)) return {type, nullptr};
    }
    Owner owner;
    owner.object = bindValue(expression);
    if (!owner.object->type().isArray)
        owner.type = &classOfObject(owner.object->type(), expression.line);
    return owner;
}

NodePointer Binder::bindMember(const MemberExpression& member, const Arguments* arguments,
                               int line) {
    Owner owner = bindOwner(*member.object);
    if (!owner.type) return bindArrayMember(std::move(owner.object), member.name, arguments, line);
    return bindClassMember(std::move(owner), member.name, arguments, line);
}

NodePointer Binder::bindClassMember(Owner owner, const std::string& name,
                                    const Arguments* arguments, int line) {
    const Class& type = *owner.type;
    const bool hasArguments = arguments && !arguments->empty();
    if (owner.object && owner.object->type() == Type(Kind::Variant)) {
        const Property* const view = type.findProperty(name);
        if (!view || hasArguments)
            throw SourceError(line,
                              "A Variant has no " + name + "; cast it to the class that has it");
        return makeVariantView(*view, std::move(owner.object));
    }
    const Property* property = type.findSharedProperty(name);
    if (!property && owner.object) property = type.findProperty(name);
    if (property) {
        if (property->isShared) owner.object = nullptr;
        NodePointer place = makeProperty(*property, std::move(owner.object));
        return hasArguments ? bindElement(std::move(place), *arguments, line) : std::move(place);
    }
    const auto isSetter = [](const Method* method) { return method->signature.isSetter(); };
    if (owner.object) {
        Overloads methods = type.findMethods(name);
        std::erase_if(methods, isSetter);
        if (!methods.empty()) return bindMethod(std::move(owner), name, methods, arguments, line);
    }
    Overloads shared = type.findSharedMethods(name);
    std::erase_if(shared, isSetter);
    if (!shared.empty()) {
        owner.object = nullptr;
        return bindMethod(std::move(owner), name, shared, arguments, line);
    }
    if (const Constant* constant = type.findConstant(name); constant && !hasArguments)
        return makeLiteral(constant->value);
    const bool needsObject =
        !owner.object && (type.findProperty(name) || !type.findMethods(name).empty());
    if (needsObject)
        throw SourceError(line, name + " is a member of the objects of " + type.name() +
                                    ", not of the class");
    throw SourceError(line, type.name() + " has no member called " + name);
}

NodePointer Binder::bindMethod(Owner owner, const std::string& name, const Overloads& candidates,
                               const Arguments* arguments, int line) {
    NodeList nodes = bindArguments(arguments);
    if (const Method* plain = arrayGetter(candidates, nodes))
        return bindElement(makeMethodCall(*plain, std::move(owner.object), {}), *arguments, line);
    const std::string fullName = owner.type ? owner.type->name() + "." + name : name;
    const Method& method = select(fullName, candidates, nodes, line);
    return makeMethodCall(method, std::move(owner.object), fit(method, std::move(nodes), line));
}

NodePointer Binder::bindArrayMember(NodePointer array, const std::string& name,
                                    const Arguments* arguments, int line) {
    const Type elementType = array->type().element();
    const std::optional<ArrayMember> member = findArrayMember(name, elementType);
    if (!member) throw SourceError(line, array->type().name() + " has no member called " + name);
    NodeList nodes = bindArguments(arguments);
    const Method* const candidate = &member->method;
    const Method& method = select(array->type().name() + "." + name, {candidate}, nodes, line);
    return makeArrayCall(method.signature.result, member->body, std::move(array),
                         fitAll(method, std::move(nodes), line));
}

} // namespace host::language
