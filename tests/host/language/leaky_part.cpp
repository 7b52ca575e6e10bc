/// A plug-in that makes a string and never gives it back.

#include "sdk/services.h"

extern "C" __attribute__((visibility("default"))) void REALPluginMain(REALresolver resolver) {
    using BuildString = decltype(REALservices::BuildString)::Function;
    const auto build = reinterpret_cast<BuildString*>(resolver(REALservices::BuildString.name));
    build("forgotten", 9);
}
