#include "cocoa/CoreFoundation/unit_string.h"

#include "cocoa/CoreFoundation/text_encoding.h"

/// Holds what Foundation's strings cannot.
@interface CocoaUnitString : NSString {
@private
    std::u16string* units;
}
- (id)initWithUnits:(std::u16string_view)given;
@end

@implementation CocoaUnitString

- (id)initWithUnits:(std::u16string_view)given {
    self = [super init];
    if (self) units = new std::u16string(given);
    return self;
}

- (void)dealloc {
    delete units;
    [super dealloc];
}

- (NSUInteger)length {
    return units->size();
}

- (unichar)characterAtIndex:(NSUInteger)index {
    if (index >= units->size())
        [NSException raise:NSRangeException
                    format:@"Index %lu in a string of %lu units", static_cast<unsigned long>(index),
                           static_cast<unsigned long>(units->size())];
    return (*units)[index];
}

- (id)copyWithZone:(NSZone*)zone {
    return [self retain];
}

/// Only a format lets Foundation's mutable strings take every unit.
- (id)mutableCopyWithZone:(NSZone*)zone {
    NSMutableString* const copy =
        [[NSMutableString allocWithZone:zone] initWithCapacity:units->size()];
    for (const unichar unit : *units)
        [copy appendFormat:@"%C", unit];
    return copy;
}

@end

namespace cocoa {
NSString* newStringOfUnits(std::u16string_view units) {
    const bool marked = !units.empty() && (units[0] == 0xFEFF || units[0] == 0xFFFE);
    if (marked || hasUnpairedSurrogate(units)) return [[CocoaUnitString alloc] initWithUnits:units];
    return [[NSString alloc] initWithCharacters:reinterpret_cast<const unichar*>(units.data())
                                         length:units.size()];
}

} // namespace cocoa
