#include "companion/classes.h"
#include "companion/host_strings.h"
#include "companion/wrapping.h"
#include "sdk/tables.h"

using namespace REALtables;

namespace base_part {
namespace {

// clang-format off
REALproperty properties[] = {
    property("Handle", "Integer", handle),
    property("localizedName", "String",
             getter([](NSColorSpace* space) { return newHostString((CFStringRef)[space localizedName]).leak(); })),
    property("numberOfColorComponents", "Integer",
             getter([](NSColorSpace* space) -> REALword { return [space numberOfColorComponents]; })),
    property("colorSpaceModel", "Integer",
             getter([](NSColorSpace* space) -> REALword { return [space colorSpaceModel]; })),
};

REALmethod sharedMethods[] = {
    shared_method("deviceRGBColorSpace as NSColorSpaceZNT", maker([] { return [NSColorSpace deviceRGBColorSpace]; })),
    shared_method("genericRGBColorSpace as NSColorSpaceZNT", maker([] { return [NSColorSpace genericRGBColorSpace]; })),
    shared_method("sRGBColorSpace as NSColorSpaceZNT", maker([] { return [NSColorSpace sRGBColorSpace]; })),
    shared_method("deviceGrayColorSpace as NSColorSpaceZNT", maker([] { return [NSColorSpace deviceGrayColorSpace]; })),
    shared_method("genericGrayColorSpace as NSColorSpaceZNT", maker([] { return [NSColorSpace genericGrayColorSpace]; })),
    shared_method("deviceCMYKColorSpace as NSColorSpaceZNT", maker([] { return [NSColorSpace deviceCMYKColorSpace]; })),
    shared_method("genericCMYKColorSpace as NSColorSpaceZNT", maker([] { return [NSColorSpace genericCMYKColorSpace]; })),
};

REALconstant constants[] = {
    constant("NSUnknownColorSpaceModel=-1"),
    constant("NSGrayColorSpaceModel=0"),
    constant("NSRGBColorSpaceModel=1"),
    constant("NSCMYKColorSpaceModel=2"),
    constant("NSLABColorSpaceModel=3"),
    constant("NSDeviceNColorSpaceModel=4"),
    constant("NSIndexedColorSpaceModel=5"),
    constant("NSPatternColorSpaceModel=6"),
};
// clang-format on

} // namespace

REALclassDefinition colorSpaceClass = class_definition({
    .name = "NSColorSpaceZNT",
    .instanceDataSize = sizeof(NSColorSpace*),
    .destructor = destroyWrapper,
    .properties = properties,
    .constants = constants,
    .sharedMethods = sharedMethods,
});

} // namespace base_part
