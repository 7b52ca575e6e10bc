#pragma once

/// Errors reach host code as host exceptions only. Raising one does not unwind the plug-in: the
/// member goes on to its end and returns its neutral value, and the host acts on the exception
/// then. A missing host service drops the exception silently.

#include "sdk/types.h"

/// Raises a new exception of the named host class, or a RuntimeException when the host has no such
/// class. Both texts are NUL-terminated and may be null.
void RaiseException(const char* className, const char* message,
                    std::uint32_t encoding = REALtextEncodingASCII, std::int32_t errorNumber = 0);

/// Raises an OutOfBoundsException that names the parameter, the method (null for an unknown one)
/// and the range from `lowerBound` to `count` - 1.
void RaiseOutOfBoundsException(std::int64_t value, std::int64_t lowerBound, std::int64_t count,
                               const char* parameterName, const char* methodName);

#ifdef __OBJC__
@class NSException;

/// Logs a Cocoa exception and raises the host exception that the base part makes of it, if it makes
/// one. Without the base part this throws, since NSException then lacks the message sent to it.
void RaiseNSExceptionZNT(NSException* exception);
#endif
