#pragma once

/// What every plug-in part does at start-up: takes up the host, and hands over its classes in the
/// layout that this host understands.

#include "sdk/host_service.h"
#include "sdk/records.h"

#include <cstring>

/// The host's version, for example 2013.03; 0 when the host does not tell.
inline __attribute__((visibility("hidden"))) double rbversion = 0.0;

/// The layout of class definitions chosen for the host: 9, 10, 11 or 12.
inline __attribute__((visibility("hidden"))) std::int32_t CurrentREALControlVersion = 0;

namespace REALregistration {

constexpr std::int32_t control_version(double hostVersion) {
    if (hostVersion >= 2013.03) return 12;
    if (hostVersion >= 2013.0) return 11;
    if (hostVersion >= 2012.0) return 10;
    return 9;
}

/// Keeps the resolver, reads the host's version and tells the host the control version.
inline void take_up_host(REALresolver resolver) {
    using RegisterVersion = decltype(REALservices::RegisterPluginVersion)::Function;
    using GetVersion = decltype(REALservices::GetRBVersion)::Function;
    gResolver = resolver;
    auto* const registerVersion =
        reinterpret_cast<RegisterVersion*>(resolver(REALservices::RegisterPluginVersion.name));
    if (auto* const getVersion =
            reinterpret_cast<GetVersion*>(resolver(REALservices::GetRBVersion.name)))
        rbversion = getVersion();
    CurrentREALControlVersion = control_version(rbversion);
    if (registerVersion) registerVersion(CurrentREALControlVersion);
}

/// Copies of the records cut to the length that older hosts know; null for none. The host keeps the
/// copies as long as the process lives.
template <typename Older, typename Record>
Older* shortened(const Record* records, REALword count) {
    static_assert(sizeof(Older) < sizeof(Record));
    if (!records || count <= 0) return nullptr;
    auto* const copies = new Older[static_cast<std::size_t>(count)];
    for (REALword i = 0; i < count; ++i)
        std::memcpy(&copies[i], &records[i], sizeof(Older));
    return copies;
}

} // namespace REALregistration

/// The properties in the layout of hosts with control version 9; null for none.
inline REALpropertyVersion9* FixProperties(const REALproperty* properties, REALword count) {
    return REALregistration::shortened<REALpropertyVersion9>(properties, count);
}

/// Rewrites a definition for hosts of control version 9: its lists become lists of the shorter
/// records, and its last four words lose their meaning.
inline void REALconvertToVersion9(REALclassDefinition& definition) {
    using REALregistration::shortened;
    const auto methods = [](void* records, REALword count) -> void* {
        return shortened<REALmethodVersion9>(static_cast<REALmethod*>(records), count);
    };
    const auto properties = [](void* records, REALword count) -> void* {
        return FixProperties(static_cast<REALproperty*>(records), count);
    };

    auto* const events = static_cast<REALevent*>(definition.events);
    auto* const olderEvents = shortened<REALeventVersion9>(events, definition.eventCount);
    for (REALword i = 0; olderEvents && i < definition.eventCount; ++i)
        events[i].systemUse = reinterpret_cast<REALword>(&olderEvents[i]);

    definition.version = CurrentREALControlVersion;
    definition.properties = properties(definition.properties, definition.propertyCount);
    definition.methods = methods(definition.methods, definition.methodCount);
    definition.events = olderEvents;
    definition.bindings = nullptr;
    definition.bindingCount = 0;
    definition.constants = shortened<REALconstantVersion9>(
        static_cast<REALconstant*>(definition.constants), definition.constantCount);
    definition.sharedProperties =
        properties(definition.sharedProperties, definition.sharedPropertyCount);
    definition.sharedMethods = methods(definition.sharedMethods, definition.sharedMethodCount);
}

/// Registers a class. The definition is changed in place, so this runs once for each, and the
/// definition must live as long as the process: the host writes into it and keeps it.
inline void MyREALRegisterClass(REALclassDefinition& definition) {
    static constinit REALhostService<decltype(REALservices::RegisterClass)::Function> registerClass{
        REALservices::RegisterClass};

    definition.instanceDataSize = (definition.instanceDataSize + 15) & ~REALword{15};
    if (CurrentREALControlVersion > 9)
        definition.version = CurrentREALControlVersion;
    else
        REALconvertToVersion9(definition);
    registerClass(&definition);
}
