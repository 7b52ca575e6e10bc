#include "cocoa/codecs/exif_fields.h"
#include "cocoa/codecs/exif_tags.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace cocoa::codecs {

namespace {

using Type = ExifTagInfo::Type;
using Meaning = ExifTagInfo::Meaning;
using Block = std::vector<std::uint8_t>;

void put(Block& block, std::uint32_t value, int size) {
    for (int shift = 8 * (size - 1); shift >= 0; shift -= 8)
        block.push_back(static_cast<std::uint8_t>(value >> shift));
}

/// A value as it stands in the block.
struct Value {
    std::uint32_t count = 0;
    Block bytes{};
};

/// The numerator and denominator nearest to a number that is not below 0, by continued fractions.
std::pair<std::uint32_t, std::uint32_t> fraction(double number) {
    constexpr double most = std::numeric_limits<std::int32_t>::max();
    constexpr double close = 1e-9;
    double rest = number;
    double numerators[] = {0, 1};
    double denominators[] = {1, 0};
    for (int step = 0; step < 32; ++step) {
        const double whole = std::floor(rest);
        const double numerator = whole * numerators[1] + numerators[0];
        const double denominator = whole * denominators[1] + denominators[0];
        if (numerator > most || denominator > most) break;
        numerators[0] = std::exchange(numerators[1], numerator);
        denominators[0] = std::exchange(denominators[1], denominator);
        if (std::abs(numerator / denominator - number) <= close * number || rest == whole) break;
        rest = 1 / (rest - whole);
    }
    return {static_cast<std::uint32_t>(numerators[1]), static_cast<std::uint32_t>(denominators[1])};
}

bool put_fraction(Block& block, double number, bool isSigned) {
    constexpr double most = std::numeric_limits<std::int32_t>::max();
    if (!(std::abs(number) <= most) || (number < 0 && !isSigned)) return false;
    const auto [numerator, denominator] = fraction(std::abs(number));
    put(block, number < 0 ? 0 - numerator : numerator, 4);
    put(block, denominator, 4);
    return true;
}

bool put_integer(Block& block, double number, int size) {
    const double most = std::ldexp(1, 8 * size) - 1;
    if (!(number >= 0 && number <= most)) return false;
    put(block, static_cast<std::uint32_t>(number), size);
    return true;
}

bool put_number(Block& block, double number, Type type) {
    switch (type) {
    case Type::Short:
        return put_integer(block, number, 2);
    case Type::Long:
        return put_integer(block, number, 4);
    case Type::Undefined:
        return put_integer(block, number, 1);
    case Type::Rational:
    case Type::SignedRational:
        return put_fraction(block, number, type == Type::SignedRational);
    case Type::Ascii:
        break;
    }
    return false;
}

std::optional<Value> numbers_value(const ExifField& field, Type type) {
    Value value;
    for (const double number : field.numbers) {
        if (!put_number(value.bytes, number, type)) return std::nullopt;
        ++value.count;
    }
    return value.count > 0 ? std::optional(value) : std::nullopt;
}

/// 2, 2, 1 as "0221".
std::optional<Value> version_value(const ExifField& field) {
    const auto& numbers = field.numbers;
    if (numbers.empty() || numbers.size() > 3) return std::nullopt;
    const bool digits = std::all_of(numbers.begin(), numbers.end(),
                                    [](double number) { return number >= 0 && number < 10; });
    if (!digits) return std::nullopt;
    Value value{4, {'0', '0', '0', '0'}};
    for (std::size_t i = 0; i < numbers.size(); ++i)
        value.bytes[i + 1] = static_cast<std::uint8_t>('0' + static_cast<int>(numbers[i]));
    return value;
}

/// The characters of UTF-8 that is well formed; a malformed byte stands for itself.
std::vector<std::uint32_t> characters(const std::string& text) {
    std::vector<std::uint32_t> characters;
    for (std::size_t at = 0; at < text.size();) {
        const auto lead = static_cast<std::uint8_t>(text[at++]);
        const std::size_t further = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : 0;
        std::uint32_t character = further == 0 ? lead : lead & (0x3FU >> further);
        for (std::size_t i = 0; i < further && at < text.size(); ++i)
            character = character << 6 | (static_cast<std::uint8_t>(text[at++]) & 0x3F);
        characters.push_back(character);
    }
    return characters;
}

Value comment_value(const std::string& text) {
    Value value;
    const bool ascii =
        std::all_of(text.begin(), text.end(), [](char c) { return (c & 0x80) == 0; });
    const std::string_view code =
        ascii ? std::string_view("ASCII\0\0\0", 8) : std::string_view("UNICODE\0", 8);
    value.bytes.assign(code.begin(), code.end());
    if (ascii) value.bytes.insert(value.bytes.end(), text.begin(), text.end());
    for (const std::uint32_t character : ascii ? std::vector<std::uint32_t>{} : characters(text)) {
        if (character >= 0x10000) {
            put(value.bytes, 0xD800 + ((character - 0x10000) >> 10 & 0x3FF), 2);
            put(value.bytes, 0xDC00 + ((character - 0x10000) & 0x3FF), 2);
        } else {
            put(value.bytes, character, 2);
        }
    }
    value.count = static_cast<std::uint32_t>(value.bytes.size());
    return value;
}

std::optional<Value> value_of(const ExifField& field, const ExifTagInfo& info) {
    if (info.meaning == Meaning::Version) return version_value(field);
    const bool text = field.kind == ExifField::Kind::Text;
    if (text && field.text.empty()) return std::nullopt;
    if (info.meaning == Meaning::Comment)
        return text ? std::optional(comment_value(field.text)) : std::nullopt;
    if (text != (info.type == Type::Ascii)) return std::nullopt;
    if (!text) return numbers_value(field, info.type);
    Value value;
    value.bytes.assign(field.text.begin(), field.text.end());
    value.bytes.push_back(0);
    value.count = static_cast<std::uint32_t>(value.bytes.size());
    return value;
}

/// A directory in the making: its entries, and the values that do not fit into them.
struct Directory {
    std::uint16_t count = 0;
    Block entries{};
    Block values{};

