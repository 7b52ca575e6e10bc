#pragma once

/// An owning pointer to an Objective-C or Core Foundation object.

#include <CoreFoundation/CFBase.h>

#include <utility>

namespace cocoa {

/// Holds one reference and gives it back at the end. `Pointer` is `NSString*`, `CFStringRef`, ...
template <typename Pointer>
class Retained {
public:
    Retained() = default;
    /// Takes over a reference that the caller owns: the result of alloc, copy, Create and Copy.
    static Retained adopt(Pointer object) { return Retained(object); }
    /// Takes a reference of its own.
    static Retained retain(Pointer object) {
        if (object) CFRetain(asType(object));
        return Retained(object);
    }

    Retained(const Retained& other)
        : Retained(retain(other.object_)) {}
    Retained(Retained&& other) noexcept
        : object_(std::exchange(other.object_, nullptr)) {}
    Retained& operator=(Retained other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~Retained() {
        if (object_) CFRelease(asType(object_));
    }

    Pointer get() const { return object_; }
    explicit operator bool() const { return object_ != nullptr; }
    /// Hands the reference over to the caller.
    [[nodiscard]] Pointer leak() { return std::exchange(object_, nullptr); }

private:
    explicit Retained(Pointer object)
        : object_(object) {}
    static CFTypeRef asType(Pointer object) { return (CFTypeRef)object; }

    Pointer object_ = nullptr;
};

} // namespace cocoa
