#include "cocoa/codecs/formats.h"
#include "cocoa/codecs/tiff_pages.h"

#include <algorithm>
#include <cstring>

namespace cocoa::codecs {

namespace {

/// Memory for a row or a tile; null instead of an exception when there is none.
using Buffer = std::unique_ptr<std::uint8_t, Encoded::Free>;

Buffer make_buffer(std::uint64_t size) {
    if (size == 0 || size > PTRDIFF_MAX) return nullptr;
    return Buffer(static_cast<std::uint8_t*>(std::malloc(static_cast<std::size_t>(size))));
}

/// Decodes the current directory into the caller's rows.
class PageDecoder {
public:
    PageDecoder(TIFF* tiff, const TiffPage& page, std::uint8_t* pixels, std::size_t rowBytes)
        : tiff_(tiff)
        , page_(page)
        , layout_(page.info.layout)
        , pixels_(pixels)
        , rowBytes_(rowBytes) {}

    bool decode() {
        switch (page_.route) {
        case TiffPage::Route::Rendered:
            return render();
        case TiffPage::Route::Tiles:
            return read_tiles();
        case TiffPage::Route::Strips:
            return page_.sameSamples ? read_rows_in_place() : read_rows();
        }
        return false;
    }

private:
    std::uint8_t* row(std::uint32_t y) const { return pixels_ + y * rowBytes_; }

    LayoutRow layout_row(std::uint32_t x, std::uint32_t y) const {
        return {row(y), x, layout_.samplesPerPixel(), layout_.colorSamples(),
                layout_.bitsPerSample};
    }

    /// The bytes of `width` pixels of one row of one plane of the file.
    std::uint64_t file_row_bytes(std::uint32_t width) const {
        const int samples = page_.separatePlanes ? 1 : page_.fileSamples;
        return (std::uint64_t{width} * static_cast<unsigned>(samples) * page_.conversion.fileBits +
                7) /
               8;
    }

    bool read_rows_in_place() {
        const std::uint64_t size = layout_.packedRowBytes();
        if (TIFFScanlineSize64(tiff_) != size) return false;
        const bool inverted = page_.conversion.kind == SampleConversion::Kind::Invert;
        for (std::uint32_t y = 0; y < layout_.height; ++y) {
            std::uint8_t* target = row(y);
            if (TIFFReadScanline(tiff_, target, y, 0) < 0) return false;
            for (std::uint64_t i = 0; inverted && i < size; ++i) {
                target[i] = static_cast<std::uint8_t>(~target[i]);
            }
        }
        return true;
    }

    bool read_rows() {
        const std::uint64_t size = TIFFScanlineSize64(tiff_);
        const Buffer buffer = make_buffer(size);
        if (!buffer || size < file_row_bytes(layout_.width)) return false;
        for (int plane = 0; plane < planes(); ++plane) {
            for (std::uint32_t y = 0; y < layout_.height; ++y) {
                const auto filePlane = static_cast<std::uint16_t>(file_plane(plane));
                if (TIFFReadScanline(tiff_, buffer.get(), y, filePlane) < 0) return false;
                place(buffer.get(), layout_.width, plane, 0, y);
            }
        }
        return true;
    }

    bool read_tiles() {
        std::uint32_t tileWidth = 0;
        std::uint32_t tileHeight = 0;
        TIFFGetField(tiff_, TIFFTAG_TILEWIDTH, &tileWidth);
        TIFFGetField(tiff_, TIFFTAG_TILELENGTH, &tileHeight);
        if (tileWidth == 0 || tileHeight == 0) return false;
        // A tile may be larger than the image, but there is no reason for it to be much larger.
        constexpr std::uint64_t spareSize = 64 << 20;
        const std::uint64_t size = TIFFTileSize64(tiff_);
        const std::uint64_t tileRowBytes = file_row_bytes(tileWidth);
        if (size > spareSize + file_row_bytes(layout_.width) * layout_.height ||
            size / tileHeight < tileRowBytes) {
            return false;
        }
        const Buffer buffer = make_buffer(size);
        if (!buffer) return false;
        for (int plane = 0; plane < planes(); ++plane) {
            for (std::uint64_t y = 0; y < layout_.height; y += tileHeight) {
                for (std::uint64_t x = 0; x < layout_.width; x += tileWidth) {
                    const auto left = static_cast<std::uint32_t>(x);
                    const auto top = static_cast<std::uint32_t>(y);
                    const std::uint32_t tile = TIFFComputeTile(
                        tiff_, left, top, 0, static_cast<std::uint16_t>(file_plane(plane)));
                    if (TIFFReadEncodedTile(tiff_, tile, buffer.get(),
                                            static_cast<tmsize_t>(size)) < 0) {
                        return false;
                    }
                    const std::uint32_t width = std::min(tileWidth, layout_.width - left);
                    const std::uint32_t height = std::min(tileHeight, layout_.height - top);
                    for (std::uint32_t i = 0; i < height; ++i) {
                        place(buffer.get() + i * tileRowBytes, width, plane, left, top + i);
                    }
                }
            }
        }
        return true;
    }

