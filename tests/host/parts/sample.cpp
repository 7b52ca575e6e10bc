/// A plug-in with one class, whose answers tell what the host told it.

#include "sdk/registration.h"
#include "sdk/tables.h"

namespace {

REALword controlVersion() { return CurrentREALControlVersion; }
double hostVersion() { return rbversion; }

std::array<REALmethod, 2> sharedMethods{
    REALtables::shared_method("ControlVersion() As Integer", controlVersion),
    REALtables::shared_method("HostVersion() As Double", hostVersion),
};

REALclassDefinition definition = REALtables::class_definition(
    {.name = "SamplePart", .instanceDataSize = 4, .sharedMethods = sharedMethods});

} // namespace

extern "C" __attribute__((visibility("default"))) void REALPluginMain(REALresolver resolver) {
    REALregistration::take_up_host(resolver);
    MyREALRegisterClass(definition);
}
