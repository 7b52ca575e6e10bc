#pragma once

/// Classes and their members. A member of a class that the host implements and one of a plug-in's
/// class are called alike.

#include "host/objects/value.h"
#include "sdk/records.h"

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace host {

struct Parameter {
    std::string name;
    Type type;
    std::optional<Value> defaultValue;
    bool isByRef = false;
    bool isAssigned = false; ///< takes the right side of an assignment; always the last parameter
    bool isOptional = false; ///< without a default value it is the type's neutral value
};

struct Signature {
    std::string name;
    std::vector<Parameter> parameters;
    Type result; ///< Kind::Nothing for a Sub

    /// Nothing when the text is no declaration or a default is no literal of its type.
    static std::optional<Signature> parse(std::string_view declaration);
    /// Called by an assignment: `object.name(arguments) = value`.
    bool isSetter() const { return !parameters.empty() && parameters.back().isAssigned; }
    std::size_t requiredCount() const;
    /// As a program would declare it.
    std::string text() const;
};

struct Method {
    /// Takes the object (null for shared and global methods) and exactly the declared arguments,
    /// each of its declared type. A ByRef argument may be changed.
    using Body = std::function<Value(REALobjectStruct* self, std::span<Value> arguments)>;

    Signature signature;
    Body body;
    REALword flags = REALconsoleSafe;
    bool isShared = false;
    /// A plug-in's own C function; null for members that the host implements.
    void* function = nullptr;
    /// What functionOf() made for plug-ins that load the method.
    mutable std::shared_ptr<void> loaded = nullptr;
};

struct Property {
    using Getter = std::function<Value(REALobjectStruct* self)>;
    using Setter = std::function<void(REALobjectStruct* self, const Value& value)>;

    std::string name;
    Type type;
    Getter get;
    Setter set; ///< empty when read-only; takes a value of `type`
    REALword flags = REALpropertyFlags;
    bool isDirect = false; ///< a field that the host reads and writes itself
    bool isShared = false; ///< belongs to the class; its accessors take a null object
};

struct Constant {
    std::string name;
    Value value;
};

/// A class-table entry as the plug-in handed it over, word by word.
using RawRecord = std::vector<REALword>;

/// What a plug-in handed to PluginRegisterClass.
struct RawDefinition {
    int controlVersion = 0; ///< as the plug-in declared it
    RawRecord words;
    std::vector<RawRecord> properties;
    std::vector<RawRecord> methods;
    std::vector<RawRecord> events;
    std::vector<RawRecord> constants;
    std::vector<RawRecord> sharedProperties;
    std::vector<RawRecord> sharedMethods;
};

class Class {
public:
    using Hook = std::function<void(REALobjectStruct* self)>;
    using StateMaker = std::function<std::unique_ptr<State>()>;

    explicit Class(std::string name, const Class* superclass = nullptr);

    const std::string& name() const { return name_; }
    const Class* superclass() const { return superclass_; }
    bool descendsFrom(const Class& ancestor) const; ///< also true of the class itself

    // Lookups go through the superclasses and ignore case.

    /// All overloads. An inherited one is left out where a subclass declares the same parameters.
    std::vector<const Method*> findMethods(std::string_view name) const;
    std::vector<const Method*> findSharedMethods(std::string_view name) const;
    /// The methods called Constructor of the nearest class that has any.
    std::vector<const Method*> constructors() const;
    const Property* findProperty(std::string_view name) const;
    const Property* findSharedProperty(std::string_view name) const;
    const Constant* findConstant(std::string_view name) const;

    // What the class itself declares, in order.

    std::vector<Method> methods;
    std::vector<Method> sharedMethods;
    std::vector<Property> properties;
    std::vector<Property> sharedProperties;
    std::vector<Constant> constants;

    Hook constructor; ///< runs when an instance is made, after the superclass's
    Hook destructor;  ///< runs before the superclass's
    StateMaker makeState;
    /// Bytes from the start of an object to this class's data, and the size of that.
    std::size_t dataOffset = 0;
    std::size_t dataSize = 0;
    REALword flags = REALconsoleSafe;
    /// False for classes that neither a program nor a plug-in can make instances of.
    bool canBeInstantiated = true;
    std::string plugin;               ///< empty for the host's own classes
    std::optional<RawDefinition> raw; ///< of a plug-in's class

    // For the host's own classes.

    Method& addMethod(std::string_view declaration, Method::Body body);
    Method& addSharedMethod(std::string_view declaration, Method::Body body);
    Property& addProperty(std::string_view name, const Type& type, Property::Getter get,
                          Property::Setter set = {});
    void addConstant(std::string_view name, Value value);

    std::size_t instanceSize() const { return dataOffset + dataSize; }

private:
    std::string name_;
    const Class* superclass_;
};

/// The overload that takes arguments of these types with the least conversion; null when none does
/// or two do equally well.
const Method* selectOverload(std::span<const Method* const> candidates,
                             std::span<const Type> argumentTypes);

} // namespace host
