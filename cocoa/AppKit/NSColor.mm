#import <AppKit/NSColor.h>
#import <AppKit/NSColorSpace.h>
#import <AppKit/NSGraphicsContext.h>

#include "cocoa/AppKit/color_spaces.h"
#include "cocoa/AppKit/graphics.h"
#include "cocoa/AppKit/ownership.h"

#include <algorithm>
#include <array>

using namespace cocoa::appkit;

namespace {

constexpr NSInteger maximumComponents = 5;

/// Components of one model, as the conversions pass them on; alpha is apart.
struct Components {
    ColorModel model;
    std::array<CGFloat, 4> values;
};

CGFloat unit(CGFloat value) {
    return value > 0 ? std::min<CGFloat>(value, 1) : 0; // not a number: 0
}

Components toRGB(const Components& color) {
    const auto& v = color.values;
    switch (color.model) {
    case ColorModel::Gray:
        return {ColorModel::RGB, {v[0], v[0], v[0], 0}};
    case ColorModel::CMYK:
        return {ColorModel::RGB,
                {(1 - v[0]) * (1 - v[3]), (1 - v[1]) * (1 - v[3]), (1 - v[2]) * (1 - v[3]), 0}};
    case ColorModel::RGB:
        break;
    }
    return color;
}

Components converted(const Components& color, ColorModel model) {
    if (color.model == model) return color;
    const auto rgb = toRGB(color);
    const auto [red, green, blue, none] = rgb.values;
    switch (model) {
    case ColorModel::Gray: // with the weights that drawing into grey has
        return {model,
                {CGFloat(0.30) * red + CGFloat(0.59) * green + CGFloat(0.11) * blue, 0, 0, 0}};
    case ColorModel::CMYK: {
        const CGFloat light = std::max({red, green, blue});
        if (light == 0) return {model, {0, 0, 0, 1}};
        return {model, {1 - red / light, 1 - green / light, 1 - blue / light, 1 - light}};
    }
    case ColorModel::RGB:
        break;
    }
    return rgb;
}

NSColor* named(CGFloat red, CGFloat green, CGFloat blue) {
    return [NSColor colorWithCalibratedRed:red green:green blue:blue alpha:1];
}

} // namespace

@interface NSColor (Private)
- (id)initWithName:(NSString*)name
             space:(NSColorSpace*)space
        components:(const CGFloat*)components
             count:(NSInteger)count;
- (Components)plainComponents;
- (void)require:(ColorModel)model for:(SEL)selector;
@end

@implementation NSColor

+ (NSColor*)colorWithCalibratedWhite:(CGFloat)white alpha:(CGFloat)alpha {
    const CGFloat components[] = {white, alpha};
    return [[[NSColor alloc] initWithName:NSCalibratedWhiteColorSpace
                                    space:nil
                               components:components
                                    count:2] autorelease];
}

+ (NSColor*)colorWithCalibratedRed:(CGFloat)red
                             green:(CGFloat)green
                              blue:(CGFloat)blue
                             alpha:(CGFloat)alpha {
    const CGFloat components[] = {red, green, blue, alpha};
    return [[[NSColor alloc] initWithName:NSCalibratedRGBColorSpace
                                    space:nil
                               components:components
                                    count:4] autorelease];
}

+ (NSColor*)colorWithDeviceWhite:(CGFloat)white alpha:(CGFloat)alpha {
    const CGFloat components[] = {white, alpha};
    return [[[NSColor alloc] initWithName:NSDeviceWhiteColorSpace
                                    space:nil
                               components:components
                                    count:2] autorelease];
}

+ (NSColor*)colorWithDeviceRed:(CGFloat)red
                         green:(CGFloat)green
                          blue:(CGFloat)blue
                         alpha:(CGFloat)alpha {
    const CGFloat components[] = {red, green, blue, alpha};
    return [[[NSColor alloc] initWithName:NSDeviceRGBColorSpace
                                    space:nil
                               components:components
                                    count:4] autorelease];
}

+ (NSColor*)colorWithDeviceCyan:(CGFloat)cyan
                        magenta:(CGFloat)magenta
                         yellow:(CGFloat)yellow
                          black:(CGFloat)black
                          alpha:(CGFloat)alpha {
    const CGFloat components[] = {cyan, magenta, yellow, black, alpha};
    return [[[NSColor alloc] initWithName:NSDeviceCMYKColorSpace
                                    space:nil
                               components:components
                                    count:5] autorelease];
}

