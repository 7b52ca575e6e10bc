#include "cocoa/codecs/formats.h"
#include "cocoa/codecs/jpeg_errors.h"
#include "cocoa/codecs/output.h"

#include <algorithm>
#include <array>
#include <new>

#include <jerror.h>

namespace cocoa::codecs {

namespace {

constexpr std::array<std::uint8_t, 6> exifLabel{'E', 'x', 'i', 'f', 0, 0};
constexpr std::size_t maximumMarker = 65533;

/// libjpeg's destination, writing into an `Output`. `base` comes first, so that libjpeg's pointer
/// to it is one to the whole.
struct Destination {
    jpeg_destination_mgr base{};
    Output output;

    static Destination& of(j_compress_ptr encoder) {
        return *reinterpret_cast<Destination*>(encoder->dest);
    }

    static void make_room(j_compress_ptr encoder) {
        Destination& self = of(encoder);
        const std::size_t chunk = std::max(self.output.size(), std::size_t{64} << 10);
        self.base.next_output_byte = self.output.room(chunk);
        if (!self.base.next_output_byte) ERREXIT1(encoder, JERR_OUT_OF_MEMORY, 0);
        self.base.free_in_buffer = self.roomSize = chunk;
    }
    static boolean take_full_room(j_compress_ptr encoder) {
        Destination& self = of(encoder);
        self.output.grow_by(self.roomSize);
        make_room(encoder);
        return TRUE;
    }
    static void finish(j_compress_ptr encoder) {
        Destination& self = of(encoder);
        self.output.grow_by(self.roomSize - self.base.free_in_buffer);
    }

    Destination() {
        base.init_destination = make_room;
        base.empty_output_buffer = take_full_room;
        base.term_destination = finish;
    }

    std::size_t roomSize = 0;
};

/// libjpeg's state for one file. What libjpeg can jump out of owns nothing itself.
struct JpegWriteSession {
    jpeg_compress_struct encoder{};
    JpegErrors errors;
    Destination destination;
    std::vector<std::uint8_t> exifPayload; ///< with its label
    std::vector<std::uint8_t> row;         ///< for CMYK, which is stored inverted

    PictureRows rows;

    explicit JpegWriteSession(const Picture& picture)
        : rows(picture) {
        encoder.err = errors.handlers();
    }
    ~JpegWriteSession() { jpeg_destroy_compress(&encoder); }
    JpegWriteSession(const JpegWriteSession&) = delete;
    JpegWriteSession& operator=(const JpegWriteSession&) = delete;

    bool write(const Picture& picture, const EncodeOptions& options) {
        if (setjmp(errors.escape)) return false;
        jpeg_create_compress(&encoder);
        encoder.dest = &destination.base;
        configure(picture, options);
        jpeg_start_compress(&encoder, TRUE);
        if (!exifPayload.empty()) {
            jpeg_write_marker(&encoder, JPEG_APP0 + 1, exifPayload.data(),
                              static_cast<unsigned>(exifPayload.size()));
        }
        if (!picture.iccProfile.empty()) {
            jpeg_write_icc_profile(&encoder, picture.iccProfile.data(),
                                   static_cast<unsigned>(picture.iccProfile.size()));
        }
        if (picture.layout.model == ColorModel::CMYK) {
            write_inverted();
        } else {
            write_straight();
        }
        jpeg_finish_compress(&encoder);
        return true;
    }

    void configure(const Picture& picture, const EncodeOptions& options) {
        encoder.image_width = picture.layout.width;
        encoder.image_height = picture.layout.height;
        encoder.input_components = picture.layout.colorSamples();
        encoder.in_color_space = picture.layout.model == ColorModel::Gray  ? JCS_GRAYSCALE
                                 : picture.layout.model == ColorModel::RGB ? JCS_RGB
                                                                           : JCS_CMYK;
        jpeg_set_defaults(&encoder);
        const float quality = options.quality > 0 ? std::min(options.quality, 1.0F) : 0.0F;
        jpeg_set_quality(&encoder, static_cast<int>(std::lround(quality * 100)), TRUE);
        // The best qualities keep the colours as sharp as the light.
        constexpr float fullColor = 0.95F;
        if (encoder.num_components == 3 && quality >= fullColor) {
            encoder.comp_info[0].h_samp_factor = encoder.comp_info[0].v_samp_factor = 1;
        }
        if (options.progressive) jpeg_simple_progression(&encoder);
        if (picture.dpiX > 0 && picture.dpiY > 0) {
            constexpr int dotsPerInch = 1;
            encoder.density_unit = dotsPerInch;
            encoder.X_density = density(picture.dpiX);
            encoder.Y_density = density(picture.dpiY);
            // CMYK files bear Adobe's marker, but only JFIF's has room for a resolution.
            encoder.write_JFIF_header = TRUE;
        }
    }

    static UINT16 density(double dpi) {
        return static_cast<UINT16>(std::clamp(std::round(dpi), 1.0, 65535.0));
    }

    void write_straight() {
        while (encoder.next_scanline < encoder.image_height) {
            // libjpeg's rows are not const, but only read.
            auto* source = const_cast<JSAMPROW>(rows[encoder.next_scanline]);
            jpeg_write_scanlines(&encoder, &source, 1);
        }
    }

    void write_inverted() {
        while (encoder.next_scanline < encoder.image_height) {
            const std::uint8_t* source = rows[encoder.next_scanline];
            for (std::size_t i = 0; i < row.size(); ++i) {
                row[i] = static_cast<std::uint8_t>(~source[i]);
            }
            JSAMPROW inverted = row.data();
            jpeg_write_scanlines(&encoder, &inverted, 1);
        }
    }
};

} // namespace

Encoded encode_jpeg(std::span<const Picture> pages, const EncodeOptions& options) try {
    if (pages.size() != 1 || !well_formed_or_rows(pages.front())) return {};
    const Picture& picture = pages.front();
    const PixelLayout& layout = picture.layout;
    if (layout.bitsPerSample != 8 || layout.alpha != Alpha::None) return {};
    if (layout.width > JPEG_MAX_DIMENSION || layout.height > JPEG_MAX_DIMENSION) return {};

    JpegWriteSession session(picture);
    // A block that does not fit its marker is left out, the image still written.
    if (!picture.exif.empty() && picture.exif.size() <= maximumMarker - exifLabel.size()) {
        session.exifPayload.assign(exifLabel.begin(), exifLabel.end());
        session.exifPayload.insert(session.exifPayload.end(), picture.exif.begin(),
                                   picture.exif.end());
    }
    if (layout.model == ColorModel::CMYK) session.row.resize(layout.packedRowBytes());
    if (!session.write(picture, options)) return {};
    return session.destination.output.take();
} catch (const std::bad_alloc&) {
    return {};
}

} // namespace cocoa::codecs
