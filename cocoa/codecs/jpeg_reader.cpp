#include "cocoa/codecs/exif.h"
#include "cocoa/codecs/formats.h"
#include "cocoa/codecs/jpeg_errors.h"

#include <algorithm>
#include <array>
#include <optional>

#include <jerror.h>

namespace cocoa::codecs {

namespace {

constexpr int exifMarker = JPEG_APP0 + 1;
constexpr int profileMarker = JPEG_APP0 + 2;

/// More scans than any real file has; each costs a pass over the whole image.
constexpr int maximumScans = 200;

void limit_scans(j_common_ptr common) {
    const auto* decoder = reinterpret_cast<j_decompress_ptr>(common);
    if (decoder->input_scan_number > maximumScans) ERREXIT(common, JERR_CANT_SUSPEND);
}

/// libjpeg's state for one pass over the data. All that libjpeg can jump out of lies in functions
/// of this struct that own nothing themselves.
struct JpegSession {
    jpeg_decompress_struct decoder{};
    JpegErrors errors;
    jpeg_progress_mgr progress{};
    JOCTET* profile = nullptr;
    unsigned profileSize = 0;

    JpegSession() { decoder.err = errors.handlers(); }
    ~JpegSession() {
        jpeg_destroy_decompress(&decoder);
        std::free(profile);
    }
    JpegSession(const JpegSession&) = delete;
    JpegSession& operator=(const JpegSession&) = delete;

    bool read_header(Bytes data, bool keepMetadata) {
        if (setjmp(errors.escape)) return false;
        jpeg_create_decompress(&decoder);
        progress.progress_monitor = limit_scans;
        decoder.progress = &progress;
        jpeg_mem_src(&decoder, data.data(), static_cast<unsigned long>(data.size()));
        if (keepMetadata) {
            constexpr unsigned whole = 0xFFFF;
            jpeg_save_markers(&decoder, exifMarker, whole);
            jpeg_save_markers(&decoder, profileMarker, whole);
        }
        if (jpeg_read_header(&decoder, TRUE) != JPEG_HEADER_OK) return false;
        if (keepMetadata) jpeg_read_icc_profile(&decoder, &profile, &profileSize);
        return choose_output() && !errors.invented;
    }

    bool choose_output() {
        switch (decoder.jpeg_color_space) {
        case JCS_GRAYSCALE:
            decoder.out_color_space = JCS_GRAYSCALE;
            return true;
        case JCS_RGB:
        case JCS_YCbCr:
            decoder.out_color_space = JCS_RGB;
            return true;
        case JCS_CMYK:
        case JCS_YCCK:
            decoder.out_color_space = JCS_CMYK;
            return true;
        default:
            return false;
        }
    }

    bool read_rows(int reduction, std::uint8_t* pixels, std::size_t rowBytes) {
        if (setjmp(errors.escape)) return false;
        decoder.scale_num = 1;
        decoder.scale_denom = static_cast<unsigned>(reduction);
        jpeg_start_decompress(&decoder);
        // Adobe's files store how much light is left, not how much ink there is.
        const bool inverted = decoder.out_color_space == JCS_CMYK && decoder.saw_Adobe_marker;
        std::array<JSAMPROW, 16> rows;
        while (decoder.output_scanline < decoder.output_height && !errors.invented) {
            const JDIMENSION first = decoder.output_scanline;
            const auto count = static_cast<JDIMENSION>(
                std::min<std::size_t>(rows.size(), decoder.output_height - first));
            for (JDIMENSION i = 0; i < count; ++i)
                rows[i] = pixels + (first + i) * rowBytes;
            const JDIMENSION done = jpeg_read_scanlines(&decoder, rows.data(), count);
            for (JDIMENSION i = 0; inverted && i < done; ++i)
                invert(rows[i]);
        }
        return !errors.invented;
    }

