#include "exif_builder.h"

namespace codecs_test {

ExifBuilder& ExifBuilder::text(std::uint16_t tag, std::string_view text) {
    ByteVector value = bytes_of(text);
    value.push_back(0);
    fields_.push_back({tag, 2, static_cast<std::uint32_t>(value.size()), value});
    return *this;
}

ExifBuilder& ExifBuilder::shorts(std::uint16_t tag, const std::vector<std::uint16_t>& values) {
    ByteVector bytes;
    for (const std::uint16_t value : values)
        append_16(bytes, order_, value);
    fields_.push_back({tag, 3, static_cast<std::uint32_t>(values.size()), bytes});
    return *this;
}

ExifBuilder& ExifBuilder::longs(std::uint16_t tag, const std::vector<std::uint32_t>& values) {
    ByteVector bytes;
    for (const std::uint32_t value : values)
        append_32(bytes, order_, value);
    fields_.push_back({tag, 4, static_cast<std::uint32_t>(values.size()), bytes});
    return *this;
}

ExifBuilder& ExifBuilder::undefined(std::uint16_t tag, const ByteVector& bytes) {
    fields_.push_back({tag, 7, static_cast<std::uint32_t>(bytes.size()), bytes});
    return *this;
}

ExifBuilder& ExifBuilder::fractions(std::uint16_t tag, std::uint16_t type,
                                    const std::vector<Fraction>& values) {
    ByteVector bytes;
    for (const auto& [numerator, denominator] : values) {
        append_32(bytes, order_, static_cast<std::uint32_t>(numerator));
        append_32(bytes, order_, static_cast<std::uint32_t>(denominator));
    }
    fields_.push_back({tag, type, static_cast<std::uint32_t>(values.size()), bytes});
    return *this;
}

ExifBuilder& ExifBuilder::rationals(std::uint16_t tag, const std::vector<Fraction>& values) {
    return fractions(tag, 5, values);
}

ExifBuilder& ExifBuilder::signed_rationals(std::uint16_t tag, const std::vector<Fraction>& values) {
    return fractions(tag, 10, values);
}

ByteVector ExifBuilder::block() const {
    ByteVector block = bytes_of(order_ == ByteOrder::Big ? "MM" : "II");
    append_16(block, order_, 42);
    append_32(block, order_, 8);
    append_16(block, order_, 1); // one entry, which leads to the directory for EXIF
    append_16(block, order_, 0x8769);
    append_16(block, order_, 4);
    append_32(block, order_, 1);
    constexpr std::uint32_t offset = 26;
    append_32(block, order_, offset);
    append_32(block, order_, 0);
    append(block, directory_at(offset));
    return block;
}

ByteVector ExifBuilder::directory_at(std::size_t offset) const {
    ByteVector directory;
    ByteVector values;
    append_16(directory, order_, static_cast<std::uint16_t>(fields_.size()));
    const std::size_t valuesAt = offset + 2 + fields_.size() * 12 + 4;
    for (const Field& field : fields_) {
        append_16(directory, order_, field.tag);
        append_16(directory, order_, field.type);
        append_32(directory, order_, field.count);
        if (field.value.size() > 4) {
            append_32(directory, order_, static_cast<std::uint32_t>(valuesAt + values.size()));
            append(values, field.value);
            if (values.size() % 2) values.push_back(0);
        } else {
            ByteVector inPlace = field.value;
            inPlace.resize(4);
            append(directory, inPlace);
        }
    }
    append_32(directory, order_, 0);
    append(directory, values);
    return directory;
}

ByteVector snapshot_exif() {
    return ExifBuilder()
        .rationals(0x829A, {{1, 250}})
        .rationals(0x829D, {{80, 10}})
        .shorts(0x8827, {200})
        .text(0x9003, "2009:05:11 19:42:07")
        .longs(0xA002, {4000})
        .block();
}

} // namespace codecs_test
