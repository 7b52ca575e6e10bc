#include "cocoa/codecs/gif_blocks.h"
#include "cocoa/codecs/formats.h"

#include <algorithm>

namespace cocoa::codecs {

namespace {

/// Goes through the data; once something is missing, everything further is.
class Walk {
public:
    explicit Walk(Bytes data)
        : data_(data) {}

    bool whole() const { return !broken_; }

    Bytes take(std::size_t count) {
        if (broken_ || count > data_.size() - at_) {
            broken_ = true;
            return {};
        }
        at_ += count;
        return data_.subspan(at_ - count, count);
    }
    unsigned byte() {
        const Bytes taken = take(1);
        return taken.empty() ? 0 : taken[0];
    }
    unsigned word() {
        const Bytes taken = take(2);
        return taken.empty() ? 0 : static_cast<unsigned>(taken[0] | taken[1] << 8);
    }

    /// A chain of blocks up to the empty one; `content` counts their bytes without the lengths.
    Bytes blocks(std::uint64_t& content) {
        const std::size_t start = at_;
        content = 0;
        while (const unsigned size = byte()) {
            take(size);
            content += size;
        }
        return broken_ ? Bytes{} : data_.subspan(start, at_ - start);
    }

private:
    Bytes data_;
    std::size_t at_ = 0;
    bool broken_ = false;
};

enum Introducer : std::uint8_t { ExtensionBlock = 0x21, ImageBlock = 0x2C, Trailer = 0x3B };
enum Extension : std::uint8_t { GraphicControl = 0xF9, Application = 0xFF };

constexpr unsigned hasTable = 0x80;
std::size_t table_size(unsigned flags) { return std::size_t{3} << ((flags & 7) + 1); }

class Survey {
public:
    explicit Survey(Bytes data)
        : walk_(data) {}

    std::optional<GifFile> run() {
        constexpr std::size_t signature = 6;
        walk_.take(signature);
        file_.width = walk_.word();
        file_.height = walk_.word();
        const unsigned flags = walk_.byte();
        walk_.take(2); // the background, which nobody paints, and the shape of pixels
        if (flags & hasTable) commonTable_ = walk_.take(table_size(flags));
        while (walk_.whole()) {
            switch (walk_.byte()) {
            case ExtensionBlock:
                read_extension();
                break;
            case ImageBlock:
                if (!read_frame()) return std::nullopt;
                break;
            case Trailer:
                return finished();
            default:
                return std::nullopt;
            }
        }
        return std::nullopt;
    }

private:
    std::optional<GifFile> finished() {
        if (!walk_.whole() || file_.frames.empty()) return std::nullopt;
        if (file_.width == 0 || file_.height == 0) {
            file_.width = file_.frames.front().width;
            file_.height = file_.frames.front().height;
        }
        return std::move(file_);
    }

    void read_extension() {
        const unsigned kind = walk_.byte();
        std::uint64_t content = 0;
        const Bytes blocks = walk_.blocks(content);
        if (kind == GraphicControl) read_control(blocks);
        if (kind == Application) read_application(blocks);
    }

    /// Tells how the next frame is shown.
    void read_control(Bytes blocks) {
        constexpr std::size_t size = 4;
        if (blocks.size() <= size || blocks[0] != size) return;
        const unsigned flags = blocks[1];
        const unsigned disposal = flags >> 2 & 7;
        next_.disposal = disposal == 2   ? GifDisposal::Clear
                         : disposal == 3 ? GifDisposal::Restore
                                         : GifDisposal::Keep;
        next_.duration = (blocks[2] | blocks[3] << 8) / 100.0;
        next_.transparentIndex = flags & 1 ? blocks[4] : -1;
    }

    /// How often the frames are shown is told by an extension of a browser of old.
    void read_application(Bytes blocks) {
        using namespace std::string_view_literals;
        constexpr std::size_t nameSize = 11;
        if (blocks.size() < nameSize + 5 || blocks[0] != nameSize) return;
        const std::string_view name(reinterpret_cast<const char*>(&blocks[1]), nameSize);
        if (name != "NETSCAPE2.0"sv && name != "ANIMEXTS1.0"sv) return;
        const Bytes loop = blocks.subspan(nameSize + 1);
        if (loop[0] == 3 && loop[1] == 1) {
            file_.repeats = static_cast<unsigned>(loop[2] | loop[3] << 8);
        }
    }

    bool read_frame() {
        GifFrame frame = next_;
        next_ = {};
        frame.left = walk_.word();
        frame.top = walk_.word();
        frame.width = walk_.word();
        frame.height = walk_.word();
        const unsigned flags = walk_.byte();
        constexpr unsigned interlaced = 0x40;
        frame.interlaced = (flags & interlaced) != 0;
        frame.colorTable = flags & hasTable ? walk_.take(table_size(flags)) : commonTable_;
        frame.codeBits = static_cast<int>(walk_.byte());
        frame.blocks = walk_.blocks(frame.codeBytes);
        if (!walk_.whole() || frame.colorTable.empty()) return false;
        if (frame.codeBits < 1 || frame.codeBits > 8) return false;
        // A code has three bits at least and stands for 4096 pixels at most.
        constexpr std::uint64_t mostPixelsPerByte = 4096 * 8 / 3;
        if (frame.pixels() == 0 || frame.pixels() / mostPixelsPerByte > frame.codeBytes) {
            return false;
        }
        constexpr std::size_t mostFrames = 65535;
        file_.frames.push_back(frame);
        return file_.frames.size() <= mostFrames;
    }

    Walk walk_;
    GifFile file_;
    Bytes commonTable_;
    GifFrame next_;
};

} // namespace

bool sniff_gif(Bytes data) {
    using namespace std::string_view_literals;
    if (data.size() < 6) return false;
    const std::string_view signature(reinterpret_cast<const char*>(data.data()), 6);
    return signature == "GIF87a"sv || signature == "GIF89a"sv;
}

std::vector<std::uint32_t> gif_row_order(std::uint32_t height, bool interlaced) {
    struct Pass {
        std::uint32_t first;
        std::uint32_t step;
    };
    static constexpr std::array<Pass, 4> passes{{{0, 8}, {4, 8}, {2, 4}, {1, 2}}};
    static constexpr std::array<Pass, 1> plainPass{{{0, 1}}};
    std::vector<std::uint32_t> rows;
    rows.reserve(height);
    for (const Pass& pass :
         interlaced ? std::span<const Pass>(passes) : std::span<const Pass>(plainPass)) {
        for (std::uint32_t row = pass.first; row < height; row += pass.step)
            rows.push_back(row);
    }
    return rows;
}

std::optional<GifFile> survey_gif(Bytes data) {
    return sniff_gif(data) ? Survey(data).run() : std::nullopt;
}

} // namespace cocoa::codecs
