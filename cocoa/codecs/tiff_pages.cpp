#include "cocoa/codecs/tiff_pages.h"
#include "cocoa/codecs/exif_fields.h"
#include "cocoa/codecs/formats.h"

#include <algorithm>

namespace cocoa::codecs {

namespace {

using Kind = SampleConversion::Kind;

template <class Value>
Value field(TIFF* tiff, std::uint32_t tag, Value otherwise = {}) {
    Value value = otherwise;
    return TIFFGetFieldDefaulted(tiff, tag, &value) ? value : otherwise;
}

struct Tags {
    std::uint16_t photometric;
    std::uint16_t bits;
    std::uint16_t samples;
    std::uint16_t format;
    std::uint16_t compression;
    bool separate;

    explicit Tags(TIFF* tiff)
        : photometric(field<std::uint16_t>(tiff, TIFFTAG_PHOTOMETRIC, 0xFFFF))
        , bits(field<std::uint16_t>(tiff, TIFFTAG_BITSPERSAMPLE, 1))
        , samples(field<std::uint16_t>(tiff, TIFFTAG_SAMPLESPERPIXEL, 1))
        , format(field<std::uint16_t>(tiff, TIFFTAG_SAMPLEFORMAT, SAMPLEFORMAT_UINT))
        , compression(field<std::uint16_t>(tiff, TIFFTAG_COMPRESSION, COMPRESSION_NONE))
        , separate(samples > 1 &&
                   field<std::uint16_t>(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG) ==
                       PLANARCONFIG_SEPARATE) {}

