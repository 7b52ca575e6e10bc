#include "support/host.h"

#include <Cocoa/Cocoa.h>

/// The system of this process lacks the name: the plug-in sees this constant, not AppKit's. The
/// address sanitizer need not know that there are two.
__attribute__((visibility("default"), no_sanitize("address")))
NSString* const NSImageNameStatusNone = nil;

namespace {

TEST(SystemNameThatTheSystemLacks, IsTheEmptyString) {
    Host host;
    EXPECT_EQ(host.shared("NSImageZNT", "NSImageNameStatusNone").string(), nullptr);
    EXPECT_EQ(host.shared<std::string>("NSImageZNT", "NSImageNameStatusAvailable"),
              "NSStatusAvailable");
    EXPECT_EQ(host.raised(), "");
}

} // namespace
