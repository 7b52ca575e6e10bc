#pragma once

#include <AppKit/AppKitDefines.h>
#include <AppKit/NSGraphics.h>

@class NSColorSpace;

/// A colour: components between 0 and 1 in a named or given colour space, and alpha. Immutable;
/// components out of range are brought into it.
@interface NSColor : NSObject <NSCopying> {
@private
    NSString* _colorSpaceName;
    NSColorSpace* _colorSpace;
    CGFloat _components[5]; // the last one in use is alpha
    NSInteger _componentCount;
}

+ (NSColor*)colorWithCalibratedWhite:(CGFloat)white alpha:(CGFloat)alpha;
+ (NSColor*)colorWithCalibratedRed:(CGFloat)red
                             green:(CGFloat)green
                              blue:(CGFloat)blue
                             alpha:(CGFloat)alpha;
+ (NSColor*)colorWithDeviceWhite:(CGFloat)white alpha:(CGFloat)alpha;
+ (NSColor*)colorWithDeviceRed:(CGFloat)red
                         green:(CGFloat)green
                          blue:(CGFloat)blue
                         alpha:(CGFloat)alpha;
+ (NSColor*)colorWithDeviceCyan:(CGFloat)cyan
                        magenta:(CGFloat)magenta
                         yellow:(CGFloat)yellow
                          black:(CGFloat)black
                          alpha:(CGFloat)alpha;
/// `components` are the space's own components and alpha, `numberOfComponents` in all; nil when
/// that is not the space's number.
+ (NSColor*)colorWithColorSpace:(NSColorSpace*)space
                     components:(const CGFloat*)components
                          count:(NSInteger)numberOfComponents;

+ (NSColor*)blackColor;     ///< calibrated white 0
+ (NSColor*)darkGrayColor;  ///< 1/3
+ (NSColor*)lightGrayColor; ///< 2/3
+ (NSColor*)whiteColor;     ///< 1
+ (NSColor*)grayColor;      ///< 1/2
+ (NSColor*)redColor;       ///< calibrated RGB, as all that follow
+ (NSColor*)greenColor;
+ (NSColor*)blueColor;
+ (NSColor*)cyanColor;
+ (NSColor*)yellowColor;
+ (NSColor*)magentaColor;
+ (NSColor*)orangeColor;
+ (NSColor*)purpleColor;
+ (NSColor*)brownColor;
+ (NSColor*)clearColor; ///< calibrated white 0, alpha 0

/// Make the receiver the colour that the current context fills with.
- (void)set;
- (void)setFill;

- (NSString*)colorSpaceName;
- (NSColorSpace*)colorSpace;

/// The same colour in another space; self when it is there already; nil when it cannot be had
/// there.
- (NSColor*)colorUsingColorSpaceName:(NSString*)colorSpace;
- (NSColor*)colorUsingColorSpaceName:(NSString*)colorSpace device:(NSDictionary*)deviceDescription;
- (NSColor*)colorUsingColorSpace:(NSColorSpace*)space;
- (NSColor*)colorWithAlphaComponent:(CGFloat)alpha;

/// Raise NSInvalidArgumentException for a colour of another kind of space. Any pointer may be null.
- (CGFloat)redComponent;
- (CGFloat)greenComponent;
- (CGFloat)blueComponent;
- (void)getRed:(CGFloat*)red green:(CGFloat*)green blue:(CGFloat*)blue alpha:(CGFloat*)alpha;
- (CGFloat)whiteComponent;
- (void)getWhite:(CGFloat*)white alpha:(CGFloat*)alpha;
- (CGFloat)cyanComponent;
- (CGFloat)magentaComponent;
- (CGFloat)yellowComponent;
- (CGFloat)blackComponent;
- (void)getCyan:(CGFloat*)cyan
        magenta:(CGFloat*)magenta
         yellow:(CGFloat*)yellow
          black:(CGFloat*)black
          alpha:(CGFloat*)alpha;

- (CGFloat)alphaComponent;
- (NSInteger)numberOfComponents; ///< with alpha
- (void)getComponents:(CGFloat*)components;

@end
