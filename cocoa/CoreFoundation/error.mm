#import <Foundation/Foundation.h>

#include "cocoa/CoreFoundation/type_ids.h"

#include <CoreFoundation/CFError.h>

namespace {

NSError* errorOf(CFErrorRef error) { return (NSError*)error; }

} // namespace

CFTypeID CFErrorGetTypeID(void) { return cocoa::typeOfError; }

CFErrorRef CFErrorCreate(CFAllocatorRef, CFStringRef domain, CFIndex code,
                         CFDictionaryRef userInfo) {
    if (!domain) return nullptr;
    return (CFErrorRef)[[NSError alloc] initWithDomain:(NSString*)domain
                                                  code:code
                                              userInfo:(NSDictionary*)userInfo];
}

CFStringRef CFErrorGetDomain(CFErrorRef error) { return (CFStringRef)[errorOf(error) domain]; }

CFIndex CFErrorGetCode(CFErrorRef error) { return [errorOf(error) code]; }

CFDictionaryRef CFErrorCopyUserInfo(CFErrorRef error) {
    if (!error) return nullptr;
    NSDictionary* const userInfo = [errorOf(error) userInfo];
    return (CFDictionaryRef)(userInfo ? [userInfo copy] : [[NSDictionary alloc] init]);
}

CFStringRef CFErrorCopyDescription(CFErrorRef error) {
    return (CFStringRef)[[errorOf(error) localizedDescription] copy];
}
