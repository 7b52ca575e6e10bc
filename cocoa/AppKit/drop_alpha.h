#pragma once

#include <cstddef>
#include <cstdint>

namespace cocoa::appkit {

/// Copies the first three bytes of pixels of four, up to `count` of them, and returns how many.
/// With `stopAtAlpha` it stops at the first whose fourth byte is not 255. `out` has room for all.
std::size_t dropOpaqueAlpha(const std::uint8_t* in, std::uint8_t* out, std::size_t count,
                            bool stopAtAlpha);

} // namespace cocoa::appkit
