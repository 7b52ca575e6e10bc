#import <Foundation/Foundation.h>

#include "cocoa/CoreFoundation/retained.h"

#include <cstdlib>
#include <ctime>
#include <mutex>
#include <string>
#include <string_view>
#include <unistd.h>

namespace {

using cocoa::Retained;

constexpr std::string_view zoneFolder = "/zoneinfo/";
constexpr const char* systemZoneFile = "/etc/localtime";

NSTimeZone* zoneNamed(std::string_view name) {
    if (name.empty()) return nil;
    return [NSTimeZone timeZoneWithName:[NSString stringWithUTF8String:std::string(name).c_str()]];
}

/// The zone of a file among the known ones, by its path.
NSTimeZone* zoneOfFile(std::string_view path) {
    const std::size_t folder = path.rfind(zoneFolder);
    return folder == std::string_view::npos ? nil
                                            : zoneNamed(path.substr(folder + zoneFolder.size()));
}

/// What the C library makes of a rule as in "CET-1CEST", of which only today's part is taken.
NSTimeZone* zoneOfRule() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    tzset();
    localtime_r(&now, &local);
    return [NSTimeZone timeZoneForSecondsFromGMT:local.tm_gmtoff];
}

/// The zone that the variable TZ says, with a colon before it or without.
NSTimeZone* zoneOfVariable(std::string_view value) {
    if (value.starts_with(':')) value.remove_prefix(1);
    NSTimeZone* const zone = value.starts_with('/') ? zoneOfFile(value) : zoneNamed(value);
    return zone ? zone : zoneOfRule();
}

NSTimeZone* zoneOfSystem() {
    std::string target(4096, '\0');
    const ssize_t length = readlink(systemZoneFile, target.data(), target.size());
    if (length > 0)
        if (NSTimeZone* const zone = zoneOfFile({target.data(), static_cast<std::size_t>(length)}))
            return zone;
    NSData* const rules =
        [NSData dataWithContentsOfFile:[NSString stringWithUTF8String:systemZoneFile]];
    NSTimeZone* const zone =
        [rules length] ? [NSTimeZone timeZoneWithName:@"Local Time Zone" data:rules] : nil;
    return zone ? zone : [NSTimeZone timeZoneForSecondsFromGMT:0];
}

std::mutex mutex;
Retained<NSTimeZone*>& knownZone() {
    static auto& zone = *new Retained<NSTimeZone*>;
    return zone;
}

} // namespace

/// Cocoa's system zone is the one that the variable TZ says, as the C library's is.
@implementation NSTimeZone (CocoaBehaviour)

+ (NSTimeZone*)systemTimeZone {
    const std::scoped_lock lock(mutex);
    if (!knownZone()) {
        const char* const variable = std::getenv("TZ");
        knownZone() =
            Retained<NSTimeZone*>::retain(variable ? zoneOfVariable(variable) : zoneOfSystem());
    }
    return [[knownZone().get() retain] autorelease];
}

+ (void)resetSystemTimeZone {
    const std::scoped_lock lock(mutex);
    knownZone() = {};
}

@end
