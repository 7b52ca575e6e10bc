#include "host/plugins/foreign_exceptions.h"

#import <Foundation/Foundation.h>

namespace host {
namespace {

std::string utf8(NSString* text) {
    const char* const bytes = [text UTF8String];
    return bytes ? bytes : "";
}

ForeignException describe(id thrown) {
    if ([thrown isKindOfClass:[NSException class]])
        return {utf8([thrown name]), utf8([thrown reason])};
    return {utf8(NSStringFromClass([thrown class])), utf8([thrown description])};
}

} // namespace

std::optional<ForeignException> doUntilForeignException(const std::function<void()>& work) {
    @try {
        work();
        return std::nullopt;
    } @catch (id thrown) {
        return describe(thrown);
    }
}

} // namespace host
