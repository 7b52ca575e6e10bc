#include "host/objects/class.h"

#include "host/objects/runtime.h"

#include <algorithm>

namespace host {

namespace {

/// The alignment of a class's data within an instance.
constexpr std::size_t dataAlignment = 4 * sizeof(REALword);

bool sameParameters(const Signature& a, const Signature& b) {
    return std::ranges::equal(
        a.parameters, b.parameters, [](const Parameter& left, const Parameter& right) {
            return left.type == right.type && left.isAssigned == right.isAssigned;
        });
}

template <typename List>
auto* named(List& list, std::string_view name) {
    const auto found =
        std::ranges::find_if(list, [&](const auto& member) { return sameName(member.name, name); });
    return found == list.end() ? nullptr : &*found;
}

void addOverloads(std::vector<const Method*>& found, const std::vector<Method>& methods,
                  std::string_view name) {
    for (const Method& method : methods) {
        if (!sameName(method.signature.name, name)) continue;
        const bool hidden = std::ranges::any_of(found, [&](const Method* overriding) {
            return sameParameters(overriding->signature, method.signature);
        });
        if (!hidden) found.push_back(&method);
    }
}

Method makeMethod(std::string_view declaration, Method::Body body, bool isShared) {
    Method method;
    method.signature = Signature::parse(declaration).value();
    method.body = std::move(body);
    method.isShared = isShared;
    return method;
}

} // namespace

std::optional<Signature> Signature::parse(std::string_view declaration) {
    const auto parsed = REALdeclarations::parse(declaration);
    if (!parsed) return std::nullopt;
    Signature signature;
    signature.name = parsed->name;
    signature.result = Type::of(parsed->result);
    for (const auto& declared : *parsed) {
        // Only the last parameter can take the assigned value.
        if (signature.isSetter()) return std::nullopt;
        Parameter parameter;
        parameter.name = declared.name;
        parameter.type = Type::of(declared.type);
        parameter.isByRef = declared.isByRef;
        parameter.isAssigned = declared.isAssigned;
        parameter.isOptional = declared.isOptional;
        if (!declared.defaultValue.empty()) {
            const auto literal = parseLiteral(declared.defaultValue);
            if (literal) parameter.defaultValue = convert(*literal, parameter.type);
            if (!parameter.defaultValue) return std::nullopt;
        }
        signature.parameters.push_back(std::move(parameter));
    }
    return signature;
}

std::size_t Signature::requiredCount() const {
    std::size_t required = 0;
    for (std::size_t i = 0; i < parameters.size(); ++i)
        if (!parameters[i].isOptional) required = i + 1;
    return required;
}

std::string Signature::text() const {
    std::string text = name + "(";
    for (const Parameter& parameter : parameters) {
        if (&parameter != &parameters.front()) text += ", ";
        if (parameter.isAssigned) text += "Assigns ";
        if (parameter.isByRef) text += "ByRef ";
        text += parameter.name + " As " + parameter.type.name();
        if (parameter.defaultValue) {
            const Value& value = *parameter.defaultValue;
            const bool quoted = value.kind() == Kind::String;
            text += " = " + (value.isNil() ? "Nil"
                             : quoted      ? '"' + value.utf8() + '"'
                                           : value.utf8());
        }
    }
    text += ")";
    if (result.kind != Kind::Nothing) text += " As " + result.name();
    return text;
}

Class::Class(std::string name, const Class* superclass)
    : dataOffset(superclass ? (superclass->instanceSize() + dataAlignment - 1) / dataAlignment *
                                  dataAlignment
                            : sizeof(REALobjectStruct))
    , name_(std::move(name))
    , superclass_(superclass) {}

bool Class::descendsFrom(const Class& ancestor) const {
    for (const Class* type = this; type; type = type->superclass_)
        if (type == &ancestor) return true;
    return false;
}

std::vector<const Method*> Class::findMethods(std::string_view name) const {
    std::vector<const Method*> found;
    for (const Class* type = this; type; type = type->superclass_)
        addOverloads(found, type->methods, name);
    return found;
}

std::vector<const Method*> Class::findSharedMethods(std::string_view name) const {
    std::vector<const Method*> found;
    for (const Class* type = this; type; type = type->superclass_)
        addOverloads(found, type->sharedMethods, name);
    return found;
}

std::vector<const Method*> Class::constructors() const {
    std::vector<const Method*> found;
    for (const Class* type = this; type && found.empty(); type = type->superclass_)
        addOverloads(found, type->methods, "Constructor");
    return found;
}

const Property* Class::findProperty(std::string_view name) const {
    for (const Class* type = this; type; type = type->superclass_)
        if (const Property* const property = named(type->properties, name)) return property;
    return nullptr;
}

const Property* Class::findSharedProperty(std::string_view name) const {
    for (const Class* type = this; type; type = type->superclass_)
        if (const Property* const property = named(type->sharedProperties, name)) return property;
    return nullptr;
}

const Constant* Class::findConstant(std::string_view name) const {
    for (const Class* type = this; type; type = type->superclass_)
        if (const Constant* const constant = named(type->constants, name)) return constant;
    return nullptr;
}

Method& Class::addMethod(std::string_view declaration, Method::Body body) {
    return methods.emplace_back(makeMethod(declaration, std::move(body), false));
}

Method& Class::addSharedMethod(std::string_view declaration, Method::Body body) {
    return sharedMethods.emplace_back(makeMethod(declaration, std::move(body), true));
}

Property& Class::addProperty(std::string_view name, const Type& type, Property::Getter get,
                             Property::Setter set) {
    Property property;
    property.name = name;
    property.type = type;
    property.get = std::move(get);
    property.set = std::move(set);
    return properties.emplace_back(std::move(property));
}

void Class::addConstant(std::string_view name, Value value) {
    constants.push_back({std::string(name), std::move(value)});
}

const Method* selectOverload(std::span<const Method* const> candidates,
                             std::span<const Type> argumentTypes) {
    // Every conversion outweighs any number of parameters left to their defaults.
    constexpr int conversionWeight = 100;
    const Method* best = nullptr;
    int bestCost = 0;
    bool ambiguous = false;
    for (const Method* const candidate : candidates) {
        const auto& parameters = candidate->signature.parameters;
        if (argumentTypes.size() > parameters.size() ||
            argumentTypes.size() < candidate->signature.requiredCount())
            continue;
        int cost = static_cast<int>(parameters.size() - argumentTypes.size());
        bool fits = true;
        for (std::size_t i = 0; fits && i < argumentTypes.size(); ++i) {
            const auto one = conversionCost(argumentTypes[i], parameters[i].type);
            fits = one.has_value();
            cost += one.value_or(0) * conversionWeight;
        }
        if (!fits || (best && cost > bestCost)) continue;
        ambiguous = best && cost == bestCost;
        best = candidate;
        bestCost = cost;
    }
    return ambiguous ? nullptr : best;
}

} // namespace host
