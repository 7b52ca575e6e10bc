#include "plugin/entry/exceptions.h"

#include "plugin/entry/references.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

HostString message_string(const char* message, std::uint32_t encoding) {
    if (!message || !*message) return {};
    HostString string = HostString::adopt(
        REALBuildString(message, static_cast<std::int32_t>(std::strlen(message))));
    if (string) REALSetStringEncoding(string.get(), encoding);
    return string;
}

HostObject new_exception(const char* className) {
    HostObject exception = HostObject::adopt(className ? REALnewInstance(className) : nullptr);
    return exception ? std::move(exception)
                     : HostObject::adopt(REALnewInstance("RuntimeException"));
}

} // namespace

void RaiseException(const char* className, const char* message, std::uint32_t encoding,
                    std::int32_t errorNumber) {
    const HostString text = message_string(message, encoding);
    const HostObject exception = new_exception(className);
    if (!exception) return;
    REALSetPropValueString(exception.get(), "Message", text.get());
    REALSetPropValueInt32(exception.get(), "ErrorNumber", errorNumber);
    REALRaiseException(exception.get());
}

void RaiseOutOfBoundsException(std::int64_t value, std::int64_t lowerBound, std::int64_t count,
                               const char* parameterName, const char* methodName) {
    constexpr const char* className = "OutOfBoundsException";
    if (!methodName) methodName = "?";
    const std::size_t size = std::strlen(methodName) + 205;
    auto* const message = static_cast<char*>(std::calloc(1, size));
    if (!message) return RaiseException(className, "Out of Bounds");
    std::snprintf(message, size,
                  value < lowerBound
                      ? "Parameter %s to method %s is too small. Range is %lld to %lld, but value "
                        "is %lld."
                      : "Parameter %s to method %s is too big. Range is %lld to %lld, but value "
                        "is %lld.",
                  parameterName, methodName, static_cast<long long>(lowerBound),
                  static_cast<long long>(count - 1), static_cast<long long>(value));
    RaiseException(className, message);
    std::free(message);
}
