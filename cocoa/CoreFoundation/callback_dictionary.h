#pragma once

/// The dictionaries that Core Foundation makes.

#import <Foundation/Foundation.h>

#include "cocoa/CoreFoundation/callbacks.h"

#include <unordered_map>

namespace cocoa {

using CallbackTable = std::unordered_map<const void*, const void*, KeyHash, KeyEqual>;

} // namespace cocoa

/// A dictionary whose keys and values are what its callbacks make of them. Keys are retained, not
/// copied, by the functions; `-setObject:forKey:` copies as every NSMutableDictionary does, where
/// the keys are objects.
@interface CocoaCallbackDictionary : NSMutableDictionary {
@private
    cocoa::CallbackTable* table;
    CFDictionaryKeyCallBacks keyCallBacks;
    CFDictionaryValueCallBacks valueCallBacks;
    unsigned long mutations;
    BOOL immutable;
}
- (id)initWithKeyCallBacks:(const CFDictionaryKeyCallBacks*)keys
            valueCallBacks:(const CFDictionaryValueCallBacks*)values;
/// The same entries and callbacks, mutable.
- (id)initWithTableOf:(CocoaCallbackDictionary*)other;
/// Changes raise from now on.
- (void)makeImmutable;

- (const cocoa::CallbackTable&)table;
- (void)setValue:(const void*)value forPointer:(const void*)key;
- (void)removePointer:(const void*)key;
- (BOOL)isValue:(const void*)value equalTo:(const void*)other;
@end
