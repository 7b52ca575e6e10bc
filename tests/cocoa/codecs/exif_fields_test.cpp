#include "cocoa/codecs/exif_fields.h"

#include "exif_builder.h"
#include "jpeg_file.h"
#include "png_file.h"
#include "tiff_file.h"

#include <cmath>
#include <limits>

#include <gmock/gmock.h>

namespace codecs_test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// "Name = value" or "Name = (value, value)"; fractions have a point.
std::vector<std::string> lines(const std::vector<ExifField>& fields) {
    std::vector<std::string> lines;
    for (const ExifField& field : fields) {
        std::string value = field.text;
        for (const double number : field.numbers) {
            if (!value.empty()) value += ", ";
            value += field.kind == ExifField::Kind::Fractions
                         ? std::to_string(number)
                         : std::to_string(static_cast<long long>(number));
        }
        if (field.list) value = "(" + value + ")";
        lines.push_back(std::string(field.name) + " = " + value);
    }
    return lines;
}

std::vector<std::string> lines_of(const ByteVector& block) { return lines(exif_fields(block)); }

TEST(ExifFields, AreTheSameInBothByteOrders) {
    for (const ByteOrder order : {ByteOrder::Little, ByteOrder::Big}) {
        EXPECT_THAT(lines_of(ExifBuilder(order)
                                 .rationals(0x829A, {{1, 250}})
                                 .shorts(0x9207, {5})
                                 .longs(0xA003, {3000})
                                 .text(0xA434, "Tele")
                                 .block()),
                    ElementsAre("ExposureTime = 0.004000", "MeteringMode = 5",
                                "PixelYDimension = 3000", "LensModel = Tele"));
    }
}

TEST(ExifFields, KeepSigns) {
    EXPECT_THAT(lines_of(ExifBuilder().signed_rationals(0x9204, {{-1, 3}}).block()),
                ElementsAre("ExposureBiasValue = -0.333333"));
}

TEST(ExifFields, OfSeveralNumbersAreLists) {
    EXPECT_THAT(lines_of(ExifBuilder()
                             .shorts(0x8827, {200})
                             .undefined(0x9101, {1, 2, 3, 0})
                             .shorts(0x9214, {10, 20, 5})
                             .rationals(0xA432, {{24, 1}, {70, 1}, {28, 10}, {4, 1}})
                             .block()),
                ElementsAre("ISOSpeedRatings = (200)", "ComponentsConfiguration = (1, 2, 3, 0)",
                            "SubjectArea = (10, 20, 5)",
                            "LensSpecification = (24.000000, 70.000000, 2.800000, 4.000000)"));
}

TEST(ExifFields, GiveVersionsAsNumbers) {
    EXPECT_THAT(lines_of(ExifBuilder()
                             .undefined(0x9000, bytes_of("0221"))
                             .undefined(0xA000, bytes_of("0100"))
                             .block()),
                ElementsAre("ExifVersion = (2, 2, 1)", "FlashPixVersion = (1, 0)"));
    EXPECT_THAT(lines_of(ExifBuilder().undefined(0x9000, bytes_of("02x1")).block()), IsEmpty());
}

ByteVector comment(std::string_view code, const ByteVector& content) {
    ByteVector bytes = bytes_of(code);
    bytes.resize(8);
    append(bytes, content);
    return ExifBuilder().undefined(0x9286, bytes).block();
}

TEST(ExifFields, DecodeComments) {
    EXPECT_THAT(lines_of(comment("ASCII", bytes_of("by the lake"))),
                ElementsAre("UserComment = by the lake"));
    EXPECT_THAT(lines_of(comment("UNICODE", {0x00, 'S', 0x00, 0xE9, 0xD8, 0x3D, 0xDE, 0x00})),
                ElementsAre("UserComment = S\u00E9\U0001F600"));
    EXPECT_THAT(lines_of(comment("JIS", bytes_of("?"))), IsEmpty());
    EXPECT_THAT(lines_of(comment("ASCII", {})), IsEmpty());
}

TEST(ExifFields, LeaveOutWhatSaysNothing) {
    EXPECT_THAT(lines_of(ExifBuilder()
                             .rationals(0x829A, {{1, 0}})
                             .text(0x9003, "")
                             .undefined(0x927C, noise(50, 1))
                             .shorts(0xA403, {1})
                             .block()),
                ElementsAre("WhiteBalance = 1"));
}

TEST(ExifFields, OfNoBlockAreNone) {
    EXPECT_THAT(exif_fields({}), IsEmpty());
    EXPECT_THAT(lines_of(exif_block(6)), IsEmpty());
    EXPECT_THAT(lines_of(noise(100, 3)), IsEmpty());
}

TEST(ExifFields, OfBlocksCutAnywhereAreReadOnlyWhereTheyAre) {
    const ByteVector block = snapshot_exif();
    ASSERT_EQ(exif_fields(block).size(), 5U);
    for (std::size_t size = 0; size < block.size(); ++size) {
        const ByteVector cut(block.begin(), block.begin() + static_cast<std::ptrdiff_t>(size));
        EXPECT_LE(exif_fields(cut).size(), 5U);
    }
}

/// Through a block and back.
std::vector<std::string> written(const std::vector<ExifField>& fields) {
    return lines_of(exif_block(fields));
}

using Kind = ExifField::Kind;

