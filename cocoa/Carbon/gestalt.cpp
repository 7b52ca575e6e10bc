#include <Carbon/Gestalt.h>
#include <Carbon/MacErrors.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdlib>
#include <optional>
#include <string_view>

namespace {

using Version = std::array<int, 3>; ///< major, minor, bug fix

/// One to three numbers with dots between them.
std::optional<Version> parseVersion(std::string_view text) {
    Version version{};
    const char* at = text.data();
    const char* const end = at + text.size();
    for (std::size_t index = 0; index < version.size(); ++index) {
        const auto parsed = std::from_chars(at, end, version[index]);
        if (parsed.ec != std::errc() || version[index] < 0 || version[index] > 99)
            return std::nullopt;
        at = parsed.ptr;
        if (at == end) return version;
        if (*at++ != '.') return std::nullopt;
    }
    return std::nullopt;
}

Version systemVersion() {
    const char* const chosen = std::getenv("COCOA_SYSTEM_VERSION");
    return parseVersion(chosen ? chosen : "").value_or(Version{10, 9, 5});
}

/// Two digits for the major number and one for each other, which stays at 9 beyond.
SInt32 binaryCodedVersion(const Version& version) {
    return (version[0] / 10 << 12) | (version[0] % 10 << 8) | (std::min(version[1], 9) << 4) |
           std::min(version[2], 9);
}

} // namespace

OSErr Gestalt(OSType selector, SInt32* response) {
    if (!response) return paramErr;
    const Version version = systemVersion();
    switch (selector) {
    case gestaltSystemVersion:
        *response = binaryCodedVersion(version);
        return noErr;
    case gestaltSystemVersionMajor:
    case gestaltSystemVersionMinor:
    case gestaltSystemVersionBugFix:
        *response = version[selector - gestaltSystemVersionMajor];
        return noErr;
    default:
        return gestaltUndefSelectorErr;
    }
}
