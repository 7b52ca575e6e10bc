#include "companion/classes.h"
#include "sdk/registration.h"

#include <initializer_list>

/// The host calls this once, before anything else; `resolver` maps the name of a host service to
/// its address, or to null.
extern "C" __attribute__((visibility("default"))) void REALPluginMain(REALresolver resolver) {
    REALregistration::take_up_host(resolver);
    using namespace base_part;
    for (REALclassDefinition* definition : {&sizeClass,          &pointClass,
                                            &rectClass,          &rangeClass,
                                            &qtTimeClass,        &qtTimeRangeClass,
                                            &cmTimeClass,        &cmTimeRangeClass,
                                            &cmTimeMappingClass, &colorSpaceClass,
                                            &colorClass,         &imageClass,
                                            &objectClass,        &attributedStringClass,
                                            &characterSetClass,  &errorClass,
                                            &localeClass,        &timeZoneClass,
                                            &cfObjectClass,      &cfErrorClass,
                                            &cfUUIDClass,        &cgColorClass,
                                            &cgColorSpaceClass})
        MyREALRegisterClass(*definition);
}
