#include "companion/frame.h"

#include "companion/exception_bridge.h"
#include "companion/host_services.h"

namespace base_part {

void runInFrame(void (*run)(void* closure), void* closure) {
    NSAutoreleasePool* const pool = [[NSAutoreleasePool alloc] init];
    // Retained, since the pool may hold the only reference to what was thrown.
    id foreign = nil;
    @try {
        run(closure);
    } @catch (NSException* exception) {
        const HostObject raised = HostObject::adopt([NSException NewNSExceptionZNT:exception]);
        if (raised) raiseException(raised.get());
    } @catch (id thrown) {
        foreign = [thrown retain];
    }
    [pool release];
    if (foreign) @throw [foreign autorelease];
}

} // namespace base_part
