#pragma once

/// How a plug-in calls the host: each service is looked up by name when it is first used.

#include "sdk/services.h"

/// The host's resolver; every plug-in has its own copy, stored by its entry point.
inline __attribute__((visibility("hidden"))) REALresolver gResolver = nullptr;

template <typename Function>
class REALhostService;

/// A callable host service. The address is kept once it is known; while the host does not offer the
/// service, every call looks it up again and returns the neutral value of the result type.
template <typename Result, typename... Arguments>
class REALhostService<Result(Arguments...)> {
public:
    using Function = Result(Arguments...);

    constexpr explicit REALhostService(const REALservice<Function>& descriptor)
        : name_(descriptor.name) {}

    /// The service's function, or null when the host does not offer it.
    Function* resolve() {
        if (!function_ && gResolver) function_ = reinterpret_cast<Function*>(gResolver(name_));
        return function_;
    }

    Result operator()(Arguments... arguments) {
        if (Function* const function = resolve()) return function(arguments...);
        return Result();
    }

private:
    const char* name_;
    Function* function_ = nullptr;
};

template <typename Function>
REALhostService(const REALservice<Function>&) -> REALhostService<Function>;
