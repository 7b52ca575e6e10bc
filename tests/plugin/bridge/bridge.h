#pragma once

#include "plugin/probe/probe_host.h"

#include <Cocoa/Cocoa.h>

/// "Int32 42": the kind and the value of a Variant.
inline std::string told(const host::Value& value) {
    if (value.isNil()) return "Nil";
    // Integer is the name of either, by the word size.
    const std::string kind = value.kind() == host::Kind::Int32   ? "Int32"
                             : value.kind() == host::Kind::Int64 ? "Int64"
                                                                 : value.type().name();
    return kind + " " + value.utf8();
}

/// Owner of a Cocoa object.
class Held {
public:
    explicit Held(id object)
        : object_(object) {}
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;
    ~Held() { [object_ release]; }

    id get() const { return object_; }
    explicit operator bool() const { return object_ != nil; }
    bool is_kind_of(Class expected) const { return [object_ isKindOfClass:expected]; }
    std::string class_name() const { return object_ ? class_getName([object_ class]) : "nil"; }

private:
    id object_;
};

/// A host in which any value can be pushed into Cocoa, and any Cocoa object out of it.
class Bridge {
public:
    explicit Bridge(HostOptions options = {})
        : host(with_probe(std::move(options))) {}

    /// The Cocoa object of a value, with one retain.
    Held object_of(const host::Value& value) {
        return Held(
            reinterpret_cast<id>(host.shared<REALword>("ValueProbe", "RetainedObjectOf", value)));
    }
    /// The value of a Cocoa object.
    host::Value value_of(id object) {
        return host.shared("ValueProbe", "ValueOf", reinterpret_cast<REALword>(object));
    }
    host::Value round_trip(const host::Value& value) {
        return host.shared("ValueProbe", "RoundTrip", value);
    }

    static std::string class_of(const host::Value& value) {
        REALobjectStruct* const object = value.object();
        return object ? host::classOf(object)->name() : "(none)";
    }

    /// Adds a host class whose instances have room for `words` of data of their own.
    host::Class& add_class(const std::string& name, std::size_t words = 0,
                           const std::string& superclass = "Object") {
        auto added = std::make_unique<host::Class>(name, host.runtime().findClass(superclass));
        added->dataSize = words * sizeof(REALword);
        return host.runtime().addClass(std::move(added));
    }
    /// Adds a host class whose instances own the Cocoa object in their first word.
    host::Class& add_wrapper_class(const std::string& name, std::size_t words = 1) {
        host::Class& added = add_class(name, words);
        added.destructor = [](REALobjectStruct* wrapper) { [first_word(wrapper) release]; };
        return added;
    }
    static id& first_word(REALobjectStruct* wrapper) {
        return *static_cast<id*>(REALfirstClassData(wrapper));
    }

    Host host;
};

/// A pool for the Cocoa objects that a test makes.
class Pool {
public:
    Pool() = default;
    Pool(const Pool&) = delete;
    Pool& operator=(const Pool&) = delete;
    ~Pool() { [pool_ release]; }

private:
    NSAutoreleasePool* const pool_ = [[NSAutoreleasePool alloc] init];
};
