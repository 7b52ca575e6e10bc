#pragma once

/// Numbers for paths.

#include <cstddef>
#include <cstdint>
#include <list>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace cocoa {

/// Gives each path a number and finds it again. Holds the paths that were used last, so that asking
/// about ever more files does not take ever more memory. Safe for any thread.
class PathTable {
public:
    static constexpr std::uint32_t firstNumber = 16;

    explicit PathTable(std::size_t capacity)
        : capacity_(capacity) {}

    std::uint32_t numberOf(const std::string& path);
    /// Nothing for a number that was never given or whose path has dropped out.
    std::optional<std::string> pathOf(std::uint32_t number);

private:
    struct Entry {
        std::string path;
        std::uint32_t number;
    };
    using Entries = std::list<Entry>;

    std::uint32_t unusedNumber();
    void touch(Entries::iterator entry);

    std::mutex mutex_;
    std::size_t capacity_;
    std::uint32_t lastNumber_ = firstNumber - 1;
    Entries entries_; ///< the one used last in front
    std::unordered_map<std::uint32_t, Entries::iterator> byNumber_;
    std::unordered_map<std::string_view, Entries::iterator> byPath_;
};

} // namespace cocoa
