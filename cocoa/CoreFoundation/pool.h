#pragma once

#import <Foundation/Foundation.h>

namespace cocoa {

/// A pool for functions that plain C calls, where none need be.
class Pool {
public:
    Pool() = default;
    Pool(const Pool&) = delete;
    Pool& operator=(const Pool&) = delete;
    ~Pool() { [pool_ release]; }

private:
    NSAutoreleasePool* pool_ = [[NSAutoreleasePool alloc] init];
};

} // namespace cocoa