    bool jpeg_ycbcr() const {
        return photometric == PHOTOMETRIC_YCBCR && compression == COMPRESSION_JPEG && bits == 8 &&
               samples == 3 && !separate;
    }
};

/// Which of the extra samples is the alpha; one of unspecified meaning is none.
struct AlphaSample {
    Alpha alpha = Alpha::None;
    int extra = 0;
};

AlphaSample alpha_sample(TIFF* tiff) {
    std::uint16_t count = 0;
    std::uint16_t* types = nullptr;
    if (!TIFFGetField(tiff, TIFFTAG_EXTRASAMPLES, &count, &types)) return {};
    for (int i = 0; i < count; ++i) {
        if (types[i] == EXTRASAMPLE_ASSOCALPHA) return {Alpha::Premultiplied, i};
        if (types[i] == EXTRASAMPLE_UNASSALPHA) return {Alpha::Straight, i};
    }
    return {};
}

/// The colour model of the photometric interpretations that are decoded here, sample by sample.
std::optional<ColorModel> plain_model(TIFF* tiff, const Tags& tags) {
    switch (tags.photometric) {
    case PHOTOMETRIC_MINISWHITE:
    case PHOTOMETRIC_MINISBLACK:
        return ColorModel::Gray;
    case PHOTOMETRIC_PALETTE:
    case PHOTOMETRIC_RGB:
        return ColorModel::RGB;
    case PHOTOMETRIC_SEPARATED:
        if (field<std::uint16_t>(tiff, TIFFTAG_INKSET, INKSET_CMYK) != INKSET_CMYK) break;
        return ColorModel::CMYK;
    case PHOTOMETRIC_YCBCR:
        if (tags.jpeg_ycbcr()) return ColorModel::RGB;
        break;
    default:
        break;
    }
    return std::nullopt;
}

bool set_conversion(const Tags& tags, SampleConversion& conversion) {
    const bool whiteIsZero = tags.photometric == PHOTOMETRIC_MINISWHITE;
    const bool palette = tags.photometric == PHOTOMETRIC_PALETTE;
    conversion.fileBits = static_cast<std::uint8_t>(tags.bits);
    if (tags.bits == 32 && !whiteIsZero && !palette) {
        if (tags.format == SAMPLEFORMAT_UINT) {
            conversion.kind = Kind::HighHalf;
            return true;
        }
        conversion.kind = Kind::FromFloat;
        return tags.format == SAMPLEFORMAT_IEEEFP;
    }
    if (tags.format != SAMPLEFORMAT_UINT && tags.format != SAMPLEFORMAT_VOID) return false;
    switch (tags.bits) {
    case 1:
    case 2:
    case 4:
    case 8:
        conversion.kind = palette ? Kind::Palette : whiteIsZero ? Kind::Invert : Kind::Copy;
        return true;
    case 16:
        conversion.kind = whiteIsZero ? Kind::Invert : Kind::Copy;
        return !palette;
    default:
        return false;
    }
}

bool load_palette(TIFF* tiff, SampleConversion& conversion) {
    std::array<std::uint16_t*, 3> channels{};
    if (!TIFFGetField(tiff, TIFFTAG_COLORMAP, &channels[0], &channels[1], &channels[2])) {
        return false;
    }
    const std::size_t size = std::size_t{1} << conversion.fileBits;
    // Some writers fill the 16-bit entries with 8-bit values.
    const bool small = std::all_of(channels.begin(), channels.end(), [size](const auto* channel) {
        return std::all_of(channel, channel + size,
                           [](std::uint16_t value) { return value < 256; });
    });
    conversion.palette.resize(size);
    for (std::size_t entry = 0; entry < size; ++entry) {
        for (std::size_t channel = 0; channel < 3; ++channel) {
            const std::uint16_t value = channels[channel][entry];
            conversion.palette[entry][channel] =
                static_cast<std::uint8_t>(small ? value : value >> 8);
        }
    }
    return true;
}

/// Fills in how the page is decoded sample by sample; false when it cannot be.
bool describe_plain(TIFF* tiff, const Tags& tags, ColorModel model, TiffPage& page) {
    SampleConversion& conversion = page.conversion;
    if (!set_conversion(tags, conversion)) return false;
    PixelLayout& layout = page.info.layout;
    layout.model = model;
    const bool palette = conversion.kind == Kind::Palette;
    const int colors = palette ? 1 : layout.colorSamples();
    if (tags.samples < colors || (palette && !load_palette(tiff, conversion))) return false;

    page.fileSamples = tags.samples;
    page.separatePlanes = tags.separate;
    page.decodeAsRGB = tags.jpeg_ycbcr();
    layout.bitsPerSample = static_cast<std::uint8_t>(palette ? 8 : std::min<int>(tags.bits, 16));
    for (int i = 0; i < colors; ++i)
        page.fileSampleOf[static_cast<std::size_t>(i)] = i;
    const AlphaSample alpha = alpha_sample(tiff);
    if (!palette && alpha.alpha != Alpha::None && colors + alpha.extra < tags.samples) {
        layout.alpha = alpha.alpha;
        page.fileSampleOf[static_cast<std::size_t>(colors)] = colors + alpha.extra;
    }
    const bool wholeRows = conversion.kind == Kind::Copy ||
                           (conversion.kind == Kind::Invert && layout.alpha == Alpha::None);
    page.sameSamples = wholeRows && !tags.separate && tags.samples == layout.samplesPerPixel();
    page.route = TIFFIsTiled(tiff) ? TiffPage::Route::Tiles : TiffPage::Route::Strips;
    return true;
}

/// Fills in that libtiff converts the page; false when it cannot either.
bool describe_rendered(TIFF* tiff, TiffPage& page) {
    std::array<char, 1024> reason;
    if (!TIFFRGBAImageOK(tiff, reason.data())) return false;
    PixelLayout& layout = page.info.layout;
    layout.model = ColorModel::RGB;
    layout.bitsPerSample = 8;
    layout.alpha = alpha_sample(tiff).alpha == Alpha::None ? Alpha::None : Alpha::Premultiplied;
    page.route = TiffPage::Route::Rendered;
    return true;
}

double dots_per_inch(TIFF* tiff, std::uint32_t tag) {
    const double resolution = field<float>(tiff, tag);
    if (!std::isfinite(resolution) || resolution <= 0) return 0;
    switch (field<std::uint16_t>(tiff, TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH)) {
    case RESUNIT_INCH:
        return resolution;
    case RESUNIT_CENTIMETER: {
        // Whole dots an inch do not come out whole in centimetres.
        const double exact = resolution * 2.54;
        const double whole = std::round(exact);
        return std::abs(exact - whole) < 0.005 ? whole : exact;
    }
    default:
        return 0;
    }
}

void describe_metadata(TIFF* tiff, Bytes file, PageInfo& info) {
    info.dpiX = dots_per_inch(tiff, TIFFTAG_XRESOLUTION);
    info.dpiY = dots_per_inch(tiff, TIFFTAG_YRESOLUTION);
    const auto orientation = field<std::uint16_t>(tiff, TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
    info.orientation = orientation >= 1 && orientation <= 8 ? orientation : 1;
    std::uint32_t size = 0;
    const std::uint8_t* profile = nullptr;
    if (TIFFGetField(tiff, TIFFTAG_ICCPROFILE, &size, &profile)) {
        info.iccProfile.assign(profile, profile + size);
    }
    // Copies of what the first few pages have; a camera's file has no more.
    constexpr tdir_t mostExif = 64;
    toff_t exif = 0;
    if (TIFFCurrentDirectory(tiff) < mostExif && TIFFGetField(tiff, TIFFTAG_EXIFIFD, &exif) &&
        !TIFFIsBigTIFF(tiff)) {
        info.exif = exif_of_tiff(file, exif);
    }
}

/// The most bytes that one byte of a compression can make; 0 where there is no bound worth stating.
std::uint64_t most_expansion(std::uint16_t compression) {
    switch (compression) {
    case COMPRESSION_NONE:
        return 1;
    case COMPRESSION_PACKBITS:
        return 64;
    case COMPRESSION_LZW:
        return 4096;
    case COMPRESSION_DEFLATE:
    case COMPRESSION_ADOBE_DEFLATE:
        return 1032;
    default:
        return 0;
    }
}

/// The decoded bytes of a strip, of which the last of a plane may be short.
std::uint64_t strip_size(TIFF* tiff, std::uint32_t strip, std::uint32_t height) {
    const auto rows = std::min(height, field<std::uint32_t>(tiff, TIFFTAG_ROWSPERSTRIP, height));
    if (rows == 0) return 0;
    const std::uint32_t stripsOfPlane = (height - 1) / rows + 1;
    const std::uint32_t first = strip % stripsOfPlane * rows;
    return TIFFVStripSize64(tiff, std::min(rows, height - first));
}

} // namespace

std::optional<TiffPage> describe_page(TIFF* tiff, Bytes file) {
    const Tags tags(tiff);
    TiffPage page;
    PixelLayout& layout = page.info.layout;
    layout.width = field<std::uint32_t>(tiff, TIFFTAG_IMAGEWIDTH);
    layout.height = field<std::uint32_t>(tiff, TIFFTAG_IMAGELENGTH);
    if (!acceptable_size(layout.width, layout.height)) return std::nullopt;
    if (!TIFFIsCODECConfigured(tags.compression)) return std::nullopt;
    page.directory = TIFFCurrentDirectory(tiff);
    const auto model = plain_model(tiff, tags);
    const bool described =
        model ? describe_plain(tiff, tags, *model, page) : describe_rendered(tiff, page);
    if (!described) return std::nullopt;
    describe_metadata(tiff, file, page.info);
    return page;
}

void prepare_page(TIFF* tiff, const TiffPage& page) {
    if (page.decodeAsRGB) TIFFSetField(tiff, TIFFTAG_JPEGCOLORMODE, JPEGCOLORMODE_RGB);
}

bool has_all_data(TIFF* tiff, std::uint64_t fileSize) {
    const bool tiled = TIFFIsTiled(tiff) != 0;
    const auto height = field<std::uint32_t>(tiff, TIFFTAG_IMAGELENGTH);
    const std::uint64_t expansion =
        most_expansion(field<std::uint16_t>(tiff, TIFFTAG_COMPRESSION, COMPRESSION_NONE));
    const std::uint32_t count = tiled ? TIFFNumberOfTiles(tiff) : TIFFNumberOfStrips(tiff);
    if (count == 0) return false;
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::uint64_t offset = TIFFGetStrileOffset(tiff, i);
        const std::uint64_t size = TIFFGetStrileByteCount(tiff, i);
        if (size == 0 || offset > fileSize || size > fileSize - offset) return false;
        if (expansion == 0) continue;
        const std::uint64_t decoded = tiled ? TIFFTileSize64(tiff) : strip_size(tiff, i, height);
        if (decoded == 0 || decoded / expansion > size) return false;
    }
    return true;
}

} // namespace cocoa::codecs