    /// How often the file is gone through: once for each plane that the layout has a use for.
    int planes() const { return page_.separatePlanes ? page_.layout_samples() : 1; }
    int file_plane(int plane) const {
        return page_.separatePlanes ? page_.fileSampleOf[static_cast<std::size_t>(plane)] : 0;
    }

    void place(const std::uint8_t* bytes, std::uint32_t width, int plane, std::uint32_t x,
               std::uint32_t y) const {
        if (page_.separatePlanes) {
            place_sample(page_.conversion, {bytes, width, 1}, 0, layout_row(x, y), plane);
            return;
        }
        const std::uint64_t bits = static_cast<unsigned>(layout_.bitsPerPixel());
        if (page_.sameSamples && page_.conversion.kind == SampleConversion::Kind::Copy &&
            x * bits % 8 == 0) {
            std::memcpy(row(y) + x * bits / 8, bytes, (width * bits + 7) / 8);
            return;
        }
        for (int sample = 0; sample < page_.layout_samples(); ++sample) {
            place_sample(page_.conversion, {bytes, width, page_.fileSamples},
                         page_.fileSampleOf[static_cast<std::size_t>(sample)], layout_row(x, y),
                         sample);
        }
    }

    struct Rendering {
        TIFFRGBAImage image{};
        bool begun = false;
        ~Rendering() {
            if (begun) TIFFRGBAImageEnd(&image);
        }
    };

    bool render() {
        Rendering rendering;
        std::array<char, 1024> reason;
        constexpr int stopOnError = 1;
        rendering.begun =
            TIFFRGBAImageBegin(&rendering.image, tiff_, stopOnError, reason.data()) != 0;
        if (!rendering.begun) return false;
        // Rows are given as stored; turning them is for the caller.
        rendering.image.orientation = rendering.image.req_orientation = ORIENTATION_TOPLEFT;

        const std::uint32_t band = band_height();
        const std::uint64_t pixelsOfBand = std::uint64_t{layout_.width} * band;
        const Buffer buffer = make_buffer(pixelsOfBand * sizeof(std::uint32_t));
        if (!buffer) return false;
        auto* raster = reinterpret_cast<std::uint32_t*>(buffer.get());
        for (std::uint64_t top = 0; top < layout_.height; top += band) {
            const auto first = static_cast<std::uint32_t>(top);
            const std::uint32_t rows = std::min(band, layout_.height - first);
            rendering.image.row_offset = static_cast<int>(first);
            if (!TIFFRGBAImageGet(&rendering.image, raster, layout_.width, rows)) return false;
            for (std::uint32_t i = 0; i < rows; ++i) {
                unpack(raster + std::uint64_t{i} * layout_.width, row(first + i));
            }
        }
        return true;
    }

    /// Rows that libtiff decodes together anyway.
    std::uint32_t band_height() const {
        std::uint32_t rows = 0;
        const bool known = TIFFIsTiled(tiff_)
                               ? TIFFGetField(tiff_, TIFFTAG_TILELENGTH, &rows) != 0
                               : TIFFGetFieldDefaulted(tiff_, TIFFTAG_ROWSPERSTRIP, &rows) != 0;
        return known && rows > 0 ? std::min(rows, layout_.height) : layout_.height;
    }

