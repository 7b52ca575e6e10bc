#include "plugin/classes/support/encoded.h"

#include <cstdio>
#include <cstdlib>

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

std::string oriented_jpeg(unsigned width, unsigned height, int orientation) {
    // A TIFF directory of one field: orientation, a short.
    std::string exif("Exif\0\0II*\0\x08\0\0\0\x01\0\x12\x01\x03\0\x01\0\0\0?\0\0\0\0\0\0\0", 32);
    exif[24] = static_cast<char>(orientation);

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
