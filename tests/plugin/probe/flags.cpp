#include "sdk/tables.h"
#include "tests/plugin/probe/probe.h"

using namespace REALtables;

/// A class with every list and every request of a flag, and marks in the words that only newer
/// hosts know.
namespace {

void nothing(REALobjectStruct*) {}
void nothing_shared() {}
REALword zero(REALobjectStruct*, REALword) { return 0; }

REALproperty property_with(const char* name, REALword flags) {
    REALproperty entry = property(name, "Integer", zero);
    entry.flags = flags;
    entry.reserved[3] = 0x1111;
    entry.reserved[4] = 0x2222;
    return entry;
}

constexpr REALword everyRequest =
    REALconsoleSafeOnNewHosts | REALsystemFlag8OnNewHosts | REALreservedRequest;

REALmethod methods[] = {
    method("Plain", nothing),
    method("ConsoleOnNewHosts", nothing, REALconsoleSafeOnNewHosts),
    method("Flag8OnNewHosts", nothing, REALsystemFlag8OnNewHosts),
    method("Reserved", nothing, REALreservedRequest),
    method("EveryRequest", nothing, REALconstructorFlag80 | everyRequest),
};
REALmethod sharedMethods[] = {
    shared_method("SharedConsoleOnNewHosts", nothing_shared, REALconsoleSafeOnNewHosts),
};
REALproperty properties[] = {property_with("Asking", 2 | REALconsoleSafeOnNewHosts)};
REALproperty sharedProperties[] = {property_with("SharedAsking", 2 | REALconsoleSafeOnNewHosts)};
REALconstant constants[] = {constant("Answer=42")};
REALevent events[] = {{"Happened(what as String)", 0, 0, nullptr}, {"Ended", 0, 0, nullptr}};

} // namespace

REALclassDefinition FlagProbe = [] {
    REALclassDefinition definition = class_definition({
        .name = "FlagProbe",
        .instanceDataSize = 17,
        .properties = properties,
        .methods = methods,
        .constants = constants,
        .sharedMethods = sharedMethods,
        .flags = everyRequest,
    });
    definition.sharedProperties = sharedProperties;
    definition.sharedPropertyCount = 1;
    definition.events = events;
    definition.eventCount = 2;
    return definition;
}();