    void add(const ExifTagInfo& info, const Value& value, std::uint32_t valuesAt) {
        put(entries, info.tag, 2);
        put(entries, static_cast<std::uint32_t>(info.type), 2);
        put(entries, value.count, 4);
        constexpr std::size_t inPlace = 4;
        if (value.bytes.size() <= inPlace) {
            entries.insert(entries.end(), value.bytes.begin(), value.bytes.end());
            entries.insert(entries.end(), inPlace - value.bytes.size(), 0);
        } else {
            put(entries, valuesAt + static_cast<std::uint32_t>(values.size()), 4);
            values.insert(values.end(), value.bytes.begin(), value.bytes.end());
            if (values.size() % 2 != 0) values.push_back(0);
        }
        ++count;
    }
};

} // namespace

std::vector<std::uint8_t> exif_block(std::span<const ExifField> fields) {
    std::vector<std::pair<const ExifTagInfo*, Value>> known;
    for (const ExifTagInfo& info : exif_tags()) {
        const auto field = std::find_if(fields.begin(), fields.end(), [&info](const auto& each) {
            return each.name == info.name;
        });
        if (field == fields.end()) continue;
        if (auto value = value_of(*field, info)) known.emplace_back(&info, std::move(*value));
    }
    if (known.empty()) return {};

    constexpr std::uint32_t first = 8;
    constexpr std::uint32_t entrySize = 12;
    constexpr std::uint32_t second = first + 2 + entrySize + 4;
    Directory directory;
    const auto valuesAt = static_cast<std::uint32_t>(second + 2 + known.size() * entrySize + 4);
    for (const auto& [info, value] : known)
        directory.add(*info, value, valuesAt);

    Block block{'M', 'M', 0, 42};
    put(block, first, 4);
    put(block, 1, 2); // one entry, which leads to the directory for EXIF
    constexpr std::uint32_t exifDirectory = 0x8769;
    put(block, exifDirectory, 2);
    put(block, static_cast<std::uint32_t>(Type::Long), 2);
    put(block, 1, 4);
    put(block, second, 4);
    put(block, 0, 4);
    put(block, directory.count, 2);
    block.insert(block.end(), directory.entries.begin(), directory.entries.end());
    put(block, 0, 4);
    block.insert(block.end(), directory.values.begin(), directory.values.end());
    return block;
}

} // namespace cocoa::codecs
