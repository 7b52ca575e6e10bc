#pragma once

/// The host's services that this part uses, and owners of what they hand out.

#include "sdk/host_service.h"

#include <utility>

inline constinit REALhostService lockObject{REALservices::LockObject};
inline constinit REALhostService unlockObject{REALservices::UnlockObject};
inline constinit REALhostService newInstance{REALservices::NewInstance};
inline constinit REALhostService classNamed{REALservices::GetClassRef};
inline constinit REALhostService objectIsA{REALservices::ObjectIsA};
inline constinit REALhostService raiseException{REALservices::RaiseException};
inline constinit REALhostService setInt32Property{REALservices::SetPropValueInt32};
inline constinit REALhostService setStringProperty{REALservices::SetPropValueString};
inline constinit REALhostService buildString{REALservices::BuildString};
inline constinit REALhostService copyCFString{REALservices::GetStringCFString};
inline constinit REALhostService setStringEncoding{REALservices::SetStringEncoding};
inline constinit REALhostService unlockString{REALservices::UnlockString};

/// Holds one host reference, which `release` gives back.
template <typename Pointer, auto& release>
class HostReference {
public:
    HostReference() = default;
    static HostReference adopt(Pointer pointer) { return HostReference(pointer); }
    HostReference(HostReference&& other) noexcept
        : pointer_(std::exchange(other.pointer_, nullptr)) {}
    HostReference& operator=(HostReference&& other) noexcept {
        std::swap(pointer_, other.pointer_);
        return *this;
    }
    ~HostReference() {
        if (pointer_) release(pointer_);
    }

    Pointer get() const { return pointer_; }
    explicit operator bool() const { return pointer_ != nullptr; }
    /// Hands the reference to the caller.
    [[nodiscard]] Pointer leak() { return std::exchange(pointer_, nullptr); }

private:
    explicit HostReference(Pointer pointer)
        : pointer_(pointer) {}

    Pointer pointer_ = nullptr;
};

using HostObject = HostReference<REALobjectStruct*, unlockObject>;
using HostString = HostReference<REALstringStruct*, unlockString>;
