#pragma once

/// CoreGraphics objects are Objective-C objects that own a plain C++ body. All work is done on the
/// bodies; only objects.mm knows of Objective-C.

#include <CoreGraphics/CGBase.h>

#include <cstddef>
#include <memory>
#include <utility>

namespace cocoa::cg {

enum class Kind { ColorSpace, Color, DataProvider, Image, Context, DataConsumer, Layer };

class Body {
public:
    Body() = default;
    Body(const Body&) = delete;
    Body& operator=(const Body&) = delete;
    virtual ~Body() = default;

    /// Only asked for bodies of the same kind.
    virtual bool equals(const Body& other) const { return this == &other; }
    virtual std::size_t hash() const { return reinterpret_cast<std::size_t>(this) >> 4; }
};

/// A new object with one reference, which the caller owns; null for no body.
CFTypeRef makeObject(Kind kind, std::unique_ptr<Body> body);
/// The body of an object that makeObject made; null for a null object.
Body* bodyOfObject(CFTypeRef object);
/// Both take null.
CFTypeRef retainObject(CFTypeRef object);
void releaseObject(CFTypeRef object);

/// Owns one reference of a CoreGraphics or CoreFoundation object.
template <typename Ref>
class Owned {
public:
    Owned() = default;
    /// Takes over the caller's reference.
    static Owned adopt(Ref object) { return Owned(object); }
    static Owned retain(Ref object) {
        retainObject(object);
        return Owned(object);
    }
    Owned(const Owned& other)
        : object(other.object) {
        retainObject(object);
    }
    Owned(Owned&& other) noexcept
        : object(std::exchange(other.object, nullptr)) {}
    Owned& operator=(Owned other) noexcept {
        std::swap(object, other.object);
        return *this;
    }
    ~Owned() { releaseObject(object); }

    Ref get() const { return object; }
    /// Hands the reference to the caller.
    Ref release() { return std::exchange(object, nullptr); }
    explicit operator bool() const { return object != nullptr; }

private:
    explicit Owned(Ref object)
        : object(object) {}
    Ref object = nullptr;
};

} // namespace cocoa::cg
