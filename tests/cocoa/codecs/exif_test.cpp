#include "cocoa/codecs/exif.h"
#include "support.h"

#include <gmock/gmock.h>
#include <libexif/exif-data.h>

namespace codecs_test {
namespace {

/// Adds an entry to a block in the making.
ExifEntry* entry(ExifData* data, ExifTag tag) {
    ExifEntry* made = exif_entry_new();
    exif_content_add_entry(data->ifd[EXIF_IFD_0], made);
    exif_entry_initialize(made, tag);
    exif_entry_unref(made);
    return made;
}

/// A block as libexif writes it.
ByteVector block_of_libexif(ExifByteOrder order, int orientation, int unit) {
    ExifData* data = exif_data_new();
    exif_data_set_byte_order(data, order);
    exif_set_short(entry(data, EXIF_TAG_ORIENTATION)->data, order,
                   static_cast<ExifShort>(orientation));
    exif_set_rational(entry(data, EXIF_TAG_X_RESOLUTION)->data, order, {2000, 10});
    exif_set_rational(entry(data, EXIF_TAG_Y_RESOLUTION)->data, order, {100, 1});
    exif_set_short(entry(data, EXIF_TAG_RESOLUTION_UNIT)->data, order,
                   static_cast<ExifShort>(unit));
    unsigned char* bytes = nullptr;
    unsigned size = 0;
    exif_data_save_data(data, &bytes, &size);
    constexpr unsigned label = 6;
    ByteVector block(bytes + label, bytes + size);
    std::free(bytes);
    exif_data_unref(data);
    return block;
}

int orientation_by_libexif(const ByteVector& block) {
    ByteVector labelled{'E', 'x', 'i', 'f', 0, 0};
    append(labelled, block);
    ExifData* data =
        exif_data_new_from_data(labelled.data(), static_cast<unsigned>(labelled.size()));
    const ExifEntry* found = exif_data_get_entry(data, EXIF_TAG_ORIENTATION);
    const int orientation =
        found ? exif_get_short(found->data, exif_data_get_byte_order(data)) : -1;
    exif_data_unref(data);
    return orientation;
}

class Exif : public testing::TestWithParam<ExifByteOrder> {};
INSTANTIATE_TEST_SUITE_P(Order, Exif,
                         testing::Values(EXIF_BYTE_ORDER_MOTOROLA, EXIF_BYTE_ORDER_INTEL),
                         [](const auto& orders) {
                             return orders.param == EXIF_BYTE_ORDER_INTEL ? "Intel" : "Motorola";
                         });

TEST_P(Exif, SummaryHasTheOrientationAndTheResolutionInInches) {
    const ExifSummary summary = exif_summary(block_of_libexif(GetParam(), 7, 2));
    EXPECT_EQ(summary.orientation, 7);
    EXPECT_DOUBLE_EQ(summary.dpiX, 200);
    EXPECT_DOUBLE_EQ(summary.dpiY, 100);
}

TEST_P(Exif, SummaryTurnsCentimetersIntoInches) {
    const ExifSummary summary = exif_summary(block_of_libexif(GetParam(), 1, 3));
    EXPECT_DOUBLE_EQ(summary.dpiX, 508);
    EXPECT_DOUBLE_EQ(summary.dpiY, 254);
}

TEST_P(Exif, AnotherOrientationLeavesTheRestAlone) {
    const auto block = block_of_libexif(GetParam(), 6, 2);
    auto altered = exif_with_orientation(block, 1);
    EXPECT_EQ(orientation_by_libexif(altered), 1);
    ASSERT_EQ(altered.size(), block.size());
    int differences = 0;
    for (std::size_t i = 0; i < block.size(); ++i)
        differences += altered[i] != block[i];
    EXPECT_EQ(differences, 1);
}

TEST(ExifBlock, WithoutAnOrientationIsGivenBackUnchanged) {
    auto block = exif_block(6);
    block[11] = 0x13; // another tag
    EXPECT_EQ(exif_with_orientation(block, 3), block);
}

TEST(ExifBlock, ThatIsCutShortSaysNothingAndIsNotReadBeyondItsEnd) {
    const auto whole = exif_block(6);
    ASSERT_EQ(exif_summary(whole).orientation, 6);
    for (std::size_t size = 0; size < 22; ++size) {
        const ByteVector cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        EXPECT_EQ(exif_summary(cut).orientation, 1) << size;
        EXPECT_EQ(exif_with_orientation(cut, 2), cut) << size;
    }
}

TEST(ExifBlock, WithADirectoryOutsideItSaysNothing) {
    auto block = exif_block(6);
    block[4] = block[5] = block[6] = block[7] = 0xFF;
    EXPECT_EQ(exif_summary(block).orientation, 1);
}

TEST(ExifBlock, OfNoiseIsNotReadBeyondItsEnd) {
    for (unsigned seed = 0; seed < 2000; ++seed) {
        auto block = exif_block(6);
        const auto random = noise(8, seed);
        block[4 + random[0] % (block.size() - 4)] = random[1];
        block[4 + random[2] % (block.size() - 4)] = random[3];
        const ExifSummary summary = exif_summary(block);
        EXPECT_GE(summary.orientation, 1);
        EXPECT_LE(summary.orientation, 8);
        EXPECT_EQ(exif_with_orientation(block, 1).size(), block.size());
    }
}

} // namespace
} // namespace codecs_test
