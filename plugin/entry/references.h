#pragma once

/// Owners of what must be given back: host references, host strings, string data, CF objects. An
/// owner either adopts a reference that is already the plug-in's or adds one of its own.

#include "plugin/entry/host_services.h"

#include <CoreFoundation/CoreFoundation.h>

#include <cstdlib>
#include <utility>

/// `Traits` says how a reference is added and given back; neither is asked about null.
template <typename Pointer, typename Traits>
class Reference {
public:
    Reference() = default;
    static Reference adopt(Pointer pointer) { return Reference(pointer); }
    static Reference retain(Pointer pointer) {
        if (pointer) Traits::retain(pointer);
        return Reference(pointer);
    }

    Reference(Reference&& other) noexcept
        : pointer_(std::exchange(other.pointer_, nullptr)) {}
    Reference& operator=(Reference&& other) noexcept {
        std::swap(pointer_, other.pointer_);
        return *this;
    }
    Reference(const Reference&) = delete;
    Reference& operator=(const Reference&) = delete;
    ~Reference() {
        if (pointer_) Traits::release(pointer_);
    }

    Pointer get() const { return pointer_; }
    explicit operator bool() const { return pointer_ != nullptr; }

    /// Hands the reference to the caller.
    Pointer leak() { return std::exchange(pointer_, nullptr); }

private:
    explicit Reference(Pointer pointer)
        : pointer_(pointer) {}

    Pointer pointer_ = nullptr;
};

struct HostObjectTraits {
    static void retain(REALobjectStruct* object) { REALLockObject(object); }
    static void release(REALobjectStruct* object) { REALUnlockObject(object); }
};
using HostObject = Reference<REALobjectStruct*, HostObjectTraits>;

struct HostStringTraits {
    static void retain(REALstringStruct* string) { REALLockString(string); }
    static void release(REALstringStruct* string) { REALUnlockString(string); }
};
using HostString = Reference<REALstringStruct*, HostStringTraits>;

struct CFTraits {
    static void retain(CFTypeRef object) { CFRetain(object); }
    static void release(CFTypeRef object) { CFRelease(object); }
};
template <typename Pointer>
using CFReference = Reference<Pointer, CFTraits>;

/// The bytes that REALGetStringData filled in.
class StringData {
public:
    StringData() = default;
    StringData(const StringData&) = delete;
    StringData& operator=(const StringData&) = delete;
    ~StringData() { dispose(); }

    bool fill(REALstringStruct* string, std::uint32_t encoding) {
        dispose();
        filled_ = REALGetStringData(string, encoding, &record_);
        return filled_;
    }

    const char* bytes() const { return static_cast<const char*>(record_.data); }
    std::uint32_t length() const { return record_.length; }

    void dispose() {
        if (filled_) {
            if (REALDisposeStringData.resolve())
                REALDisposeStringData(&record_);
            else
                std::free(record_.data);
        }
        filled_ = false;
        record_ = {};
    }

private:
    REALstringData record_ = {};
    bool filled_ = false;
};
