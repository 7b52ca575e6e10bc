#pragma once

#include <stdexcept>
#include <string>

namespace host::language {

/// What is wrong with a program's text, found before it runs.
class SourceError : public std::runtime_error {
public:
    SourceError(int line, const std::string& message)
        : std::runtime_error(message)
        , line(line) {}

    int line; ///< counted from 1
};

} // namespace host::language
