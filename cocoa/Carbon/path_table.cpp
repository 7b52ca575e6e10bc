#include "cocoa/Carbon/path_table.h"

#include <limits>

namespace cocoa {

std::uint32_t PathTable::numberOf(const std::string& path) {
    const std::scoped_lock lock(mutex_);
    if (const auto found = byPath_.find(path); found != byPath_.end()) {
        touch(found->second);
        return found->second->number;
    }
    if (entries_.size() >= capacity_) {
        byPath_.erase(entries_.back().path);
        byNumber_.erase(entries_.back().number);
        entries_.pop_back();
    }
    entries_.push_front({path, unusedNumber()});
    const auto entry = entries_.begin();
    byPath_.emplace(entry->path, entry);
    byNumber_.emplace(entry->number, entry);
    return entry->number;
}

std::optional<std::string> PathTable::pathOf(std::uint32_t number) {
    const std::scoped_lock lock(mutex_);
    const auto found = byNumber_.find(number);
    if (found == byNumber_.end()) return std::nullopt;
    touch(found->second);
    return found->second->path;
}

/// Numbers fit the signed 32-bit folder IDs of an FSSpec.
std::uint32_t PathTable::unusedNumber() {
    do {
        lastNumber_ =
            lastNumber_ == std::numeric_limits<std::int32_t>::max() ? firstNumber : lastNumber_ + 1;
    } while (byNumber_.contains(lastNumber_));
    return lastNumber_;
}

void PathTable::touch(Entries::iterator entry) {
    entries_.splice(entries_.begin(), entries_, entry);
}

} // namespace cocoa
