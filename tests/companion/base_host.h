#pragma once

// Before the headers of Objective-C, which make a macro of "Nil".
#include "support/host.h"

#include "companion/exception_bridge.h"
#include "companion/object_wrapper.h"

/// A host with the base part alone, and an autorelease pool that ends before it.
class BaseHost : public Host {
public:
    explicit BaseHost(HostOptions options = {})
        : Host(baseOnly(std::move(options)))
        , pool([[NSAutoreleasePool alloc] init]) {}
    ~BaseHost() { [pool release]; }

private:
    static HostOptions baseOnly(HostOptions options) {
        options.plugins = {plugin("Base")};
        return options;
    }

    NSAutoreleasePool* pool;
};

/// The data of an object's class, as other parts read it.
template <typename Field>
Field& field(const host::ObjectRef& object, std::size_t index) {
    return static_cast<Field*>(REALfirstClassData(object.get()))[index];
}
