#pragma once

/// What the host offers to plug-ins: the resolver, and the controls that a test has over it.

#include "sdk/services.h"

#include <string_view>
#include <type_traits>
#include <vector>

namespace host {

struct Services {
    /// Maps the name of a service to its address; null when this host does not offer it. Passed to
    /// every plug-in.
    static void* resolve(const char* name);

    /// The services that a host of the version offers, in the list's order.
    static std::vector<std::string_view> offered(double version);

    /// Services whose objects this host does not have yet; it offers none of them.
    static std::vector<std::string_view> later();

    /// How often plug-ins looked a name up, also in vain, and how often they called the service.
    static int lookups(std::string_view name);
    static int calls(std::string_view name);

    /// Whether this host offers the service now.
    static bool isOffered(std::string_view name);
    /// Offers a service or withdraws it, for lookups from now on. False when there is none of that
    /// name.
    static bool offer(std::string_view name, bool offered);

    /// Lets the next calls of the service return the neutral value and do nothing.
    static void fail(std::string_view name, int times);

    /// Puts another function in the service's place, for callers that know its address too; null
    /// puts the host's own back.
    template <typename Function>
    static void replace(const REALservice<Function>& service,
                        std::type_identity_t<Function>* replacement) {
        replaceFunction(service.name, reinterpret_cast<void*>(replacement));
    }

    /// Forgets counts, replacements and withdrawals, when a host starts.
    static void reset();

private:
    static void replaceFunction(std::string_view name, void* replacement);
};

} // namespace host