TEST(ExifBlock, IsWhatCamerasWrite) {
    const std::vector<ExifField> fields{
        {.name = "PixelXDimension", .numbers = {4000}},
        {.name = "ExposureTime", .kind = Kind::Fractions, .numbers = {0.004}},
        {.name = "FNumber", .kind = Kind::Fractions, .numbers = {8}},
        {.name = "DateTimeOriginal", .kind = Kind::Text, .text = "2009:05:11 19:42:07"},
        {.name = "ISOSpeedRatings", .list = true, .numbers = {200}}};
    const auto block = ExifBuilder()
                           .rationals(0x829A, {{1, 250}})
                           .rationals(0x829D, {{8, 1}})
                           .shorts(0x8827, {200})
                           .text(0x9003, "2009:05:11 19:42:07")
                           .longs(0xA002, {4000})
                           .block();
    EXPECT_EQ(exif_block(fields), block);
}

TEST(ExifBlock, KeepsEveryKindOfValue) {
    EXPECT_THAT(
        written({{.name = "ExifVersion", .numbers = {2, 2, 1}},
                 {.name = "FlashPixVersion", .numbers = {1, 0}},
                 {.name = "ExposureBiasValue", .kind = Kind::Fractions, .numbers = {-1 / 3.0}},
                 {.name = "SubjectArea", .numbers = {10, 20, 5}},
                 {.name = "FocalLength", .kind = Kind::Fractions, .numbers = {0}},
                 {.name = "Gamma", .kind = Kind::Fractions, .numbers = {2.718281828}},
                 {.name = "UserComment", .kind = Kind::Text, .text = "S\u00E9\U0001F600"}}),
        ElementsAre("ExifVersion = (2, 2, 1)", "ExposureBiasValue = -0.333333",
                    "FocalLength = 0.000000", "SubjectArea = (10, 20, 5)",
                    "UserComment = S\u00E9\U0001F600", "FlashPixVersion = (1, 0)",
                    "Gamma = 2.718282"));
    EXPECT_THAT(written({{.name = "UserComment", .kind = Kind::Text, .text = "plain"}}),
                ElementsAre("UserComment = plain"));
}

TEST(ExifBlock, LeavesOutWhatDoesNotFit) {
    const double infinite = std::numeric_limits<double>::infinity();
    EXPECT_THAT(exif_block(std::vector<ExifField>{
                    {.name = "WhiteBalance", .numbers = {70000}},
                    {.name = "Flash", .numbers = {-1}},
                    {.name = "FNumber", .kind = Kind::Fractions, .numbers = {-2}},
                    {.name = "ExposureTime", .kind = Kind::Fractions, .numbers = {infinite}},
                    {.name = "Gamma", .kind = Kind::Fractions, .numbers = {std::nan("")}},
                    {.name = "LensModel", .numbers = {3}},
                    {.name = "LensMake", .kind = Kind::Text},
                    {.name = "ExifVersion", .numbers = {22}},
                    {.name = "Contrast", .kind = Kind::Text, .text = "much"},
                    {.name = "NoSuchField", .numbers = {1}}}),
                IsEmpty());
    EXPECT_THAT(exif_block(std::vector<ExifField>{}), IsEmpty());
}

const std::vector<std::string> snapshot{
    "ExposureTime = 0.004000", "FNumber = 8.000000", "ISOSpeedRatings = (200)",
    "DateTimeOriginal = 2009:05:11 19:42:07", "PixelXDimension = 4000"};

TEST(ExifFields, StandInJpegAndPngFiles) {
    const auto jpegFile = make_jpeg(
        {.width = 8, .height = 8, .markers = {{JPEG_APP0 + 1, exif_marker(snapshot_exif())}}},
        gradient(8, 8, 3));
    EXPECT_EQ(lines_of(header(jpegFile)->exif), snapshot);
    const auto pngFile = PngFile(1, 1, 8, PngGray).chunk("eXIf", snapshot_exif()).rows({{7}}).end();
    EXPECT_EQ(lines_of(header(pngFile)->exif), snapshot);
}

/// A TIFF with a directory for EXIF behind everything else.
ByteVector tiff_with_exif(ByteOrder order, const ExifBuilder& exif) {
    const std::uint16_t exifTag = 0x8769;
    const auto size = TiffFile(order).page(tiny_gray().longs(exifTag, {0})).bytes().size();
    ByteVector file = TiffFile(order)
                          .page(tiny_gray().longs(exifTag, {static_cast<std::uint32_t>(size)}))
                          .bytes();
    append(file, exif.directory_at(file.size()));
    return file;
}

TEST(ExifFields, StandInTiffFiles) {
    for (const ByteOrder order : {ByteOrder::Little, ByteOrder::Big}) {
        ExifBuilder exif(order);
        exif.rationals(0x829A, {{1, 250}}).shorts(0x8827, {200, 400}).text(0x9003, "2009");
        EXPECT_THAT(lines_of(header(tiff_with_exif(order, exif))->exif),
                    ElementsAre("ExposureTime = 0.004000", "ISOSpeedRatings = (200, 400)",
                                "DateTimeOriginal = 2009"));
    }
}

TEST(ExifFields, OfTiffFilesThatPointOutsideAreNone) {
    for (const std::uint32_t place : {0xFFFFFFF0U, 100000U}) {
        const auto file = TiffFile(ByteOrder::Big).page(tiny_gray().longs(0x8769, {place})).bytes();
        EXPECT_THAT(header(file)->exif, IsEmpty());
    }
}

} // namespace
} // namespace codecs_test
