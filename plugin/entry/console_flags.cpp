#include "plugin/entry/console_flags.h"

#include "sdk/registration.h"

namespace {

REALword resolved(REALword flags) {
    constexpr double firstNewHost = 2010.029;
    if (rbversion >= firstNewHost) {
        if (flags & REALconsoleSafeOnNewHosts) flags |= REALconsoleSafe;
        if (flags & REALsystemFlag8OnNewHosts) flags |= REALsystemFlag8;
    }
    return flags & ~(REALconsoleSafeOnNewHosts | REALsystemFlag8OnNewHosts | REALreservedRequest);
}

template <typename Record>
void resolve_all(void* records, REALword count) {
    auto* const record = static_cast<Record*>(records);
    for (REALword i = 0; record && i < count; ++i)
        record[i].flags = resolved(record[i].flags);
}

} // namespace

void FixConsoleFlags(REALclassDefinition& definition) {
    definition.flags = resolved(definition.flags);
    resolve_all<REALmethod>(definition.methods, definition.methodCount);
    resolve_all<REALmethod>(definition.sharedMethods, definition.sharedMethodCount);
    resolve_all<REALproperty>(definition.properties, definition.propertyCount);
    resolve_all<REALproperty>(definition.sharedProperties, definition.sharedPropertyCount);
}
