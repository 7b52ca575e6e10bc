#include "bench/bare_codecs.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

#include <gif_lib.h>
#include <jpeglib.h>
#include <png.h>
#include <tiffio.h>

namespace bench {

namespace {

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};
/// Fresh memory for a picture.
using Pixels = std::unique_ptr<std::uint8_t, Free>;
Pixels fresh(std::size_t size) { return Pixels(static_cast<std::uint8_t*>(std::malloc(size))); }

struct Input {
    const Bytes& bytes;
    std::size_t at = 0;

    std::size_t read(void* target, std::size_t count) {
        count = std::min(count, bytes.size() - at);
        std::memcpy(target, bytes.data() + at, count);
        at += count;
        return count;
    }
};

struct Output {
    Bytes bytes;
    std::size_t at = 0;

    void write(const void* source, std::size_t count) {
        if (bytes.size() < at + count) {
            if (bytes.capacity() < at + count) bytes.reserve((at + count) * 2);
            bytes.resize(at + count);
        }
        std::memcpy(bytes.data() + at, source, count);
        at += count;
    }
};

Bytes encode_jpeg(const Picture& picture, bool progressive) {
    jpeg_compress_struct encoder{};
    jpeg_error_mgr errors;
    encoder.err = jpeg_std_error(&errors);
    jpeg_create_compress(&encoder);
    unsigned char* buffer = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&encoder, &buffer, &size);
    encoder.image_width = static_cast<JDIMENSION>(picture.width);
    encoder.image_height = static_cast<JDIMENSION>(picture.height);
    encoder.input_components = 3;
    encoder.in_color_space = JCS_RGB;
    jpeg_set_defaults(&encoder);
    jpeg_set_quality(&encoder, 80, TRUE);
    if (progressive) jpeg_simple_progression(&encoder);
    jpeg_start_compress(&encoder, TRUE);
    while (encoder.next_scanline < encoder.image_height) {
        auto* row = const_cast<JSAMPROW>(
            &picture.pixels[encoder.next_scanline * static_cast<std::size_t>(picture.width) * 3]);
        jpeg_write_scanlines(&encoder, &row, 1);
    }
    jpeg_finish_compress(&encoder);
    jpeg_destroy_compress(&encoder);
    Bytes file(buffer, buffer + size);
    std::free(buffer);
    return file;
}

tmsize_t tiff_read(thandle_t handle, void* target, tmsize_t count) {
    return static_cast<tmsize_t>(
        static_cast<Input*>(handle)->read(target, static_cast<std::size_t>(count)));
}
tmsize_t tiff_write(thandle_t handle, void* source, tmsize_t count) {
    static_cast<Output*>(handle)->write(source, static_cast<std::size_t>(count));
    return count;
}
tmsize_t tiff_nothing(thandle_t, void*, tmsize_t) { return 0; }
template <class Stream>
toff_t tiff_seek(thandle_t handle, toff_t offset, int whence) {
    auto* stream = static_cast<Stream*>(handle);
    stream->at = whence == SEEK_SET
                     ? offset
                     : offset + (whence == SEEK_CUR ? stream->at : stream->bytes.size());
    return stream->at;
}
template <class Stream>
toff_t tiff_size(thandle_t handle) {
    return static_cast<Stream*>(handle)->bytes.size();
}
int tiff_close(thandle_t) { return 0; }
int tiff_map(thandle_t handle, void** base, toff_t* size) {
    const Bytes& bytes = static_cast<Input*>(handle)->bytes;
    *base = const_cast<std::uint8_t*>(bytes.data());
    *size = bytes.size();
    return 1;
}
int tiff_map_nothing(thandle_t, void**, toff_t*) { return 0; }
void tiff_unmap(thandle_t, void*, toff_t) {}

Bytes encode_tiff(const Picture& picture, int compression) {
    Output output;
    TIFF* tiff = TIFFClientOpen("", "w", &output, tiff_nothing, tiff_write, tiff_seek<Output>,
                                tiff_close, tiff_size<Output>, tiff_map_nothing, tiff_unmap);
    if (!tiff) return {};
    const auto rowBytes = static_cast<std::size_t>(picture.width) * 3;
    constexpr int rows = 16;
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, picture.width);
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, picture.height);
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 8);
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, 3);
    TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB);
    TIFFSetField(tiff, TIFFTAG_COMPRESSION, compression);
    if (compression == COMPRESSION_LZW) TIFFSetField(tiff, TIFFTAG_PREDICTOR, PREDICTOR_HORIZONTAL);
    TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, rows);
    for (int y = 0, strip = 0; y < picture.height; y += rows, ++strip) {
        const int count = std::min(rows, picture.height - y);
        auto* source =
            const_cast<std::uint8_t*>(&picture.pixels[static_cast<std::size_t>(y) * rowBytes]);
        TIFFWriteEncodedStrip(tiff, static_cast<std::uint32_t>(strip), source,
                              static_cast<tmsize_t>(rowBytes) * count);
    }
    TIFFClose(tiff);
    return std::move(output.bytes);
}