    void invert(std::uint8_t* row) const {
        const std::size_t count = std::size_t{decoder.output_width} * 4;
        for (std::size_t i = 0; i < count; ++i)
            row[i] = static_cast<std::uint8_t>(~row[i]);
    }
};

/// The EXIF block among the markers that were kept.
Bytes exif_block(const jpeg_decompress_struct& decoder) {
    static constexpr std::array<std::uint8_t, 6> label{'E', 'x', 'i', 'f', 0, 0};
    for (const auto* marker = decoder.marker_list; marker; marker = marker->next) {
        const Bytes content(marker->data, marker->data_length);
        if (marker->marker == exifMarker && content.size() > label.size() &&
            std::equal(label.begin(), label.end(), content.begin())) {
            return content.subspan(label.size());
        }
    }
    return {};
}

/// A file that ends early has no end marker behind its header.
bool has_end(Bytes scans) {
    for (std::size_t at = scans.size(); at >= 2; --at) {
        if (scans[at - 1] == JPEG_EOI && scans[at - 2] == 0xFF) return true;
    }
    return false;
}

class JpegReader : public Reader {
public:
    JpegReader(Bytes data, PageInfo info)
        : data_(data)
        , info_(std::move(info)) {}

    const PageInfo& page(std::size_t) const override { return info_; }

    PixelLayout reducedLayout(std::size_t, int reduction) const override {
        PixelLayout layout = info_.layout;
        const auto divisor = static_cast<unsigned>(usable(reduction));
        layout.width = (layout.width + divisor - 1) / divisor;
        layout.height = (layout.height + divisor - 1) / divisor;
        return layout;
    }

    bool read(std::size_t index, int reduction, std::uint8_t* pixels,
              std::size_t rowBytes) override {
        if (index != 0 || !pixels || rowBytes < reducedLayout(0, reduction).packedRowBytes()) {
            return false;
        }
        JpegSession session;
        return session.read_header(data_, false) &&
               session.read_rows(usable(reduction), pixels, rowBytes);
    }

private:
    static int usable(int reduction) {
        return reduction == 2 || reduction == 4 || reduction == 8 ? reduction : 1;
    }

    Bytes data_;
    PageInfo info_;
};

void set_resolution(PageInfo& info, const jpeg_decompress_struct& decoder,
                    const ExifSummary& summary) {
    constexpr int dotsPerInch = 1;
    constexpr int dotsPerCentimeter = 2;
    const int unit = decoder.saw_JFIF_marker ? decoder.density_unit : 0;
    if (unit == dotsPerInch || unit == dotsPerCentimeter) {
        const double scale = unit == dotsPerInch ? 1 : 2.54;
        info.dpiX = decoder.X_density * scale;
        info.dpiY = decoder.Y_density * scale;
    } else {
        info.dpiX = summary.dpiX;
        info.dpiY = summary.dpiY;
    }
}

} // namespace

bool sniff_jpeg(Bytes data) {
    constexpr std::uint8_t startOfImage = 0xD8;
    return data.size() >= 3 && data[0] == 0xFF && data[1] == startOfImage && data[2] == 0xFF;
}

std::unique_ptr<Reader> open_jpeg(Bytes data) {
    if (!sniff_jpeg(data)) return nullptr;
    JpegSession session;
    if (!session.read_header(data, true)) return nullptr;
    const jpeg_decompress_struct& decoder = session.decoder;
    if (!acceptable_size(decoder.image_width, decoder.image_height)) return nullptr;
    const Bytes scans = data.last(decoder.src->bytes_in_buffer);
    if (!has_end(scans)) return nullptr;
    // Every block of 8 by 8 takes a bit at least, so less data than this cannot be the image.
    constexpr std::uint64_t mostPixelsPerByte = 64 * 8;
    const std::uint64_t pixels = std::uint64_t{decoder.image_width} * decoder.image_height;
    if (!decoder.arith_code && pixels / mostPixelsPerByte > scans.size()) return nullptr;

    PageInfo info;
    info.layout.width = decoder.image_width;
    info.layout.height = decoder.image_height;
    info.layout.model = decoder.out_color_space == JCS_GRAYSCALE ? ColorModel::Gray
                        : decoder.out_color_space == JCS_RGB     ? ColorModel::RGB
                                                                 : ColorModel::CMYK;
    if (session.profile) {
        info.iccProfile.assign(session.profile, session.profile + session.profileSize);
    }
    const Bytes exif = exif_block(decoder);
    info.exif.assign(exif.begin(), exif.end());
    const ExifSummary summary = exif_summary(exif);
    info.orientation = summary.orientation;
    set_resolution(info, decoder, summary);
    return std::make_unique<JpegReader>(data, std::move(info));
}

} // namespace cocoa::codecs
