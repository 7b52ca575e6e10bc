#include "host/objects/runtime.h"
#include "host/plugins/definitions.h"
#include "host/services/arguments.h"
#include "host/services/exports.h"

namespace host::exports {

double getRBVersion() { return Runtime::current().options().version; }

void registerPluginVersion(std::int32_t controlVersion) {
    Runtime& runtime = Runtime::current();
    const int newest = newestControlVersion(runtime.options().version);
    if (controlVersion < oldestControlVersion || controlVersion > newest)
        runtime.reportMisuse("control version " + std::to_string(controlVersion) +
                             " is not one of " + std::to_string(oldestControlVersion) + " to " +
                             std::to_string(newest));
    else
        runtime.controlVersion = controlVersion;
}

void registerClass(REALclassDefinition* definition) {
    if (arguments::isGiven(1, definition)) readDefinition(Runtime::current(), definition);
}

} // namespace host::exports