int gif_read(GifFileType* gif, GifByteType* target, int count) {
    return static_cast<int>(
        static_cast<Input*>(gif->UserData)->read(target, static_cast<std::size_t>(count)));
}
int gif_write(GifFileType* gif, const GifByteType* source, int count) {
    static_cast<Output*>(gif->UserData)->write(source, static_cast<std::size_t>(count));
    return count;
}

void put_number(std::uint8_t* at, std::uint32_t value) {
    for (int i = 0; i < 4; ++i)
        at[i] = static_cast<std::uint8_t>(value >> 8 * i);
}
std::uint32_t number_at(const std::uint8_t* at) {
    return static_cast<std::uint32_t>(at[0] | at[1] << 8 | at[2] << 16) | std::uint32_t{at[3]}
                                                                              << 24;
}

void swap_row(const std::uint8_t* from, std::uint8_t* to, std::size_t pixels) {
    for (std::size_t x = 0; x < pixels; ++x, from += 3, to += 3) {
        to[0] = from[2];
        to[1] = from[1];
        to[2] = from[0];
    }
}

} // namespace

bool decodeJPEG(const Bytes& file) {
    jpeg_decompress_struct decoder{};
    jpeg_error_mgr errors;
    decoder.err = jpeg_std_error(&errors);
    jpeg_create_decompress(&decoder);
    jpeg_mem_src(&decoder, file.data(), file.size());
    jpeg_read_header(&decoder, TRUE);
    decoder.out_color_space = JCS_RGB;
    jpeg_start_decompress(&decoder);
    const std::size_t rowBytes = std::size_t{decoder.output_width} * 3;
    const Pixels pixels = fresh(rowBytes * decoder.output_height);
    while (decoder.output_scanline < decoder.output_height) {
        JSAMPROW row = pixels.get() + decoder.output_scanline * rowBytes;
        jpeg_read_scanlines(&decoder, &row, 1);
    }
    jpeg_finish_decompress(&decoder);
    jpeg_destroy_decompress(&decoder);
    return true;
}

bool decodePNG(const Bytes& file) {
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    Input input{file};
    png_set_read_fn(png, &input, [](png_structp reader, png_bytep target, size_t count) {
        static_cast<Input*>(png_get_io_ptr(reader))->read(target, count);
    });
    png_read_info(png, info);
    const std::size_t rowBytes = png_get_rowbytes(png, info);
    const std::size_t height = png_get_image_height(png, info);
    const Pixels pixels = fresh(rowBytes * height);
    for (std::size_t y = 0; y < height; ++y)
        png_read_row(png, pixels.get() + y * rowBytes, nullptr);
    png_read_end(png, nullptr);
    png_destroy_read_struct(&png, &info, nullptr);
    return true;
}

bool decodeTIFF(const Bytes& file) {
    Input input{file};
    TIFF* tiff = TIFFClientOpen("", "r", &input, tiff_read, tiff_nothing, tiff_seek<Input>,
                                tiff_close, tiff_size<Input>, tiff_map, tiff_unmap);
    if (!tiff) return false;
    std::uint32_t height = 0;
    TIFFGetField(tiff, TIFFTAG_IMAGELENGTH, &height);
    const auto rowBytes = static_cast<std::size_t>(TIFFScanlineSize(tiff));
    const Pixels pixels = fresh(rowBytes * height);
    const auto stripSize = static_cast<std::size_t>(TIFFStripSize(tiff));
    bool whole = true;
    for (std::uint32_t strip = 0; strip < TIFFNumberOfStrips(tiff); ++strip) {
        whole =
            TIFFReadEncodedStrip(tiff, strip, pixels.get() + strip * stripSize, -1) >= 0 && whole;
    }
    TIFFClose(tiff);
    return whole;
}

