#pragma once

/// Host objects that wrap a Core Foundation object. They are never the live wrapper of it: every
/// time one is asked for, a new one is made.

#include "companion/frame.h"
#include "companion/wrapping.h"

#include <Cocoa/Cocoa.h>

namespace base_part {

/// "FCBR" in memory order on the machines that the layout comes from.
constexpr std::uint32_t coreFoundationTag = 0x52424346;

/// The class data of CFObjectZNT, which its subclasses share.
struct CoreFoundationData {
    CFTypeRef object; ///< retained
    REALword unused;
    std::uint32_t tag; ///< set by the class's own constructor
};

/// The constructor of CFObjectZNT.
void tagWrapper(REALobjectStruct* wrapper);

/// A new wrapper for the caller, which retains the object. Null for null, when the host makes none,
/// and when what it makes is not laid out so.
REALobjectStruct* newCoreFoundationWrapper(CFTypeRef object, const char* className);

/// The wrapped object; null for null, and for an object of another type, which a program can put
/// into a wrapper only by way of another part.
CFTypeRef wrappedOfType(REALobjectStruct* wrapper, CFTypeID type);

/// The function of a read-only property that asks the wrapped object; a null object gives 0, false
/// or null.
template <typename Ref, CFTypeID (*type)(), typename Message>
auto coreFoundationGetter(Message) {
    using Result = std::invoke_result_t<Message, Ref>;
    return +[](REALobjectStruct* wrapper, REALword) {
        return inFrame([&]() -> Result {
            const auto object = (Ref)wrappedOfType(wrapper, type());
            return object ? Message{}(object) : Result{};
        });
    };
}

} // namespace base_part
