#pragma once

/// Thread: work that goes on beside the main program. The program gives it as a Delegate, a
/// reference to one of its Subs.

#include "host/objects/object.h"

#include <functional>

namespace host {

/// What AddressOf gives. A program can hand it on, and nothing else.
struct Delegate : State {
    /// Throws nothing: what goes wrong ends the program.
    std::function<void(const ObjectRef& sender)> call;
};

ObjectRef newDelegate(std::function<void(const ObjectRef& sender)> call);

} // namespace host
