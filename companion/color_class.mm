#include "companion/classes.h"
#include "companion/host_strings.h"
#include "companion/wrapping.h"
#include "sdk/tables.h"

using namespace REALtables;

namespace base_part {
namespace {

/// Components are between 0 and 1. Asking for one that the colour's space does not have raises.
// clang-format off
REALproperty properties[] = {
    property("Handle", "Integer", handle),
    property("colorSpaceName", "String",
             getter([](NSColor* color) { return newHostString((CFStringRef)[color colorSpaceName]).leak(); })),
    property("colorSpace", "NSColorSpaceZNT", getter([](NSColor* color) { return [color colorSpace]; })),
    property("numberOfComponents", "Integer",
             getter([](NSColor* color) -> REALword { return [color numberOfComponents]; })),
    property("redComponent", "Double", getter([](NSColor* color) -> double { return [color redComponent]; })),
    property("greenComponent", "Double", getter([](NSColor* color) -> double { return [color greenComponent]; })),
    property("blueComponent", "Double", getter([](NSColor* color) -> double { return [color blueComponent]; })),
    property("whiteComponent", "Double", getter([](NSColor* color) -> double { return [color whiteComponent]; })),
    property("cyanComponent", "Double", getter([](NSColor* color) -> double { return [color cyanComponent]; })),
    property("magentaComponent", "Double", getter([](NSColor* color) -> double { return [color magentaComponent]; })),
    property("yellowComponent", "Double", getter([](NSColor* color) -> double { return [color yellowComponent]; })),
    property("blackComponent", "Double", getter([](NSColor* color) -> double { return [color blackComponent]; })),
    property("alphaComponent", "Double", getter([](NSColor* color) -> double { return [color alphaComponent]; })),
};

REALmethod methods[] = {
    method("colorWithAlphaComponent(alpha as double) as NSColorZNT",
           member([](NSColor* color, double alpha) { return [color colorWithAlphaComponent:static_cast<CGFloat>(alpha)]; })),
    method("colorUsingColorSpace(space as NSColorSpaceZNT) as NSColorZNT",
           member([](NSColor* color, REALobjectStruct* space) { return [color colorUsingColorSpace:wrappedBy<NSColorSpace>(space)]; })),
};

REALmethod sharedMethods[] = {
    shared_method("colorWithDeviceRGB(red as double, green as double, blue as double, alpha as double = 1) as NSColorZNT",
                  maker([](double red, double green, double blue, double alpha) {
                      return [NSColor colorWithDeviceRed:static_cast<CGFloat>(red) green:static_cast<CGFloat>(green)
                                                    blue:static_cast<CGFloat>(blue) alpha:static_cast<CGFloat>(alpha)];
                  })),
    shared_method("colorWithCalibratedRGB(red as double, green as double, blue as double, alpha as double = 1) as NSColorZNT",
                  maker([](double red, double green, double blue, double alpha) {
                      return [NSColor colorWithCalibratedRed:static_cast<CGFloat>(red) green:static_cast<CGFloat>(green)
                                                        blue:static_cast<CGFloat>(blue) alpha:static_cast<CGFloat>(alpha)];
                  })),
    shared_method("colorWithDeviceWhite(white as double, alpha as double = 1) as NSColorZNT",
                  maker([](double white, double alpha) {
                      return [NSColor colorWithDeviceWhite:static_cast<CGFloat>(white) alpha:static_cast<CGFloat>(alpha)];
                  })),
    shared_method("colorWithCalibratedWhite(white as double, alpha as double = 1) as NSColorZNT",
                  maker([](double white, double alpha) {
                      return [NSColor colorWithCalibratedWhite:static_cast<CGFloat>(white) alpha:static_cast<CGFloat>(alpha)];
                  })),
    shared_method("colorWithDeviceCMYK(cyan as double, magenta as double, yellow as double, black as double, alpha as double = 1) as NSColorZNT",
                  maker([](double cyan, double magenta, double yellow, double black, double alpha) {
                      return [NSColor colorWithDeviceCyan:static_cast<CGFloat>(cyan) magenta:static_cast<CGFloat>(magenta)
                                                   yellow:static_cast<CGFloat>(yellow) black:static_cast<CGFloat>(black)
                                                    alpha:static_cast<CGFloat>(alpha)];
                  })),
    shared_method("blackColor as NSColorZNT", maker([] { return [NSColor blackColor]; })),
    shared_method("darkGrayColor as NSColorZNT", maker([] { return [NSColor darkGrayColor]; })),
    shared_method("lightGrayColor as NSColorZNT", maker([] { return [NSColor lightGrayColor]; })),
    shared_method("whiteColor as NSColorZNT", maker([] { return [NSColor whiteColor]; })),
    shared_method("grayColor as NSColorZNT", maker([] { return [NSColor grayColor]; })),
    shared_method("redColor as NSColorZNT", maker([] { return [NSColor redColor]; })),
    shared_method("greenColor as NSColorZNT", maker([] { return [NSColor greenColor]; })),
    shared_method("blueColor as NSColorZNT", maker([] { return [NSColor blueColor]; })),
    shared_method("cyanColor as NSColorZNT", maker([] { return [NSColor cyanColor]; })),
    shared_method("yellowColor as NSColorZNT", maker([] { return [NSColor yellowColor]; })),
    shared_method("magentaColor as NSColorZNT", maker([] { return [NSColor magentaColor]; })),
    shared_method("orangeColor as NSColorZNT", maker([] { return [NSColor orangeColor]; })),
    shared_method("purpleColor as NSColorZNT", maker([] { return [NSColor purpleColor]; })),
    shared_method("brownColor as NSColorZNT", maker([] { return [NSColor brownColor]; })),
    shared_method("clearColor as NSColorZNT", maker([] { return [NSColor clearColor]; })),
};
// clang-format on

} // namespace

REALclassDefinition colorClass = class_definition({
    .name = "NSColorZNT",
    .instanceDataSize = sizeof(NSColor*),
    .destructor = destroyWrapper,
    .properties = properties,
    .methods = methods,
    .sharedMethods = sharedMethods,
});

} // namespace base_part
