#pragma once

#include <AppKit/AppKitDefines.h>

enum {
    NSUnknownColorSpaceModel = -1,
    NSGrayColorSpaceModel = 0,
    NSRGBColorSpaceModel = 1,
    NSCMYKColorSpaceModel = 2,
    NSLABColorSpaceModel = 3,
    NSDeviceNColorSpaceModel = 4,
    NSIndexedColorSpaceModel = 5,
    NSPatternColorSpaceModel = 6,
};
typedef NSInteger NSColorSpaceModel;

/// A colour space object; immutable. The class methods give one shared object each.
@interface NSColorSpace : NSObject <NSCopying> {
@private
    CGColorSpaceRef _colorSpace;
    NSString* _localizedName;
}

+ (NSColorSpace*)deviceRGBColorSpace;
+ (NSColorSpace*)genericRGBColorSpace;
+ (NSColorSpace*)sRGBColorSpace;
+ (NSColorSpace*)deviceGrayColorSpace;
+ (NSColorSpace*)genericGrayColorSpace;
+ (NSColorSpace*)deviceCMYKColorSpace;
+ (NSColorSpace*)genericCMYKColorSpace;

/// Nil for data that is not an ICC profile.
- (id)initWithICCProfileData:(NSData*)iccData;
/// Retains the space; nil for null.
- (id)initWithCGColorSpace:(CGColorSpaceRef)cgColorSpace;

- (NSData*)ICCProfileData; ///< nil for a device space
- (CGColorSpaceRef)CGColorSpace;
- (NSInteger)numberOfColorComponents; ///< without alpha
- (NSColorSpaceModel)colorSpaceModel;
- (NSString*)localizedName;

@end
