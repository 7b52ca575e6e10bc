#pragma once

/// Dictionary: values under keys of any kind, in the order in which the keys came.

#include "host/objects/value.h"

#include <cstddef>
#include <string>
#include <unordered_map>
#include <variant>
#include <vector>

namespace host {

/// What makes a key: equal for values that the language holds equal. Text is compared without
/// regard to case, numbers by their value whatever their type, dates by their time and other
/// objects by identity; text is never equal to a number, nor a number to a Boolean.
class DictionaryKey {
public:
    explicit DictionaryKey(const Value& value);
    friend bool operator==(const DictionaryKey&, const DictionaryKey&) = default;
    std::size_t hash() const;

private:
    enum class Sort : std::uint8_t {
        Number,
        NotANumber,
        Text,
        Boolean,
        Color,
        Pointer,
        Date,
        Object
    };

    void setNumber(const Value& value);

    Sort sort_ = Sort::Object;
    /// Whole numbers are integers here, unsigned ones only where they are too large for others.
    std::variant<std::int64_t, std::uint64_t, double, std::string> identity_;
};

class Dictionary : public State {
public:
    std::size_t count() const { return places_.size(); }
    /// Null when there is no such key.
    const Value* find(const Value& key) const;
    /// A new key comes last; one that is there keeps its place and its first spelling.
    void set(const Value& key, Value value);
    /// False when there is no such key.
    bool remove(const Value& key);
    void clear();

    /// The key and the value at the index, in the order in which the keys came; the index must be
    /// below count().
    const Value& keyAt(std::size_t index);
    const Value& valueAt(std::size_t index);

private:
    struct Hash {
        std::size_t operator()(const DictionaryKey& key) const { return key.hash(); }
    };
    using Places = std::unordered_map<DictionaryKey, std::size_t, Hash>;
    struct Entry {
        Value key;
        Value value;
        Places::value_type* place = nullptr; ///< null in a gap
    };

    /// An entry that is removed leaves a gap. They are closed together when somebody counts
    /// entries, so that removing many takes no longer for each.
    void closeGaps();

    std::vector<Entry> entries_;
    Places places_; ///< where in `entries_` a key is
};

} // namespace host
