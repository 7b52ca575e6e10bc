#import <AppKit/NSColorSpace.h>

#include "cocoa/AppKit/ownership.h"

using namespace cocoa::appkit;

@interface NSColorSpace (Private)
- (id)initWithOwnedSpace:(CGColorSpaceRef)space name:(NSString*)name;
@end

namespace {

/// The shared objects live as long as the process.
NSColorSpace* shared(CGColorSpaceRef created, NSString* name) {
    return [[NSColorSpace alloc] initWithOwnedSpace:created name:name];
}

} // namespace

@implementation NSColorSpace

+ (NSColorSpace*)deviceRGBColorSpace {
    static NSColorSpace* space = shared(CGColorSpaceCreateDeviceRGB(), @"Device RGB");
    return space;
}

+ (NSColorSpace*)genericRGBColorSpace {
    static NSColorSpace* space =
        shared(CGColorSpaceCreateWithName(kCGColorSpaceGenericRGB), @"Generic RGB");
    return space;
}

+ (NSColorSpace*)sRGBColorSpace {
    static NSColorSpace* space =
        shared(CGColorSpaceCreateWithName(kCGColorSpaceSRGB), @"sRGB IEC61966-2.1");
    return space;
}

+ (NSColorSpace*)deviceGrayColorSpace {
    static NSColorSpace* space = shared(CGColorSpaceCreateDeviceGray(), @"Device Gray");
    return space;
}

+ (NSColorSpace*)genericGrayColorSpace {
    static NSColorSpace* space =
        shared(CGColorSpaceCreateWithName(kCGColorSpaceGenericGray), @"Generic Gray");
    return space;
}

+ (NSColorSpace*)deviceCMYKColorSpace {
    static NSColorSpace* space = shared(CGColorSpaceCreateDeviceCMYK(), @"Device CMYK");
    return space;
}

+ (NSColorSpace*)genericCMYKColorSpace {
    static NSColorSpace* space =
        shared(CGColorSpaceCreateWithName(kCGColorSpaceGenericCMYK), @"Generic CMYK");
    return space;
}

- (id)initWithICCProfileData:(NSData*)iccData {
    CGColorSpaceRef space =
        iccData ? CGColorSpaceCreateWithICCProfile((CFDataRef)iccData) : nullptr;
    return [self initWithOwnedSpace:space name:nil];
}

- (id)initWithCGColorSpace:(CGColorSpaceRef)cgColorSpace {
    return [self initWithOwnedSpace:CGColorSpaceRetain(cgColorSpace) name:nil];
}

- (void)dealloc {
    CGColorSpaceRelease(_colorSpace);
    [_localizedName release];
    [super dealloc];
}

- (id)copyWithZone:(NSZone*)zone {
    return [self retain];
}

- (NSData*)ICCProfileData {
    return [(NSData*)CGColorSpaceCopyICCProfile(_colorSpace) autorelease];
}

- (CGColorSpaceRef)CGColorSpace {
    return _colorSpace;
}

- (NSInteger)numberOfColorComponents {
    return static_cast<NSInteger>(CGColorSpaceGetNumberOfComponents(_colorSpace));
}

- (NSColorSpaceModel)colorSpaceModel {
    return CGColorSpaceGetModel(_colorSpace);
}

- (NSString*)localizedName {
    return _localizedName;
}

- (NSUInteger)hash {
    return static_cast<NSUInteger>([self colorSpaceModel]) + 1;
}

- (BOOL)isEqual:(id)object {
    if (object == self) return YES;
    if (![object isKindOfClass:[NSColorSpace class]]) return NO;
    return CFEqual(_colorSpace, [object CGColorSpace]);
}

- (NSString*)description {
    return _localizedName ? [NSString stringWithFormat:@"%@ colorspace", _localizedName]
                          : [super description];
}

@end

@implementation NSColorSpace (Private)

/// Takes over the space; nil for null.
- (id)initWithOwnedSpace:(CGColorSpaceRef)space name:(NSString*)name {
    self = [super init];
    if (!self || !space) {
        CGColorSpaceRelease(space);
        [self release];
        return nil;
    }
    _colorSpace = space;
    if (!name) name = [(NSString*)CGColorSpaceCopyName(space) autorelease];
    _localizedName = [name copy];
    return self;
}

@end
