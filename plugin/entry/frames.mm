#include "plugin/entry/frames.h"

#include "plugin/entry/base_part.h"
#include "plugin/entry/exceptions.h"
#include "plugin/entry/instances.h"

void CocoaInit() {
    static bool ExceptionsInitialized = false;
    if (!instances && [NSException respondsToSelector:@selector(GetInstancesDictionaryZNT)])
        instances = [NSException GetInstancesDictionaryZNT];
    if (!ExceptionsInitialized &&
        [NSException respondsToSelector:@selector(PrepareNSExceptionZNT)]) {
        [NSException PrepareNSExceptionZNT];
        ExceptionsInitialized = true;
    }
}

namespace call_frames {

void run_in_full_frame(Work work) {
    CocoaInit();
    NSAutoreleasePool* pool = nil;
    // Retained, since the pool may hold the only reference to what was thrown.
    id foreign = nil;
    @try {
        pool = [[NSAutoreleasePool alloc] init];
        work.run(work.closure);
    } @catch (NSException* exception) {
        @try {
            RaiseNSExceptionZNT(exception);
        } @catch (id nested) {
            foreign = [nested retain];
        }
    } @catch (id thrown) {
        foreign = [thrown retain];
    }
    [pool release];
    if (foreign) @throw [foreign autorelease];
}

} // namespace call_frames
