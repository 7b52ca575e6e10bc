#pragma once

#include "support/host.h"

/// Options of a host that has the test's own plug-in loaded beside the product:
///
///     Host host{with_probe({.version = 2009.05})};
inline HostOptions with_probe(HostOptions options = {}) {
    if (!options.withoutBase) options.plugins.push_back(Host::plugin("Base"));
    options.plugins.push_back(Host::plugin("NSImage"));
    options.plugins.push_back(PROBE_PART);
    return options;
}
