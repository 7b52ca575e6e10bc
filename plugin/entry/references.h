#pragma once

/// Owners of what must be given back: host references, host strings, string data, CF objects. An
/// owner either adopts a reference that is already the plug-in's or adds one of its own.

#include "plugin/entry/host_services.h"

#include <CoreFoundation/CoreFoundation.h>

#include <cstdlib>
#include <utility>

/// `Traits` says how a reference is added and given back; neither is asked about null. A reference
/// that could not be added, which `retain` tells, is not given back either.
template <typename Pointer, typename Traits>
class Reference {
public:
    Reference() = default;
    static Reference adopt(Pointer pointer) { return Reference(pointer, true); }
    static Reference retain(Pointer pointer) {
        return Reference(pointer, pointer && Traits::retain(pointer));
    }

    Reference(Reference&& other) noexcept
        : pointer_(std::exchange(other.pointer_, nullptr))
        , isOwned_(other.isOwned_) {}
    Reference& operator=(Reference&& other) noexcept {
        std::swap(pointer_, other.pointer_);
        std::swap(isOwned_, other.isOwned_);
        return *this;
    }
    Reference(const Reference&) = delete;
    Reference& operator=(const Reference&) = delete;
    ~Reference() {
        if (pointer_ && isOwned_) Traits::release(pointer_);
    }

    Pointer get() const { return pointer_; }
    explicit operator bool() const { return pointer_ != nullptr; }

    /// Hands the reference to the caller.
    Pointer leak() { return std::exchange(pointer_, nullptr); }

private:
    Reference(Pointer pointer, bool isOwned)
        : pointer_(pointer)
        , isOwned_(isOwned) {}

    Pointer pointer_ = nullptr;
    bool isOwned_ = false;
};

struct HostObjectTraits {
    static bool retain(REALobjectStruct* object) {
        auto* const lock = REALLockObject.resolve();
        if (lock) lock(object);
        return lock != nullptr;
    }
    static void release(REALobjectStruct* object) { REALUnlockObject(object); }
};
using HostObject = Reference<REALobjectStruct*, HostObjectTraits>;
using HostArray = Reference<REALarrayStruct*, HostObjectTraits>;

struct HostStringTraits {
    static bool retain(REALstringStruct* string) {
        auto* const lock = REALLockString.resolve();
        if (lock) lock(string);
        return lock != nullptr;
    }
    static void release(REALstringStruct* string) { REALUnlockString(string); }
};
using HostString = Reference<REALstringStruct*, HostStringTraits>;

struct CFTraits {
    static bool retain(CFTypeRef object) { return CFRetain(object) != nullptr; }
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
