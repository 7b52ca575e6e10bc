#pragma once

/// Holders of one reference each. They are the only places in AppKit that retain and release,
/// besides `init`, `copy` and `dealloc`.

#import <Foundation/Foundation.h>

#include <CoreFoundation/CoreFoundation.h>

#include <utility>

namespace cocoa::appkit {

/// Holds a Cocoa object, or none. `adopt` takes over a reference that the caller has; the
/// constructor and assignment from a pointer add one.
template <class Object>
class Owned {
public:
    Owned() = default;
    Owned(Object object)
        : object_([object retain]) {}
    Owned(const Owned& other)
        : object_([other.object_ retain]) {}
    Owned(Owned&& other) noexcept
        : object_(std::exchange(other.object_, nil)) {}
    ~Owned() { [object_ release]; }

    Owned& operator=(Owned other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }

    static Owned adopt(Object object) {
        Owned owned;
        owned.object_ = object;
        return owned;
    }

    Object get() const { return object_; }
    operator Object() const { return object_; }
    /// Hands the reference to the enclosing autorelease pool.
    Object autoreleased() { return [std::exchange(object_, nil) autorelease]; }

private:
    Object object_ = nil;
};

/// Holds a CoreFoundation or CoreGraphics object, or none.
template <class Reference>
class OwnedRef {
public:
    OwnedRef() = default;
    OwnedRef(const OwnedRef& other)
        : reference_(other.reference_) {
        addReference();
    }
    OwnedRef(OwnedRef&& other) noexcept
        : reference_(std::exchange(other.reference_, nullptr)) {}
    ~OwnedRef() {
        if (reference_) CFRelease(reference_);
    }

    OwnedRef& operator=(OwnedRef other) noexcept {
        std::swap(reference_, other.reference_);
        return *this;
    }

    static OwnedRef adopt(Reference reference) {
        OwnedRef owned;
        owned.reference_ = reference;
        return owned;
    }
    static OwnedRef retain(Reference reference) {
        OwnedRef owned = adopt(reference);
        owned.addReference();
        return owned;
    }

    Reference get() const { return reference_; }
    explicit operator bool() const { return reference_ != nullptr; }
    Reference autoreleased() {
        if (reference_) [(id)reference_ autorelease];
        return std::exchange(reference_, nullptr);
    }

private:
    void addReference() {
        if (reference_) CFRetain(reference_);
    }

    Reference reference_ = nullptr;
};

} // namespace cocoa::appkit
