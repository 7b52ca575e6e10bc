#pragma once

/// The host's objects: counted references to memory that starts with a REALobjectStruct, whose
/// first word leads to the host's record of the object, followed by the data of the classes.

#include "sdk/types.h"

#include <memory>
#include <utility>

namespace host {

class Class;

/// What a class that the host implements keeps for an instance.
struct State {
    virtual ~State() = default;
};

/// Owns one reference to an object, or is Nil.
class ObjectRef {
public:
    ObjectRef() = default;
    ObjectRef(std::nullptr_t) {}
    ObjectRef(const ObjectRef& other);
    ObjectRef(ObjectRef&& other) noexcept
        : object_(std::exchange(other.object_, nullptr)) {}
    ObjectRef& operator=(ObjectRef other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~ObjectRef();

    /// Takes over the caller's reference.
    static ObjectRef adopt(REALobjectStruct* object);
    /// Adds a reference.
    static ObjectRef retain(REALobjectStruct* object);

    REALobjectStruct* get() const { return object_; }
    /// Hands the reference to the caller.
    REALobjectStruct* release() { return std::exchange(object_, nullptr); }
    explicit operator bool() const { return object_ != nullptr; }
    friend bool operator==(const ObjectRef& a, const ObjectRef& b) {
        return a.object_ == b.object_;
    }

private:
    REALobjectStruct* object_ = nullptr;
};

/// Null for Nil and for objects that are dead, which an over-released reference may hold.
const Class* classOf(const REALobjectStruct* object);
bool isA(const REALobjectStruct* object, const Class* wanted);
State* stateOf(const REALobjectStruct* object);

/// The state of a host class's instance; null for Nil and for instances of other classes.
template <typename Wanted>
Wanted* stateOf(const REALobjectStruct* object) {
    return dynamic_cast<Wanted*>(stateOf(object));
}
template <typename Wanted>
Wanted* stateOf(const ObjectRef& object) {
    return dynamic_cast<Wanted*>(stateOf(object.get()));
}

} // namespace host
