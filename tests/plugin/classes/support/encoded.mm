#include "plugin/classes/support/encoded.h"

#include "support/temporary_folder.h"

#include <cstdio>
#include <cstdlib>
#include <sstream>

#include <jpeglib.h>
#include <png.h>

std::vector<Pixel> decoded_png(const std::string& data) {
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    EXPECT_TRUE(png_image_begin_read_from_memory(&image, data.data(), data.size()))
        << image.message;
    if (image.warning_or_error) return {};
    image.format = PNG_FORMAT_RGBA;
    std::vector<png_byte> samples(PNG_IMAGE_SIZE(image));
    EXPECT_TRUE(png_image_finish_read(&image, nullptr, samples.data(), 0, nullptr))
        << image.message;
    std::vector<Pixel> pixels;
    for (std::size_t i = 0; i < samples.size(); i += 4)
        pixels.push_back({samples[i], samples[i + 1], samples[i + 2], samples[i + 3]});
    return pixels;
}

namespace {

/// What a netpbm tool makes of the data.
std::string converted(const std::string& command, const std::string& data) {
    const TemporaryFolder folder;
    const std::string file = folder.file("data", data);
    std::FILE* const pipe = popen((command + " -plain " + file + " 2>/dev/null").c_str(), "r");
    EXPECT_NE(pipe, nullptr);
    if (!pipe) return {};
    std::string output;
    char part[4096];
    while (const std::size_t size = std::fread(part, 1, sizeof part, pipe))
        output.append(part, size);
    EXPECT_EQ(pclose(pipe), 0) << command;
    return output;
}

/// The pixels of netpbm's plain forms: P1 of digits (1 is black), P2 of grey, P3 of colours.
std::vector<Pixel> pixels_of_picture(const std::string& picture) {
    std::istringstream stream(picture);
    std::string kind;
    int width = 0, height = 0, largest = 0;
    stream >> kind >> width >> height;
    std::vector<Pixel> pixels;
    if (kind == "P1") {
        for (char digit; stream >> digit;) {
            const int level = digit == '0' ? 255 : 0;
            pixels.push_back({level, level, level});
        }
    } else {
        stream >> largest;
        EXPECT_EQ(largest, 255) << picture;
        for (int red, green, blue; stream >> red;) {
            green = blue = red;
            if (kind == "P3") stream >> green >> blue;
            pixels.push_back({red, green, blue});
        }
    }
    EXPECT_EQ(pixels.size(), static_cast<std::size_t>(width * height)) << picture;
    return pixels;
}

} // namespace

std::vector<Pixel> decoded_bmp(const std::string& data) {
    return pixels_of_picture(converted("bmptopnm", data));
}

std::vector<Pixel> decoded_gif(const std::string& data) {
    std::vector<Pixel> pixels = pixels_of_picture(converted("giftopnm", data));
    const std::vector<Pixel> alpha = pixels_of_picture(converted("giftopnm -alphaout=-", data));
    for (std::size_t i = 0; i < pixels.size() && i < alpha.size(); ++i)
        pixels[i].alpha = alpha[i].red;
    return pixels;
}

/// libjpeg ends the process on an error, and so the test.
std::vector<Pixel> decoded_jpeg(const std::string& data) {
    jpeg_error_mgr errors;
    jpeg_decompress_struct decoder;
    decoder.err = jpeg_std_error(&errors);
    jpeg_create_decompress(&decoder);
    jpeg_mem_src(&decoder, reinterpret_cast<const unsigned char*>(data.data()), data.size());
    jpeg_read_header(&decoder, TRUE);
    decoder.out_color_space = JCS_RGB;
    jpeg_start_decompress(&decoder);
    std::vector<Pixel> pixels;
    std::vector<JSAMPLE> row(decoder.output_width * 3);
    while (decoder.output_scanline < decoder.output_height) {
        JSAMPROW target = row.data();
        jpeg_read_scanlines(&decoder, &target, 1);
        for (std::size_t i = 0; i < row.size(); i += 3)
            pixels.push_back({row[i], row[i + 1], row[i + 2]});
    }
    jpeg_finish_decompress(&decoder);
    jpeg_destroy_decompress(&decoder);
    return pixels;
}

namespace {

/// A field of a little-endian TIFF directory: one value of the type.
std::string exif_field(int tag, int type, int value) {
    const auto byte = [](int number) { return static_cast<char>(number); };
    return {byte(tag), byte(tag >> 8), byte(type),       0, 1, 0, 0,
            0,         byte(value),    byte(value >> 8), 0, 0};
}

/// A directory of one field, and no other behind it.
std::string exif_directory(const std::string& field) {
    return std::string("\1\0", 2) + field + std::string(4, '\0');
}

/// A grey JPEG with an EXIF block, told from its first directory on, which lies at 8.
std::string jpeg_with_exif(unsigned width, unsigned height, const std::string& directories) {
    const std::string exif = std::string("Exif\0\0II*\0\x08\0\0\0", 14) + directories;

    jpeg_error_mgr errors;
    jpeg_compress_struct encoder;
    encoder.err = jpeg_std_error(&errors);
    jpeg_create_compress(&encoder);
    unsigned char* bytes = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&encoder, &bytes, &size);
    encoder.image_width = width;
    encoder.image_height = height;
    encoder.input_components = 1;
    encoder.in_color_space = JCS_GRAYSCALE;
    jpeg_set_defaults(&encoder);
    jpeg_start_compress(&encoder, TRUE);
    jpeg_write_marker(&encoder, JPEG_APP0 + 1, reinterpret_cast<const JOCTET*>(exif.data()),
                      static_cast<unsigned>(exif.size()));
    std::vector<JSAMPLE> row(width, 128);
    JSAMPROW source = row.data();
    for (unsigned y = 0; y < height; ++y)
        jpeg_write_scanlines(&encoder, &source, 1);
    jpeg_finish_compress(&encoder);
    jpeg_destroy_compress(&encoder);
    std::string file(reinterpret_cast<const char*>(bytes), size);
    std::free(bytes);
    return file;
}

} // namespace

std::string oriented_jpeg(unsigned width, unsigned height, int orientation) {
    constexpr int orientationTag = 0x112, shortType = 3;
    return jpeg_with_exif(width, height,
                          exif_directory(exif_field(orientationTag, shortType, orientation)));
}

std::string exposed_jpeg() {
    constexpr int exifDirectoryTag = 0x8769, longType = 4;
    constexpr int exposureTimeTag = 0x829A, rationalType = 5;
    constexpr int directorySize = 18, second = 8 + directorySize;
    return jpeg_with_exif(
        8, 8,
        exif_directory(exif_field(exifDirectoryTag, longType, second)) +
            exif_directory(exif_field(exposureTimeTag, rationalType, second + directorySize)) +
            std::string("\1\0\0\0\x08\0\0\0", 8));
}

unsigned long tiff_compression(const std::string& data) {
    const auto byte = [&](std::size_t at) -> unsigned long {
        return static_cast<unsigned char>(data.at(at));
    };
    const bool isBig = data.at(0) == 'M';
    const auto number = [&](std::size_t at, std::size_t size) {
        unsigned long value = 0;
        for (std::size_t i = 0; i < size; ++i)
            value = value << 8 | byte(at + (isBig ? i : size - 1 - i));
        return value;
    };
    const std::size_t directory = number(4, 4);
    for (std::size_t i = 0; i < number(directory, 2); ++i) {
        const std::size_t entry = directory + 2 + i * 12;
        if (number(entry, 2) == 259) return number(entry + 8, 2);
    }
    ADD_FAILURE() << "no compression field";
    return 0;
}
