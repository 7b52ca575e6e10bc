#pragma once

#include "sdk/types.h"

/// Where a host string keeps its text: hosts up to version 2013.0 are read in place.
struct StoredText {
    const char* data;
    std::size_t size; ///< bytes
};

inline StoredText stored_text(const REALstringStruct* string) {
    const std::size_t size = string->length > 0 ? static_cast<std::size_t>(string->length) : 0;
    // The buffer starts with a byte that is no part of the text.
    return {string->buffer ? string->buffer + 1 : nullptr, size};
}