bool decodeGIF(const Bytes& file) {
    Input input{file};
    int error = 0;
    GifFileType* gif = DGifOpen(&input, gif_read, &error);
    if (!gif || DGifSlurp(gif) != GIF_OK) return false;
    const SavedImage& image = gif->SavedImages[0];
    const ColorMapObject* map = gif->SColorMap;
    const auto count = static_cast<std::size_t>(image.ImageDesc.Width) *
                       static_cast<std::size_t>(image.ImageDesc.Height);
    const Pixels pixels = fresh(count * 3);
    std::uint8_t* out = pixels.get();
    for (std::size_t i = 0; i < count; ++i, out += 3) {
        const GifColorType& color = map->Colors[image.RasterBits[i]];
        out[0] = color.Red;
        out[1] = color.Green;
        out[2] = color.Blue;
    }
    DGifCloseFile(gif, &error);
    return true;
}

bool decodeBMP(const Bytes& file) {
    const std::size_t width = number_at(&file[18]);
    const std::size_t height = number_at(&file[22]);
    const std::size_t fileRow = (width * 3 + 3) / 4 * 4;
    const Pixels pixels = fresh(width * 3 * height);
    for (std::size_t y = 0; y < height; ++y) {
        swap_row(&file[number_at(&file[10]) + (height - 1 - y) * fileRow],
                 pixels.get() + y * width * 3, width);
    }
    return true;
}

Bytes encodeJPEG(const Picture& picture) { return encode_jpeg(picture, false); }
Bytes encodeProgressiveJPEG(const Picture& picture) { return encode_jpeg(picture, true); }

Bytes encodePNG(const Picture& picture) {
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    Output output;
    png_set_write_fn(
        png, &output,
        [](png_structp writer, png_bytep source, size_t count) {
            static_cast<Output*>(png_get_io_ptr(writer))->write(source, count);
        },
        nullptr);
    png_set_compression_level(png, 3);
    png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_FILTER_NONE | PNG_FILTER_SUB | PNG_FILTER_UP);
    png_set_IHDR(png, info, static_cast<png_uint_32>(picture.width),
                 static_cast<png_uint_32>(picture.height), 8, PNG_COLOR_TYPE_RGB,
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    for (int y = 0; y < picture.height; ++y) {
        png_write_row(png, &picture.pixels[static_cast<std::size_t>(y) *
                                           static_cast<std::size_t>(picture.width) * 3]);
    }
    png_write_end(png, info);
    png_destroy_write_struct(&png, &info);
    return std::move(output.bytes);
}

Bytes encodeTIFF(const Picture& picture) { return encode_tiff(picture, COMPRESSION_NONE); }
Bytes encodeTIFFLZW(const Picture& picture) { return encode_tiff(picture, COMPRESSION_LZW); }

Bytes encodeGrayGIF(const Picture& picture) {
    Output output;
    int error = 0;
    GifFileType* gif = EGifOpen(&output, gif_write, &error);
    ColorMapObject* map = GifMakeMapObject(256, nullptr);
    if (!gif || !map) return {};
    for (int i = 0; i < 256; ++i) {
        const auto gray = static_cast<GifByteType>(i);
        map->Colors[i] = {gray, gray, gray};
    }
    EGifPutScreenDesc(gif, picture.width, picture.height, 8, 0, map);
    EGifPutImageDesc(gif, 0, 0, picture.width, picture.height, false, nullptr);
    for (int y = 0; y < picture.height; ++y) {
        auto* row = const_cast<GifPixelType*>(
            &picture.pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.width)]);
        EGifPutLine(gif, row, picture.width);
    }
    EGifCloseFile(gif, &error);
    GifFreeMapObject(map);
    return std::move(output.bytes);
}

Bytes encodeBMP(const Picture& picture) {
    const auto width = static_cast<std::size_t>(picture.width);
    const auto height = static_cast<std::size_t>(picture.height);
    const std::size_t fileRow = (width * 3 + 3) / 4 * 4;
    constexpr std::size_t start = 54;
    Bytes file(start + fileRow * height);
    file[0] = 'B';
    file[1] = 'M';
    put_number(&file[2], static_cast<std::uint32_t>(file.size()));
    put_number(&file[10], start);
    put_number(&file[14], 40);
    put_number(&file[18], static_cast<std::uint32_t>(width));
    put_number(&file[22], static_cast<std::uint32_t>(height));
    file[26] = 1;
    file[28] = 24;
    for (std::size_t y = 0; y < height; ++y)
        swap_row(&picture.pixels[y * width * 3], &file[start + (height - 1 - y) * fileRow], width);
    return file;
}

} // namespace bench
