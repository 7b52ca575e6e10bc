#include "host/plugins/pool.h"

#import <Foundation/NSAutoreleasePool.h>
#import <Foundation/NSThread.h>

namespace host {

AutoreleasePool::AutoreleasePool()
    : pool_([[NSAutoreleasePool alloc] init]) {}

AutoreleasePool::~AutoreleasePool() { [(id)pool_ release]; }

void AutoreleasePool::drain() {
    [(id)pool_ release];
    pool_ = [[NSAutoreleasePool alloc] init];
}

CocoaThread::CocoaThread() { GSRegisterCurrentThread(); }

CocoaThread::~CocoaThread() { GSUnregisterCurrentThread(); }

} // namespace host
