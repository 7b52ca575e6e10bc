#pragma once

/// The host's record of an object, which the first word of the object points to.

#include "host/objects/class.h"

#include <cstring>

namespace host {

struct Control {
    const Class* type = nullptr;
    int references = 1;
    bool destroying = false;
    std::unique_ptr<State> state;
};

inline Control* controlOf(const REALobjectStruct* object) {
    Control* control = nullptr;
    std::memcpy(&control, &object->hostWords[0], sizeof control);
    return control;
}

inline void setControl(REALobjectStruct* object, Control* control) {
    std::memcpy(&object->hostWords[0], &control, sizeof control);
}

} // namespace host
