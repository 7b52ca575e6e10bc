#include "companion/classes.h"
#include "companion/core_foundation_wrapping.h"
#include "companion/host_strings.h"
#include "sdk/tables.h"

using namespace REALtables;

namespace base_part {
namespace {

template <typename Message>
auto ofColor(Message message) {
    return coreFoundationGetter<CGColorRef, CGColorGetTypeID>(message);
}

template <typename Message>
auto ofSpace(Message message) {
    return coreFoundationGetter<CGColorSpaceRef, CGColorSpaceGetTypeID>(message);
}

REALobjectStruct* newSpaceWrapper(CGColorSpaceRef space) {
    return newCoreFoundationWrapper(space, "CGColorSpaceZNT");
}

template <CGColorSpaceRef (*create)()>
REALobjectStruct* createSpace() {
    return inFrame([] { return newSpaceWrapper((CGColorSpaceRef)[(id)create() autorelease]); });
}

REALobjectStruct* createRGBColor(double red, double green, double blue, double alpha) {
    return inFrame([&] {
        CGColorRef const color =
            CGColorCreateGenericRGB(static_cast<CGFloat>(red), static_cast<CGFloat>(green),
                                    static_cast<CGFloat>(blue), static_cast<CGFloat>(alpha));
        return newCoreFoundationWrapper([(id)color autorelease], "CGColorZNT");
    });
}

/// Of the components, of which the alpha is the last; 0 beyond them.
double colorComponent(REALobjectStruct* wrapper, REALword index) {
    return inFrame([&]() -> double {
        const auto color = (CGColorRef)wrappedOfType(wrapper, CGColorGetTypeID());
        const auto count = static_cast<REALword>(CGColorGetNumberOfComponents(color));
        return index >= 0 && index < count ? CGColorGetComponents(color)[index] : 0;
    });
}

// clang-format off
REALproperty colorProperties[] = {
    property("NumberOfComponents", "Integer", ofColor([](CGColorRef color) { return static_cast<REALword>(CGColorGetNumberOfComponents(color)); })),
    property("Alpha", "Double", ofColor([](CGColorRef color) -> double { return CGColorGetAlpha(color); })),
    property("ColorSpace", "CGColorSpaceZNT", ofColor([](CGColorRef color) { return newSpaceWrapper(CGColorGetColorSpace(color)); })),
};
REALmethod colorMethods[] = {
    method("Component(index as Integer) as Double", colorComponent),
};
REALmethod colorSharedMethods[] = {
    shared_method("CreateGenericRGB(red as double, green as double, blue as double, alpha as double = 1) as CGColorZNT", createRGBColor),
};

REALproperty spaceProperties[] = {
    property("NumberOfComponents", "Integer", ofSpace([](CGColorSpaceRef space) { return static_cast<REALword>(CGColorSpaceGetNumberOfComponents(space)); })),
    property("Model", "Integer", ofSpace([](CGColorSpaceRef space) { return static_cast<REALword>(CGColorSpaceGetModel(space)); })),
};
REALmethod spaceSharedMethods[] = {
    shared_method("CreateDeviceRGB as CGColorSpaceZNT", createSpace<CGColorSpaceCreateDeviceRGB>),
    shared_method("CreateDeviceGray as CGColorSpaceZNT", createSpace<CGColorSpaceCreateDeviceGray>),
    shared_method("CreateDeviceCMYK as CGColorSpaceZNT", createSpace<CGColorSpaceCreateDeviceCMYK>),
};
// clang-format on

} // namespace

REALclassDefinition cgColorClass = class_definition({
    .name = "CGColorZNT",
    .superclass = "CFObjectZNT",
    .properties = colorProperties,
    .methods = colorMethods,
    .sharedMethods = colorSharedMethods,
});

REALclassDefinition cgColorSpaceClass = class_definition({
    .name = "CGColorSpaceZNT",
    .superclass = "CFObjectZNT",
    .properties = spaceProperties,
    .sharedMethods = spaceSharedMethods,
});

} // namespace base_part