+ (NSColor*)colorWithColorSpace:(NSColorSpace*)space
                     components:(const CGFloat*)components
                          count:(NSInteger)numberOfComponents {
    if (!space || !components || numberOfComponents > maximumComponents) return nil;
    if (numberOfComponents != [space numberOfColorComponents] + 1) return nil;
    if (!modelOf([space CGColorSpace])) return nil;
    return [[[NSColor alloc] initWithName:NSCustomColorSpace
                                    space:space
                               components:components
                                    count:numberOfComponents] autorelease];
}

+ (NSColor*)blackColor {
    return [self colorWithCalibratedWhite:0 alpha:1];
}
+ (NSColor*)darkGrayColor {
    return [self colorWithCalibratedWhite:CGFloat(1) / 3 alpha:1];
}
+ (NSColor*)lightGrayColor {
    return [self colorWithCalibratedWhite:CGFloat(2) / 3 alpha:1];
}
+ (NSColor*)whiteColor {
    return [self colorWithCalibratedWhite:1 alpha:1];
}
+ (NSColor*)grayColor {
    return [self colorWithCalibratedWhite:CGFloat(0.5) alpha:1];
}
+ (NSColor*)redColor {
    return named(1, 0, 0);
}
+ (NSColor*)greenColor {
    return named(0, 1, 0);
}
+ (NSColor*)blueColor {
    return named(0, 0, 1);
}
+ (NSColor*)cyanColor {
    return named(0, 1, 1);
}
+ (NSColor*)yellowColor {
    return named(1, 1, 0);
}
+ (NSColor*)magentaColor {
    return named(1, 0, 1);
}
+ (NSColor*)orangeColor {
    return named(1, CGFloat(0.5), 0);
}
+ (NSColor*)purpleColor {
    return named(CGFloat(0.5), 0, CGFloat(0.5));
}
+ (NSColor*)brownColor {
    return named(CGFloat(0.6), CGFloat(0.4), CGFloat(0.2));
}
+ (NSColor*)clearColor {
    return [self colorWithCalibratedWhite:0 alpha:0];
}

- (id)init {
    const CGFloat black[] = {0, 1};
    return [self initWithName:NSCalibratedWhiteColorSpace space:nil components:black count:2];
}

- (void)dealloc {
    [_colorSpaceName release];
    [_colorSpace release];
    [super dealloc];
}

- (id)copyWithZone:(NSZone*)zone {
    return [self retain];
}

- (NSUInteger)hash {
    CGFloat sum = 0;
    for (NSInteger index = 0; index < _componentCount; ++index)
        sum = sum * 3 + _components[index] * 251;
    return static_cast<NSUInteger>(sum);
}

- (BOOL)isEqual:(id)object {
    if (object == self) return YES;
    if (![object isKindOfClass:[NSColor class]]) return NO;
    NSColor* other = object;
    if (_componentCount != other->_componentCount) return NO;
    if (![_colorSpaceName isEqual:other->_colorSpaceName]) return NO;
    if (_colorSpace && ![_colorSpace isEqual:other->_colorSpace]) return NO;
    return std::equal(_components, _components + _componentCount, other->_components);
}

- (NSString*)description {
    NSMutableString* text = [NSMutableString
        stringWithString:_colorSpace ? [_colorSpace description] : _colorSpaceName];
    for (NSInteger index = 0; index < _componentCount; ++index)
        [text appendFormat:@" %g", static_cast<double>(_components[index])];
    return text;
}

- (void)set {
    [self setFill];
}

- (void)setFill {
    NSGraphicsContext* current = [NSGraphicsContext currentContext];
    if (!current) return;
    const auto color = OwnedRef<CGColorRef>::adopt([self newCGColor]);
    CGContextSetFillColorWithColor(static_cast<CGContextRef>([current graphicsPort]), color.get());
}

- (NSString*)colorSpaceName {
    return _colorSpaceName;
}

- (NSColorSpace*)colorSpace {
    return _colorSpace ? _colorSpace : colorSpaceOfName(_colorSpaceName);
}

- (NSColor*)colorUsingColorSpaceName:(NSString*)colorSpace {
    return [self colorUsingColorSpaceName:colorSpace device:nil];
}

- (NSColor*)colorUsingColorSpaceName:(NSString*)colorSpace device:(NSDictionary*)deviceDescription {
    if (!colorSpace || [colorSpace isEqual:_colorSpaceName]) return self;
    const auto space = namedSpace(colorSpace);
    if (!space || space->zeroIsWhite) return nil;
    const auto target = converted([self plainComponents], space -> model);
    CGFloat components[maximumComponents];
    const NSInteger count = NSNumberOfColorComponents(colorSpace);
    std::copy_n(target.values.begin(), count, components);
    components[count] = [self alphaComponent];
    return [[[NSColor alloc] initWithName:colorSpace
                                    space:nil
                               components:components
                                    count:count + 1] autorelease];
}

