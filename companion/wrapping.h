#pragma once

/// Host objects that wrap a Cocoa object: the first word of their class data holds it, retained.

#include "companion/frame.h"
#include "companion/host_services.h"

#include <Cocoa/Cocoa.h>

#include <type_traits>

namespace base_part {

/// The wrapped object; null for a null host object.
template <typename Wrapped>
Wrapped* wrappedBy(REALobjectStruct* object) {
    return object ? *static_cast<Wrapped**>(REALfirstClassData(object)) : nullptr;
}

/// A wrapper for the caller: the live one of the object if there is one, otherwise a new one of the
/// host class. Null for nil, and when the host makes none.
REALobjectStruct* newWrapper(id object, const char* className);

inline REALobjectStruct* newWrapper(NSColor* color) { return newWrapper(color, "NSColorZNT"); }
inline REALobjectStruct* newWrapper(NSColorSpace* space) {
    return newWrapper(space, "NSColorSpaceZNT");
}
inline REALobjectStruct* newWrapper(NSAttributedString* string) {
    return newWrapper(string, "NSAttributedStringZNT");
}
inline REALobjectStruct* newWrapper(NSCharacterSet* set) {
    return newWrapper(set, "NSCharacterSetZNT");
}
inline REALobjectStruct* newWrapper(NSError* error) { return newWrapper(error, "NSErrorZNT"); }
inline REALobjectStruct* newWrapper(NSLocale* locale) { return newWrapper(locale, "NSLocaleZNT"); }
inline REALobjectStruct* newWrapper(NSTimeZone* zone) { return newWrapper(zone, "NSTimeZoneZNT"); }

/// Takes the wrapper out of the live ones, and gives back what it holds.
void destroyWrapper(REALobjectStruct* object);

/// The wrapped object's address, as the property "Handle" tells it.
REALword handle(REALobjectStruct* object, REALword parameter);

/// What a member returns to the host: wrappers for objects, everything else as it is.
template <typename Result>
auto toHost(Result result) {
    if constexpr (std::is_convertible_v<Result, id>)
        return newWrapper(result);
    else
        return result;
}

namespace detail {

template <typename Message, typename Result, typename Wrapped>
auto getterOf(Result (Message::*)(Wrapped*) const) {
    return +[](REALobjectStruct* object, REALword) {
        return inFrame([&] { return toHost(Message{}(wrappedBy<Wrapped>(object))); });
    };
}

template <typename Message, typename Result, typename Wrapped, typename... Arguments>
auto memberOf(Result (Message::*)(Wrapped*, Arguments...) const) {
    return +[](REALobjectStruct* object, Arguments... arguments) {
        return inFrame([&] { return toHost(Message{}(wrappedBy<Wrapped>(object), arguments...)); });
    };
}

template <typename Message, typename Result, typename... Arguments>
auto makerOf(Result (Message::*)(Arguments...) const) {
    return +[](Arguments... arguments) {
        return inFrame([&] { return toHost(Message{}(arguments...)); });
    };
}

} // namespace detail

// Functions for the class tables, of lambdas that send one message.

/// A property of a lambda `Value (Wrapped*)`.
template <typename Message>
auto getter(Message) {
    return detail::getterOf(&Message::operator());
}

/// A method of a lambda `Result (Wrapped*, Arguments...)`.
template <typename Message>
auto member(Message) {
    return detail::memberOf(&Message::operator());
}

/// A shared method of a lambda `Result (Arguments...)`.
template <typename Message>
auto maker(Message) {
    return detail::makerOf(&Message::operator());
}

} // namespace base_part
