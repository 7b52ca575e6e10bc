#include "cocoa/codecs/exif_fields.h"
#include "cocoa/codecs/exif_tags.h"

#include <algorithm>
#include <cstring>
#include <iterator>

#include <libexif/exif-data.h>

namespace cocoa::codecs {

namespace {

using Kind = ExifField::Kind;

using Meaning = ExifTagInfo::Meaning;

struct Unreference {
    void operator()(ExifData* data) const { exif_data_unref(data); }
};

std::string text_until_end(const unsigned char* bytes, std::size_t size) {
    const auto* end = std::find(bytes, bytes + size, 0);
    return {bytes, end};
}

/// "0221" is the version 2, 2, 1; a last digit of 0 does not count.
bool read_version(const ExifEntry& entry, ExifField& field) {
    if (entry.size != 4) return false;
    const auto digit = [&entry](int at) { return entry.data[at] - '0'; };
    for (int at = 0; at < 4; ++at)
        if (digit(at) < 0 || digit(at) > 9) return false;
    field.list = true;
    field.numbers = {static_cast<double>(digit(0) * 10 + digit(1)), static_cast<double>(digit(2))};
    if (digit(3) != 0) field.numbers.push_back(digit(3));
    return true;
}

void append_utf8(std::string& text, std::uint32_t character) {
    if (character < 0x80) {
        text += static_cast<char>(character);
        return;
    }
    const int further = character < 0x800 ? 1 : character < 0x10000 ? 2 : 3;
    constexpr std::uint32_t leads[] = {0, 0xC0, 0xE0, 0xF0};
    text += static_cast<char>(leads[further] | character >> 6 * further);
    for (int i = further - 1; i >= 0; --i)
        text += static_cast<char>(0x80 | (character >> 6 * i & 0x3F));
}

std::string text_of_utf16(const unsigned char* bytes, std::size_t size, ExifByteOrder order) {
    std::string text;
    for (std::size_t at = 0; at + 2 <= size; at += 2) {
        std::uint32_t character = exif_get_short(bytes + at, order);
        if (character == 0) break;
        if (character == 0xFEFF) continue;
        const bool high = character >= 0xD800 && character < 0xDC00;
        if (high && at + 4 <= size) {
            const std::uint32_t low = exif_get_short(bytes + at + 2, order);
            if (low >= 0xDC00 && low < 0xE000) {
                character = 0x10000 + ((character - 0xD800) << 10) + (low - 0xDC00);
                at += 2;
            }
        }
        const bool half = character >= 0xD800 && character < 0xE000;
        append_utf8(text, half ? 0xFFFD : character);
    }
    return text;
}

bool read_comment(const ExifEntry& entry, ExifByteOrder order, ExifField& field) {
    constexpr std::size_t codeSize = 8;
    if (entry.size <= codeSize) return false;
    const unsigned char* content = entry.data + codeSize;
    const std::size_t size = entry.size - codeSize;
    field.kind = Kind::Text;
    if (std::memcmp(entry.data, "ASCII\0\0", codeSize) == 0) {
        field.text = text_until_end(content, size);
    } else if (std::memcmp(entry.data, "UNICODE", codeSize) == 0) {
        field.text = text_of_utf16(content, size, order);
    } else {
        return false;
    }
    return !field.text.empty();
}

bool is_fraction(ExifFormat format) {
    return format == EXIF_FORMAT_RATIONAL || format == EXIF_FORMAT_SRATIONAL;
}

/// One number; nothing for a fraction without a value.
std::optional<double> number_at(const unsigned char* bytes, ExifFormat format,
                                ExifByteOrder order) {
    switch (format) {
    case EXIF_FORMAT_BYTE:
    case EXIF_FORMAT_UNDEFINED:
        return bytes[0];
    case EXIF_FORMAT_SBYTE:
        return static_cast<signed char>(bytes[0]);
    case EXIF_FORMAT_SHORT:
        return exif_get_short(bytes, order);
    case EXIF_FORMAT_SSHORT:
        return exif_get_sshort(bytes, order);
    case EXIF_FORMAT_LONG:
        return exif_get_long(bytes, order);
    case EXIF_FORMAT_SLONG:
        return exif_get_slong(bytes, order);
    case EXIF_FORMAT_RATIONAL: {
        const ExifRational fraction = exif_get_rational(bytes, order);
        if (fraction.denominator == 0) return std::nullopt;
        return static_cast<double>(fraction.numerator) / fraction.denominator;
    }
    case EXIF_FORMAT_SRATIONAL: {
        const ExifSRational fraction = exif_get_srational(bytes, order);
        if (fraction.denominator == 0) return std::nullopt;
        return static_cast<double>(fraction.numerator) / fraction.denominator;
    }
    default:
        return std::nullopt;
    }
}

bool read_numbers(const ExifEntry& entry, ExifByteOrder order, ExifField& field) {
    const std::size_t size = exif_format_get_size(entry.format);
    constexpr std::size_t most = 64;
    if (size == 0 || entry.components == 0 || entry.components > most) return false;
    if (entry.components * size > entry.size) return false;
    field.kind = is_fraction(entry.format) ? Kind::Fractions : Kind::Integers;
    field.list = field.list || entry.components > 1;
    for (std::size_t i = 0; i < entry.components; ++i) {
        const auto number = number_at(entry.data + i * size, entry.format, order);
        if (!number) return false;
        field.numbers.push_back(*number);
    }
    return true;
}

bool read_field(const ExifEntry& entry, Meaning meaning, ExifByteOrder order, ExifField& field) {
    if (!entry.data) return false;
    if (meaning == Meaning::Version) return read_version(entry, field);
    if (meaning == Meaning::Comment) return read_comment(entry, order, field);
    if (entry.format == EXIF_FORMAT_ASCII) {
        field.kind = Kind::Text;
        field.text = text_until_end(entry.data, entry.size);
        return !field.text.empty();
    }
    field.list = meaning == Meaning::List;
    return read_numbers(entry, order, field);
}

} // namespace

std::vector<ExifField> exif_fields(Bytes block) {
    static constexpr std::uint8_t label[] = {'E', 'x', 'i', 'f', 0, 0};
    std::vector<ExifField> fields;
    if (block.empty()) return fields;
    std::vector<std::uint8_t> labelled(std::begin(label), std::end(label));
    labelled.insert(labelled.end(), block.begin(), block.end());

    const std::unique_ptr<ExifData, Unreference> data(exif_data_new());
    if (!data) return fields;
    // What the file says, not what it should say.
    exif_data_unset_option(data.get(), EXIF_DATA_OPTION_FOLLOW_SPECIFICATION);
    exif_data_load_data(data.get(), labelled.data(), static_cast<unsigned>(labelled.size()));
    const ExifByteOrder order = exif_data_get_byte_order(data.get());
    ExifContent* directory = data->ifd[EXIF_IFD_EXIF];
    for (const ExifTagInfo& known : exif_tags()) {
        const ExifEntry* entry = exif_content_get_entry(directory, static_cast<ExifTag>(known.tag));
        ExifField field;
        field.name = known.name;
        if (entry && read_field(*entry, known.meaning, order, field))
            fields.push_back(std::move(field));
    }
    return fields;
}

} // namespace cocoa::codecs
