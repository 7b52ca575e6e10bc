#include "jpeg_file.h"

#include <cstdlib>

namespace codecs_test {

ByteVector make_jpeg(const JpegRecipe& recipe, const ByteVector& samples) {
    jpeg_compress_struct encoder{};
    jpeg_error_mgr errors{};
    encoder.err = jpeg_std_error(&errors);
    jpeg_create_compress(&encoder);
    unsigned char* bytes = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&encoder, &bytes, &size);
    encoder.image_width = recipe.width;
    encoder.image_height = recipe.height;
    encoder.in_color_space = recipe.given;
    encoder.input_components = recipe.given == JCS_GRAYSCALE ? 1 : recipe.given == JCS_RGB ? 3 : 4;
    jpeg_set_defaults(&encoder);
    jpeg_set_colorspace(&encoder, recipe.stored);
    jpeg_set_quality(&encoder, recipe.quality, TRUE);
    if (recipe.progressive) jpeg_simple_progression(&encoder);
    encoder.restart_in_rows = recipe.restartRows;
    if (recipe.adobeMarker) encoder.write_Adobe_marker = *recipe.adobeMarker;
    if (!recipe.jfifMarker) encoder.write_JFIF_header = FALSE;
    encoder.density_unit = static_cast<UINT8>(recipe.densityUnit);
    encoder.X_density = recipe.densityX;
    encoder.Y_density = recipe.densityY;
    jpeg_start_compress(&encoder, TRUE);
    for (const auto& [marker, content] : recipe.markers) {
        jpeg_write_marker(&encoder, marker, content.data(), static_cast<unsigned>(content.size()));
    }
    if (!recipe.profile.empty()) {
        jpeg_write_icc_profile(&encoder, recipe.profile.data(),
                               static_cast<unsigned>(recipe.profile.size()));
    }
    const std::size_t rowBytes =
        std::size_t{recipe.width} * static_cast<unsigned>(encoder.input_components);
    while (encoder.next_scanline < encoder.image_height) {
        auto* row = const_cast<JSAMPROW>(&samples[encoder.next_scanline * rowBytes]);
        jpeg_write_scanlines(&encoder, &row, 1);
    }
    jpeg_finish_compress(&encoder);
    jpeg_destroy_compress(&encoder);
    ByteVector file(bytes, bytes + size);
    std::free(bytes);
    return file;
}

ByteVector read_jpeg(Bytes file, J_COLOR_SPACE colors, unsigned reduction) {
    jpeg_decompress_struct decoder{};
    jpeg_error_mgr errors{};
    decoder.err = jpeg_std_error(&errors);
    jpeg_create_decompress(&decoder);
    jpeg_mem_src(&decoder, file.data(), static_cast<unsigned long>(file.size()));
    jpeg_read_header(&decoder, TRUE);
    decoder.out_color_space = colors;
    decoder.scale_num = 1;
    decoder.scale_denom = reduction;
    jpeg_start_decompress(&decoder);
    const std::size_t rowBytes =
        std::size_t{decoder.output_width} * static_cast<unsigned>(decoder.output_components);
    ByteVector samples(rowBytes * decoder.output_height);
    while (decoder.output_scanline < decoder.output_height) {
        JSAMPROW row = &samples[decoder.output_scanline * rowBytes];
        jpeg_read_scanlines(&decoder, &row, 1);
    }
    jpeg_finish_decompress(&decoder);
    jpeg_destroy_decompress(&decoder);
    return samples;
}

ByteVector exif_marker(const ByteVector& block) {
    ByteVector content = bytes_of("Exif");
    append(content, {0, 0});
    append(content, block);
    return content;
}

} // namespace codecs_test
