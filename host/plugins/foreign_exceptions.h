#pragma once

/// Exceptions of Cocoa's that a plug-in lets out. They pass through the host unchanged, to whatever
/// runs it.

#include <functional>
#include <optional>
#include <string>

namespace host {

struct ForeignException {
    std::string name; ///< an NSException's; the class of any other object that was thrown
    std::string text; ///< its reason, or the object's description
};

/// Does the work; what is thrown of Cocoa's ends it. Exceptions of C++ pass through.
std::optional<ForeignException> doUntilForeignException(const std::function<void()>& work);

} // namespace host
