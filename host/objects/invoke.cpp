#include "host/objects/runtime.h"
#include "host/threads/scheduler.h"

namespace host {

namespace {

std::string argumentNumber(std::size_t index) { return "Argument " + std::to_string(index + 1); }

/// Brings the arguments to exactly the declared parameters.
void prepare(const Signature& signature, std::vector<Value>& arguments) {
    const auto& parameters = signature.parameters;
    if (arguments.size() > parameters.size() || arguments.size() < signature.requiredCount())
        throw CallError(signature.text() + " does not take " + std::to_string(arguments.size()) +
                        " arguments");
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        auto converted = convert(arguments[i], parameters[i].type);
        if (!converted)
            raise("TypeMismatchException", argumentNumber(i) + " of " + signature.name +
                                               " must be " + parameters[i].type.name() +
                                               ", but is " + arguments[i].type().name() + ".");
        arguments[i] = std::move(*converted);
    }
    for (std::size_t i = arguments.size(); i < parameters.size(); ++i)
        arguments.push_back(parameters[i].defaultValue.value_or(neutralValue(parameters[i].type)));
}

} // namespace

/// The pool is emptied only where no member's frame can hold anything of it.
class Runtime::Depth {
public:
    explicit Depth(Runtime& runtime)
        : thread_(runtime.scheduler().current()) {
        constexpr int callsBetweenDrains = 256;
        if (thread_.membersAtWork == 0 && ++thread_.callsSinceDrain > callsBetweenDrains)
            runtime.drainPool();
        ++thread_.membersAtWork;
    }
    ~Depth() { --thread_.membersAtWork; }
    Depth(const Depth&) = delete;
    Depth& operator=(const Depth&) = delete;

private:
    HostThread& thread_;
};

Value Runtime::perform(const Method& method, REALobjectStruct* self,
                       std::vector<Value>& arguments) {
    if (!method.isShared && !self)
        raise("NilObjectException", method.signature.name + " was called on Nil.");
    prepare(method.signature, arguments);
    // The member may release the last other reference to its own object.
    const ObjectRef kept = ObjectRef::retain(self);
    const Depth depth(*this);
    return method.body(self, arguments);
}

Value Runtime::call(const Method& method, REALobjectStruct* self, std::vector<Value>& arguments) {
    Value result = perform(method, self, arguments);
    throwPending();
    return result;
}

Value Runtime::call(const Method& method, REALobjectStruct* self, std::vector<Value>&& arguments) {
    return call(method, self, arguments);
}

Value Runtime::get(const Property& property, REALobjectStruct* self) {
    if (!property.isShared && !self)
        raise("NilObjectException", property.name + " of Nil was read.");
    const ObjectRef kept = ObjectRef::retain(self);
    const Depth depth(*this);
    Value value = property.get(self);
    throwPending();
    return value;
}

void Runtime::set(const Property& property, REALobjectStruct* self, const Value& value) {
    if (!property.isShared && !self)
        raise("NilObjectException", property.name + " of Nil was assigned to.");
    if (!property.set) throw CallError(property.name + " is read-only");
    const auto converted = convert(value, property.type);
    if (!converted)
        raise("TypeMismatchException", property.name + " must be " + property.type.name() +
                                           ", but is assigned " + value.type().name() + ".");
    const ObjectRef kept = ObjectRef::retain(self);
    const Depth depth(*this);
    property.set(self, *converted);
    throwPending();
}

const Method& overloadFor(std::string_view name, std::span<const Method* const> candidates,
                          std::span<const Value> arguments) {
    std::vector<Type> types;
    std::string listed;
    for (const Value& argument : arguments) {
        types.push_back(argument.type());
        listed += (listed.empty() ? "" : ", ") + types.back().name();
    }
    if (const Method* const method = selectOverload(candidates, types)) return *method;
    throw CallError(std::string(name) + " does not take (" + listed + ")");
}

} // namespace host
