#pragma once

/// What Cocoa code of the host's thread autoreleases outside of a plug-in's own pools.

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

} // namespace host
