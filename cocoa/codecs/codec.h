#pragma once

/// The interface of the image formats: plain C++, one file a format, listed in `all_codecs()`.
///
/// Reading is in two steps: `open` looks at the header and gives nothing for data that is not of
/// the format, has been cut short or lies about its size, as far as that shows without decoding;
/// `Reader::read` decodes the pixels of one page.
///
/// Pixels are rows from the top of the image down, samples of a pixel side by side (R, G, B, A or
/// grey, A or C, M, Y, K), as many bits a sample as the file has. Samples of less than 8 bits are
/// packed with the first pixel in the high bits; 16-bit samples are in the machine's byte order;
/// palettes are expanded to 8-bit RGB or RGBA. CMYK is 0 for no ink.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace cocoa::codecs {

using Bytes = std::span<const std::uint8_t>;

enum class ColorModel : std::uint8_t { Gray, RGB, CMYK };
enum class Alpha : std::uint8_t { None, Straight, Premultiplied };

/// How samples lie in a row, and how many rows there are.
struct PixelLayout {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    ColorModel model = ColorModel::RGB;
    Alpha alpha = Alpha::None;
    std::uint8_t bitsPerSample = 8; ///< 1, 2, 4, 8 or 16

    int colorSamples() const {
        return model == ColorModel::Gray ? 1 : model == ColorModel::RGB ? 3 : 4;
    }
    int samplesPerPixel() const { return colorSamples() + (alpha == Alpha::None ? 0 : 1); }
    int bitsPerPixel() const { return samplesPerPixel() * bitsPerSample; }
    /// The bytes of a row without padding.
    std::uint64_t packedRowBytes() const {
        return (std::uint64_t{width} * static_cast<unsigned>(bitsPerPixel()) + 7) / 8;
    }
};

/// What a header says of one page.
struct PageInfo {
    PixelLayout layout;
    double dpiX = 0; ///< dots an inch; 0 when the file does not say
    double dpiY = 0;
    int orientation = 1; ///< EXIF's 1 to 8; rows are given as stored, not turned
    std::vector<std::uint8_t> iccProfile;
    std::vector<std::uint8_t> exif; ///< the TIFF-structured block, without the "Exif" marker
    double gamma = 0;               ///< that PNG's samples were made with; 0 when it does not say
};

/// How pages that are the frames of one moving picture follow one another.
struct Animation {
    std::vector<double> durations;   ///< of every page, in seconds
    std::optional<unsigned> repeats; ///< 0: for ever; nothing when the file does not say
};

/// Decodes pages of data that stays alive and unchanged as long as the reader does.
class Reader {
public:
    virtual ~Reader() = default;

    virtual std::size_t pageCount() const { return 1; }
    virtual const PageInfo& page(std::size_t index) const = 0;

    /// Null unless the pages are frames, which have all the same layout.
    virtual const Animation* animation() const { return nullptr; }

    /// The layout that `read` gives at a reduction of 1, 2, 4 or 8: sides divided and rounded up
    /// where the format can decode at that scale, the full size where it cannot.
    virtual PixelLayout reducedLayout(std::size_t index, int reduction) const {
        return page(index).layout;
    }

    /// Decodes a page into rows of `rowBytes` bytes. False when the data turns out broken; what was
    /// decoded until then is in the buffer and the rest of it is untouched.
    virtual bool read(std::size_t index, int reduction, std::uint8_t* pixels,
                      std::size_t rowBytes) = 0;
};

/// Bytes from `malloc`, so that they can be handed on without a copy.
struct Encoded {
    struct Free {
        void operator()(std::uint8_t* bytes) const { std::free(bytes); }
    };
    std::unique_ptr<std::uint8_t, Free> bytes;
    std::size_t size = 0;

    explicit operator bool() const { return bytes != nullptr; }
};

/// Rows that are made as they are needed.
class RowSource {
public:
    virtual ~RowSource() = default;
    /// Fills the packed bytes of a row. Rows are asked for in any order.
    virtual void make_row(std::uint32_t y, std::uint8_t* out) = 0;
};

struct Picture {
    PixelLayout layout;
    const std::uint8_t* pixels = nullptr;
    std::size_t rowBytes = 0;
    RowSource* rows = nullptr; ///< instead of pixels, for codecs that take them
    double dpiX = 0;           ///< 0: leave unset
    double dpiY = 0;
    Bytes iccProfile;
    Bytes exif;
    double gamma = 0; ///< 0: leave unset
};

/// TIFF's own compression numbers. JPEG holds 8-bit samples without alpha, CCITT 1-bit grey.
enum class TIFFCompression : std::uint16_t {
    None = 1,
    CCITTFax3 = 3,
    CCITTFax4 = 4,
    LZW = 5,
    JPEG = 7,
    PackBits = 32773,
};

struct EncodeOptions {
    float quality = 0.75F; ///< 0 to 1, for JPEG and for TIFF's JPEG compression
    bool progressive = false;
    bool interlaced = false;
    TIFFCompression compression = TIFFCompression::None;
    bool ditherTransparency = false; ///< GIF's part-transparent pixels: a mix of clear and opaque
    Bytes colorTable;                ///< red, green, blue: GIF's colours, chosen when empty
};

struct Codec {
    std::string_view name;           ///< "PNG"
    std::string_view typeIdentifier; ///< "public.png"
    std::string_view extensions;     ///< lower case, separated by blanks, the preferred one first
    bool takesRows;                  ///< pictures to encode may have `rows` instead of pixels
    bool (*sniff)(Bytes data);       ///< looks at the first bytes only
    std::unique_ptr<Reader> (*open)(Bytes data);
    /// Pages in, one file out; nothing when a page's layout cannot be written in this format or
    /// memory runs out. Formats of one page take exactly one.
    Encoded (*encode)(std::span<const Picture> pages, const EncodeOptions& options);
};

/// Writes grey of 1 to 16 bits, and grey with alpha, RGB and RGBA of 8 and 16; alpha straight.
extern const Codec png;
/// Writes 8-bit grey, RGB and CMYK without alpha.
extern const Codec jpeg;
/// Writes every layout; one image a page. Reads every directory of the main chain that holds an
/// image that can be decoded; 32-bit samples, integer and floating, become 16-bit ones.
extern const Codec tiff;

/// Writes 8-bit grey and RGB, with straight alpha or none: exactly where the colours fit into one
/// table of 256. Reads the frames as they show, laid over those before them.
extern const Codec gif;
/// Writes 8-bit grey and RGB without alpha. Reads alpha where a header has a mask for it, and every
/// depth as 8-bit RGB.
extern const Codec bmp;

/// Every format that is decoded, in the order in which data is tried.
std::span<const Codec* const> all_codecs();

/// The codec whose signature the data bears and that can open it, with the reader; null otherwise.
struct Opened {
    const Codec* codec = nullptr;
    std::unique_ptr<Reader> reader;
};
Opened open(Bytes data);

/// The most pixels that a page may have; larger ones are refused before memory is taken.
inline constexpr std::uint64_t maximumPixels = std::uint64_t{1} << 30;

} // namespace cocoa::codecs
