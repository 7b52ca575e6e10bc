#include "cocoa/CoreGraphics/object.h"

#include "cocoa/CoreFoundation/type_ids.h"

#include <CoreGraphics/CoreGraphics.h>

#import <Foundation/Foundation.h>

/// What the objects have in common: the body, which goes with the object.
@interface CGObject : NSObject <CoreFoundationTyped> {
@public
    cocoa::cg::Body* body;
}
@end

@implementation CGObject

- (void)dealloc {
    delete body;
    [super dealloc];
}

- (CFTypeID)_cfTypeID {
    return cocoa::typeOfNothing;
}

- (NSString*)typeName {
    return @"CGObject";
}

- (BOOL)isEqual:(id)other {
    if (other == self) return YES;
    if (other == nil || [other class] != [self class]) return NO;
    return body->equals(*static_cast<CGObject*>(other)->body);
}

- (NSUInteger)hash {
    return body->hash();
}

- (NSString*)description {
    return [NSString stringWithFormat:@"<%@ %p>", [self typeName], self];
}

@end

#define CG_OBJECT_CLASS(name)                                                                      \
    @interface name                                                                                \
    ##Object : CGObject @end                                                                       \
    @implementation name                                                                           \
    ##Object - (CFTypeID)_cfTypeID { return cocoa::typeOf##name; }                                 \
    -(NSString*)typeName {                                                                         \
        return @ #name;                                                                            \
    }                                                                                              \
    @end                                                                                           \
    CFTypeID name##GetTypeID(void) { return cocoa::typeOf##name; }

CG_OBJECT_CLASS(CGColorSpace)
CG_OBJECT_CLASS(CGColor)
CG_OBJECT_CLASS(CGDataProvider)
CG_OBJECT_CLASS(CGImage)
CG_OBJECT_CLASS(CGContext)
CG_OBJECT_CLASS(CGDataConsumer)
CG_OBJECT_CLASS(CGLayer)

#undef CG_OBJECT_CLASS

// Types that no object is of.

CFTypeID CGFontGetTypeID(void) { return cocoa::typeOfCGFont; }

CFTypeID CGPSConverterGetTypeID(void) { return cocoa::typeOfCGPSConverter; }

const CFStringRef kCGColorSpaceGenericGray = (CFStringRef) @"kCGColorSpaceGenericGray";
const CFStringRef kCGColorSpaceGenericGrayGamma2_2 =
    (CFStringRef) @"kCGColorSpaceGenericGrayGamma2_2";
const CFStringRef kCGColorSpaceGenericRGB = (CFStringRef) @"kCGColorSpaceGenericRGB";
const CFStringRef kCGColorSpaceGenericCMYK = (CFStringRef) @"kCGColorSpaceGenericCMYK";
const CFStringRef kCGColorSpaceSRGB = (CFStringRef) @"kCGColorSpaceSRGB";

namespace cocoa::cg {

static Class classOf(Kind kind) {
    switch (kind) {
    case Kind::ColorSpace:
        return [CGColorSpaceObject class];
    case Kind::Color:
        return [CGColorObject class];
    case Kind::DataProvider:
        return [CGDataProviderObject class];
    case Kind::Image:
        return [CGImageObject class];
    case Kind::Context:
        return [CGContextObject class];
    case Kind::DataConsumer:
        return [CGDataConsumerObject class];
    case Kind::Layer:
        return [CGLayerObject class];
    }
    return Nil;
}

CFTypeRef makeObject(Kind kind, std::unique_ptr<Body> body) {
    if (!body) return nullptr;
    CGObject* object = [[classOf(kind) alloc] init];
    object->body = body.release();
    return object;
}

Body* bodyOfObject(CFTypeRef object) {
    return object != nullptr ? static_cast<CGObject*>((id)object)->body : nullptr;
}

CFTypeRef retainObject(CFTypeRef object) { return [(id)object retain]; }

void releaseObject(CFTypeRef object) { [(id)object release]; }

} // namespace cocoa::cg
