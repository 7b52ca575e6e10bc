#pragma once

/// What Cocoa code of a host's thread autoreleases outside of a plug-in's own pools.

namespace host {

class AutoreleasePool {
public:
    AutoreleasePool();
    ~AutoreleasePool();
    AutoreleasePool(const AutoreleasePool&) = delete;
    AutoreleasePool& operator=(const AutoreleasePool&) = delete;

    /// Releases what has gathered and starts anew.
    void drain();

private:
    void* pool_;
};

/// Makes a thread that Cocoa did not start known to it, for as long as the object lives there.
class CocoaThread {
public:
    CocoaThread();
    ~CocoaThread();
    CocoaThread(const CocoaThread&) = delete;
    CocoaThread& operator=(const CocoaThread&) = delete;
};

} // namespace host