    void unpack(const std::uint32_t* raster, std::uint8_t* target) const {
        for (std::uint32_t x = 0; x < layout_.width; ++x) {
            const std::uint32_t pixel = raster[x];
            *target++ = static_cast<std::uint8_t>(TIFFGetR(pixel));
            *target++ = static_cast<std::uint8_t>(TIFFGetG(pixel));
            *target++ = static_cast<std::uint8_t>(TIFFGetB(pixel));
            if (layout_.alpha != Alpha::None) {
                *target++ = static_cast<std::uint8_t>(TIFFGetA(pixel));
            }
        }
    }

    TIFF* tiff_;
    const TiffPage& page_;
    const PixelLayout& layout_;
    std::uint8_t* pixels_;
    std::size_t rowBytes_;
};

class TiffReader : public Reader {
public:
    static std::unique_ptr<Reader> open(Bytes data) {
        std::unique_ptr<TiffReader> reader(new TiffReader(data));
        if (!reader->find_pages()) return nullptr;
        return reader;
    }

    std::size_t pageCount() const override { return pages_.size(); }
    const PageInfo& page(std::size_t index) const override { return pages_[index].info; }

    bool read(std::size_t index, int, std::uint8_t* pixels, std::size_t rowBytes) override {
        if (index >= pages_.size() || !pixels) return false;
        const TiffPage& page = pages_[index];
        if (rowBytes < page.info.layout.packedRowBytes()) return false;
        // Set anew even if current, so that a codec that stopped on an error starts afresh.
        if (!TIFFSetDirectory(tiff_.get(), page.directory)) return false;
        input_.complained = false;
        prepare_page(tiff_.get(), page);
        return PageDecoder(tiff_.get(), page, pixels, rowBytes).decode() && !input_.complained;
    }

private:
    explicit TiffReader(Bytes data)
        : input_(data)
        , tiff_(open_tiff_input(input_)) {}

    /// Directories that are no image that is understood are passed over; one that is broken or
    /// points outside the file makes the file broken.
    bool find_pages() {
        if (!tiff_) return false;
        constexpr std::size_t mostPages = 65535;
        for (;;) {
            if (auto page = describe_page(tiff_.get(), input_.data)) {
                if (!has_all_data(tiff_.get(), input_.data.size())) return false;
                pages_.push_back(std::move(*page));
            }
            if (TIFFLastDirectory(tiff_.get())) return !pages_.empty() && has_whole_directory();
            if (pages_.size() == mostPages || !TIFFReadDirectory(tiff_.get())) return false;
        }
    }

    /// Whether the link behind the current directory is there, which libtiff does not insist on.
    bool has_whole_directory() {
        const bool big = TIFFIsBigTIFF(tiff_.get()) != 0;
        const std::uint64_t countSize = big ? 8 : 2;
        const std::uint64_t entrySize = big ? 20 : 12;
        const std::uint64_t linkSize = big ? 8 : 4;
        const std::uint64_t start = TIFFCurrentDirOffset(tiff_.get());
        const std::uint64_t size = input_.data.size();
        if (start > size || countSize > size - start) return false;
        std::uint64_t count = 0;
        for (std::uint64_t i = 0; i < countSize; ++i) {
            const std::uint64_t at = TIFFIsBigEndian(tiff_.get()) ? i : countSize - 1 - i;
            count = count << 8 | input_.data[static_cast<std::size_t>(start + at)];
        }
        const std::uint64_t room = size - start - countSize;
        return linkSize <= room && count <= (room - linkSize) / entrySize;
    }

    TiffInput input_;
    TiffHandle tiff_; // closed before its input goes
    std::vector<TiffPage> pages_;
};

} // namespace

bool sniff_tiff(Bytes data) {
    if (data.size() < 8 || data[0] != data[1] || (data[0] != 'I' && data[0] != 'M')) return false;
    const int version = data[0] == 'I' ? data[2] | data[3] << 8 : data[2] << 8 | data[3];
    return version == TIFF_VERSION_CLASSIC || version == TIFF_VERSION_BIG;
}

std::unique_ptr<Reader> open_tiff(Bytes data) {
    return sniff_tiff(data) ? TiffReader::open(data) : nullptr;
}

} // namespace cocoa::codecs
