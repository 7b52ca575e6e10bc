#import <AppKit/NSAffineTransform.h>

#include "cocoa/AppKit/graphics.h"

using namespace cocoa::appkit;

namespace {

CGAffineTransform toCG(NSAffineTransform* transform) {
    const NSAffineTransformStruct m = [transform transformStruct];
    return CGAffineTransformMake(m.m11, m.m12, m.m21, m.m22, m.tX, m.tY);
}

} // namespace

@implementation NSAffineTransform (NSAppKitAdditions)

- (void)set {
    NSGraphicsContext* context = [NSGraphicsContext currentContext];
    CGContextRef port = static_cast<CGContextRef>([context graphicsPort]);
    if (!port) return;
    CGContextConcatCTM(port, CGAffineTransformInvert(CGContextGetCTM(port)));
    CGContextConcatCTM(port, [context baseTransform]);
    CGContextConcatCTM(port, toCG(self));
}

- (void)concat {
    CGContextConcatCTM(currentPort(), toCG(self));
}

@end
