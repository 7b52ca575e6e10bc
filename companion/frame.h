#pragma once

/// The frame that every member runs its Cocoa work in.

#include <type_traits>

namespace base_part {

/// Runs the work in an autorelease pool. An NSException becomes a raised host exception; anything
/// else that is thrown passes once the pool is gone.
void runInFrame(void (*run)(void* closure), void* closure);

/// The same for work with a result, which is neutral (0, false, null) after an exception.
template <typename Work>
std::invoke_result_t<Work&> inFrame(Work work) {
    using Result = std::invoke_result_t<Work&>;
    if constexpr (std::is_void_v<Result>) {
        runInFrame([](void* closure) { (*static_cast<Work*>(closure))(); }, &work);
    } else {
        Result result{};
        inFrame([&] { result = work(); });
        return result;
    }
}

} // namespace base_part
