#import <Foundation/Foundation.h>

#include <cstring>
#include <limits>
#include <objc/runtime.h>

/// Cocoa's errors are equal by value, always have a dictionary, and say what happened in a
/// sentence. They never change, so a copy is the same object.
@implementation NSError (CocoaBehaviour)

- (NSDictionary*)userInfo {
    static const Ivar given = class_getInstanceVariable([NSError class], "_userInfo");
    NSDictionary* const userInfo = object_getIvar(self, given);
    return userInfo ? userInfo : [NSDictionary dictionary];
}

- (BOOL)isEqual:(id)object {
    if (object == self) return YES;
    if (![object isKindOfClass:[NSError class]]) return NO;
    NSError* const other = object;
    return [self code] == [other code] && [[self domain] isEqual:[other domain]] &&
           [[self userInfo] isEqual:[other userInfo]];
}

- (id)copyWithZone:(NSZone*)zone {
    return [self retain];
}

- (NSUInteger)hash {
    return [[self domain] hash] ^ static_cast<NSUInteger>([self code]);
}

- (NSString*)localizedDescription {
    NSString* const given = [[self userInfo] objectForKey:NSLocalizedDescriptionKey];
    if (given) return given;
    const NSInteger code = [self code];
    if ([[self domain] isEqual:NSPOSIXErrorDomain] && code >= 0 &&
        code <= std::numeric_limits<int>::max())
        return [NSString stringWithFormat:@"The operation couldn\u2019t be completed. %s",
                                          std::strerror(static_cast<int>(code))];
    return [NSString stringWithFormat:@"The operation couldn\u2019t be completed. (%@ error %ld.)",
                                      [self domain], static_cast<long>(code)];
}

- (NSString*)description {
    NSMutableString* const text = [NSMutableString
        stringWithFormat:@"Error Domain=%@ Code=%ld \"%@\"", [self domain],
                         static_cast<long>([self code]), [self localizedDescription]];
    if ([[self userInfo] count]) [text appendFormat:@" UserInfo=%@", [self userInfo]];
    return text;
}

@end
