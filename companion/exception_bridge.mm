#include "companion/exception_bridge.h"

#include "companion/host_strings.h"

namespace {

constexpr const char* rootClassName = "RuntimeException";

/// Null while the host does not tell; asked again then.
REALclassRef rootClass() {
    static REALclassRef known = nullptr;
    if (!known) known = classNamed(rootClassName);
    return known;
}

/// A class of the name may be one of anything; only exceptions can be raised.
HostObject newException(NSString* name) {
    if (const char* const className = [name UTF8String]; className && *className) {
        HostObject made = HostObject::adopt(newInstance(className));
        if (made && rootClass() && objectIsA(made.get(), rootClass())) return made;
    }
    return HostObject::adopt(newInstance(rootClassName));
}

NSString* messageOf(NSException* exception) {
    NSString* const name = [exception name];
    NSString* const reason = [exception reason];
    if ([name length] && [reason length])
        return [NSString stringWithFormat:@"%@: %@", name, reason];
    return [reason length] ? reason : name;
}

} // namespace

@implementation NSException (BasePartZNT)

+ (CFMutableDictionaryRef)GetInstancesDictionaryZNT {
    static CFMutableDictionaryRef const instances =
        CFDictionaryCreateMutable(nullptr, 0, nullptr, nullptr);
    return instances;
}

+ (void)PrepareNSExceptionZNT {
    rootClass();
}

+ (REALobjectStruct*)NewNSExceptionZNT:(NSException*)exception {
    if (!exception) return nullptr;
    HostObject made = newException([exception name]);
    if (!made) return nullptr;
    const HostString message = newHostString((CFStringRef)messageOf(exception));
    setStringProperty(made.get(), "Message", message.get());
    setInt32Property(made.get(), "ErrorNumber", 0);
    return made.leak();
}

@end
