#pragma once

/// The arrays that Core Foundation makes.

#import <Foundation/Foundation.h>

#include "cocoa/CoreFoundation/callbacks.h"

#include <vector>

/// An array whose values are what its callbacks make of them.
@interface CocoaCallbackArray : NSMutableArray {
@private
    std::vector<const void*>* values;
    CFArrayCallBacks callBacks;
    unsigned long mutations;
    BOOL immutable;
}
- (id)initWithCallBacks:(const CFArrayCallBacks*)given;
/// The same values and callbacks, mutable.
- (id)initWithValuesOf:(CocoaCallbackArray*)other;
/// Changes raise from now on.
- (void)makeImmutable;

- (void)insertValue:(const void*)value atIndex:(NSUInteger)index;
- (void)replaceValueAtIndex:(NSUInteger)index with:(const void*)value;
- (BOOL)isValue:(const void*)value equalTo:(const void*)other;
@end
