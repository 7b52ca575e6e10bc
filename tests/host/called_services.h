#pragma once

/// Calls of the host's services as a plug-in makes them.

#include "host/services/services.h"

#include <gtest/gtest.h>

/// The function that the resolver answers for a service.
template <typename Function>
Function* service(const REALservice<Function>& descriptor) {
    void* const address = host::Services::resolve(descriptor.name);
    EXPECT_TRUE(address) << descriptor.name << " is not offered";
    return reinterpret_cast<Function*>(address);
}
