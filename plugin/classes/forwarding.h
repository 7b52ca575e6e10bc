#pragma once

/// Accessors of properties, and methods, that only forward one message to the wrapped object:
///
///     property("cacheMode", "Integer",
///              getter([](NSImage* image) -> REALword { return [image cacheMode]; }),
///              setter([](NSImage* image, REALword mode) { [image setCacheMode:mode]; }))
///
/// They run in the light frame and make no test for nil: a message to nil does nothing and answers
/// the neutral value.

#include "plugin/classes/handle.h"
#include "plugin/entry/frames.h"

namespace forwarding {

template <typename Message, typename Result, typename Wrapped>
auto getter_of(Result (Message::*)(Wrapped*) const) {
    return +[](REALobjectStruct* object, REALword) -> Result {
        return LightFrame([&] { return Message{}(handle_of<Wrapped>(object)); });
    };
}

template <typename Message, typename Wrapped, typename Value>
auto setter_of(void (Message::*)(Wrapped*, Value) const) {
    return +[](REALobjectStruct* object, REALword, Value value) {
        LightFrame([&] { Message{}(handle_of<Wrapped>(object), value); });
    };
}

template <typename Message, typename Result, typename Wrapped, typename... Arguments>
auto forwarder_of(Result (Message::*)(Wrapped*, Arguments...) const) {
    return +[](REALobjectStruct* object, Arguments... arguments) -> Result {
        return LightFrame([&] { return Message{}(handle_of<Wrapped>(object), arguments...); });
    };
}

} // namespace forwarding

/// A property's getter of a lambda `Value (Wrapped*)`.
template <typename Message>
auto getter(Message) {
    return forwarding::getter_of(&Message::operator());
}

/// A property's setter of a lambda `void (Wrapped*, Value)`.
template <typename Message>
auto setter(Message) {
    return forwarding::setter_of(&Message::operator());
}

/// A method's function of a lambda `Result (Wrapped*, Arguments...)`.
template <typename Message>
auto forwarder(Message) {
    return forwarding::forwarder_of(&Message::operator());
}
