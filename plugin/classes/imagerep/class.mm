/// The class NSImageRepZNT: one representation of an image.

#include "plugin/bridge/strings.h"
#include "plugin/classes/definitions.h"
#include "plugin/classes/forwarding.h"
#include "plugin/classes/imagerep/members.h"
#include "sdk/tables.h"

using namespace REALtables;
using namespace imagerep;

namespace {

// clang-format off
REALproperty properties[] = {
    field("Handle", "Integer"),

    // Pixels
    property("bitsPerSample", "Integer",
             getter([](NSImageRep* rep) -> REALword { return [rep bitsPerSample]; }),
             setter([](NSImageRep* rep, REALword bits) { [rep setBitsPerSample:bits]; })),
    property("pixelsWide", "Integer",
             getter([](NSImageRep* rep) -> REALword { return [rep pixelsWide]; }),
             setter([](NSImageRep* rep, REALword pixels) { [rep setPixelsWide:pixels]; })),
    property("pixelsHigh", "Integer",
             getter([](NSImageRep* rep) -> REALword { return [rep pixelsHigh]; }),
             setter([](NSImageRep* rep, REALword pixels) { [rep setPixelsHigh:pixels]; })),
    property("colorSpaceName", "String",
             getter([](NSImageRep* rep) { return CFString2RBString((CFStringRef)[rep colorSpaceName]); }),
             setter([](NSImageRep* rep, REALstringStruct* name) { [rep setColorSpaceName:NewNSString(name)]; })),
    property("hasAlpha", "Boolean",
             getter([](NSImageRep* rep) -> bool { return [rep hasAlpha]; }),
             setter([](NSImageRep* rep, bool flag) { [rep setAlpha:flag]; })),
    property("isOpaque", "Boolean",
             getter([](NSImageRep* rep) -> bool { return [rep isOpaque]; }),
             setter([](NSImageRep* rep, bool flag) { [rep setOpaque:flag]; })),

    // Points
    property("height", "Double", height),
    property("width", "Double", width),
    property("size", "NSSizeZNT", size, setSize),
};

REALmethod methods[] = {
    method("setSize(width as double, height as double)", setSizeOfNumbers),
    method("Constructor", construct_empty, REALconsoleSafe | REALconstructorFlag80),
};

REALconstant constants[] = {
    constant("NSImageRepMatchesDevice = 0"),
};

REALmethod sharedMethods[] = {
    shared_method("canInitWithData(data as memoryblock) as Boolean", canInitWithData),
};
// clang-format on

} // namespace

REALclassDefinition NSImageRepClass = class_definition({
    .name = "NSImageRepZNT",
    .instanceDataSize = sizeof(NSImageRep*),
    .constructor = NSImageRepConstructor,
    .destructor = NSImageRepDestructor,
    .properties = properties,
    .methods = methods,
    .constants = constants,
    .sharedMethods = sharedMethods,
});
