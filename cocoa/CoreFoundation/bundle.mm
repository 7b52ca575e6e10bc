#import <Foundation/Foundation.h>

#include "cocoa/CoreFoundation/pool.h"
#include "cocoa/CoreFoundation/type_ids.h"

#include <CoreFoundation/CFBundle.h>

#include <dlfcn.h>

/// What a CFBundleRef is.
@interface CocoaBundle : NSObject <CoreFoundationTyped> {
@public
    NSURL* url;
    void* executable;
}
@end

@implementation CocoaBundle

- (CFTypeID)_cfTypeID {
    return cocoa::typeOfBundle;
}

- (NSString*)description {
    return [NSString stringWithFormat:@"<CFBundle %p> %@", self, [url path]];
}

- (void)dealloc {
    [url release];
    [super dealloc];
}

@end

namespace {

CocoaBundle* bundleOf(CFBundleRef bundle) { return (CocoaBundle*)bundle; }

void* loadExecutable(CocoaBundle* bundle) {
    if (!bundle->executable) {
        NSString* const folder = [bundle->url path];
        NSString* const name = [[folder lastPathComponent] stringByDeletingPathExtension];
        NSString* const path = [folder stringByAppendingPathComponent:name];
        bundle->executable = dlopen([path fileSystemRepresentation], RTLD_NOW | RTLD_LOCAL);
    }
    return bundle->executable;
}

} // namespace

CFTypeID CFBundleGetTypeID(void) { return cocoa::typeOfBundle; }

CFBundleRef CFBundleCreate(CFAllocatorRef, CFURLRef bundleURL) {
    NSURL* const url = (NSURL*)bundleURL;
    if (![url isFileURL]) return nullptr;
    const cocoa::Pool pool;
    BOOL isFolder = NO;
    const bool exists = [[NSFileManager defaultManager] fileExistsAtPath:[url path]
                                                             isDirectory:&isFolder];
    if (!exists || !isFolder) return nullptr;
    CocoaBundle* const bundle = [[CocoaBundle alloc] init];
    if (bundle) bundle->url = [url retain];
    return (CFBundleRef)bundle;
}

CFURLRef CFBundleCopyBundleURL(CFBundleRef bundle) {
    return bundle ? (CFURLRef)[bundleOf(bundle)->url retain] : nullptr;
}

Boolean CFBundleLoadExecutable(CFBundleRef bundle) {
    if (!bundle) return false;
    const cocoa::Pool pool;
    return loadExecutable(bundleOf(bundle)) != nullptr;
}

void* CFBundleGetFunctionPointerForName(CFBundleRef bundle, CFStringRef functionName) {
    if (!functionName || !CFBundleLoadExecutable(bundle)) return nullptr;
    const cocoa::Pool pool;
    return dlsym(bundleOf(bundle)->executable, [(NSString*)functionName UTF8String]);
}