- (NSColor*)colorUsingColorSpace:(NSColorSpace*)space {
    if ([space isEqual:[self colorSpace]]) return self;
    const auto model = space ? modelOf([space CGColorSpace]) : std::nullopt;
    if (!model) return nil;
    const auto target = converted([self plainComponents], *model);
    CGFloat components[maximumComponents];
    const NSInteger count = [space numberOfColorComponents];
    std::copy_n(target.values.begin(), count, components);
    components[count] = [self alphaComponent];
    return [NSColor colorWithColorSpace:space components:components count:count + 1];
}

- (NSColor*)colorWithAlphaComponent:(CGFloat)alpha {
    CGFloat components[maximumComponents];
    std::copy_n(_components, _componentCount, components);
    components[_componentCount - 1] = alpha;
    return [[[NSColor alloc] initWithName:_colorSpaceName
                                    space:_colorSpace
                               components:components
                                    count:_componentCount] autorelease];
}

- (CGFloat)redComponent {
    [self require:ColorModel::RGB for:_cmd];
    return _components[0];
}
- (CGFloat)greenComponent {
    [self require:ColorModel::RGB for:_cmd];
    return _components[1];
}
- (CGFloat)blueComponent {
    [self require:ColorModel::RGB for:_cmd];
    return _components[2];
}

- (void)getRed:(CGFloat*)red green:(CGFloat*)green blue:(CGFloat*)blue alpha:(CGFloat*)alpha {
    [self require:ColorModel::RGB for:_cmd];
    if (red) *red = _components[0];
    if (green) *green = _components[1];
    if (blue) *blue = _components[2];
    if (alpha) *alpha = _components[3];
}

- (CGFloat)whiteComponent {
    [self require:ColorModel::Gray for:_cmd];
    return _components[0];
}

- (void)getWhite:(CGFloat*)white alpha:(CGFloat*)alpha {
    [self require:ColorModel::Gray for:_cmd];
    if (white) *white = _components[0];
    if (alpha) *alpha = _components[1];
}

- (CGFloat)cyanComponent {
    [self require:ColorModel::CMYK for:_cmd];
    return _components[0];
}
- (CGFloat)magentaComponent {
    [self require:ColorModel::CMYK for:_cmd];
    return _components[1];
}
- (CGFloat)yellowComponent {
    [self require:ColorModel::CMYK for:_cmd];
    return _components[2];
}
- (CGFloat)blackComponent {
    [self require:ColorModel::CMYK for:_cmd];
    return _components[3];
}

- (void)getCyan:(CGFloat*)cyan
        magenta:(CGFloat*)magenta
         yellow:(CGFloat*)yellow
          black:(CGFloat*)black
          alpha:(CGFloat*)alpha {
    [self require:ColorModel::CMYK for:_cmd];
    if (cyan) *cyan = _components[0];
    if (magenta) *magenta = _components[1];
    if (yellow) *yellow = _components[2];
    if (black) *black = _components[3];
    if (alpha) *alpha = _components[4];
}

- (CGFloat)alphaComponent {
    return _components[_componentCount - 1];
}

- (NSInteger)numberOfComponents {
    return _componentCount;
}

- (void)getComponents:(CGFloat*)components {
    std::copy_n(_components, _componentCount, components);
}

@end

@implementation NSColor (Private)

- (id)initWithName:(NSString*)name
             space:(NSColorSpace*)space
        components:(const CGFloat*)components
             count:(NSInteger)count {
    self = [super init];
    if (!self) return nil;
    _colorSpaceName = [name copy];
    _colorSpace = [space retain];
    _componentCount = count;
    std::transform(components, components + count, _components, unit);
    return self;
}

- (CGColorRef)newCGColor {
    return CGColorCreate([[self colorSpace] CGColorSpace], _components);
}

- (Components)plainComponents {
    Components plain{*modelOf([[self colorSpace] CGColorSpace]), {}};
    std::copy_n(_components, _componentCount - 1, plain.values.begin());
    return plain;
}

- (void)require:(ColorModel)model for:(SEL)selector {
    if (modelOf([[self colorSpace] CGColorSpace]) == model) return;
    [NSException raise:NSInvalidArgumentException
                format:@"*** -%@ not valid for the NSColor %@; need to first convert colorspace.",
                       NSStringFromSelector(selector), self];
}

@end
