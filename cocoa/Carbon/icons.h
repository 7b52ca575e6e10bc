#pragma once

/// What lies behind an icon handle, for the frameworks that draw icons.

#include <Carbon/Icons.h>

#include <cstdint>
#include <memory>
#include <vector>

namespace cocoa {

/// The bytes of the icon file (.icns), which stay valid as long as the pointer is held, whatever
/// becomes of the handle. Null for a handle that is no icon. May be called from any thread.
std::shared_ptr<const std::vector<std::uint8_t>> iconFileBytes(IconRef icon);

} // namespace cocoa
