#pragma once

#include <AppKit/AppKitDefines.h>
#include <Foundation/NSAffineTransform.h>

@interface NSAffineTransform (NSAppKitAdditions)

/// Makes the receiver the whole transform of the current context, relative to the context as it was
/// made (so a flipped context stays flipped). Nothing without a current context.
- (void)set;

/// Applies the receiver to coordinates before the current context's own transform.
- (void)concat;

@end
