#pragma once

/// The frames that every function called by the host runs its Cocoa work in, so that no NSException
/// crosses into the host. Checks of arguments stand before the frame.

#include "plugin/entry/exceptions.h"

#include <Foundation/Foundation.h>

#include <type_traits>

namespace call_frames {

struct Work {
    void (*run)(void* closure);
    void* closure;
};

void run_in_full_frame(Work work);

template <typename Closure>
Work work_of(Closure& closure) {
    return {[](void* erased) { (*static_cast<Closure*>(erased))(); }, &closure};
}

template <void (*runInFrame)(Work), typename Closure>
std::invoke_result_t<Closure&> result_of(Closure& work) {
    using Result = std::invoke_result_t<Closure&>;
    if constexpr (std::is_void_v<Result>) {
        runInFrame(work_of(work));
    } else {
        Result result{};
        auto keepResult = [&] { result = work(); };
        runInFrame(work_of(keepResult));
        return result;
    }
}

} // namespace call_frames

/// Fetches the dictionary of live wrappers and prepares the exception bridge, each until the base
/// part has provided it.
void CocoaInit();

/// For accessors and small methods: returns the work's result. An NSException becomes a host
/// exception and gives the neutral value (0, false, null); anything else that is thrown passes.
/// It is part of its caller, so that it costs nothing beside the message that it guards.
template <typename Work>
auto LightFrame(Work&& work) -> std::invoke_result_t<Work&> {
    @try {
        return work();
    } @catch (NSException* exception) {
        RaiseNSExceptionZNT(exception);
    }
    return std::invoke_result_t<Work&>();
}

/// For whatever creates objects: CocoaInit, and the work in an autorelease pool of its own. An
/// NSException becomes a host exception and gives the neutral value; anything else that is thrown
/// passes once the pool is gone.
template <typename Work>
auto FullFrame(Work&& work) {
    return call_frames::result_of<call_frames::run_in_full_frame>(work);
}
