/// Opens data as an image and decodes all of its pages, at full size and reduced.

#include "cocoa/codecs/codec.h"
#include "cocoa/codecs/exif.h"
#include "cocoa/codecs/exif_fields.h"

#include <algorithm>
#include <cstdlib>

using namespace cocoa::codecs;

namespace {

/// Pages that take longer than a fuzzer has patience for are left out.
constexpr std::uint64_t mostBytes = 16 << 20;
constexpr std::size_t mostPages = 16;

void read_page(Reader& reader, std::size_t index, int reduction) {
    const PixelLayout layout = reader.reducedLayout(index, reduction);
    const auto rowBytes = static_cast<std::size_t>(layout.packedRowBytes());
    if (layout.packedRowBytes() * layout.height > mostBytes) return;
    std::vector<std::uint8_t> pixels(rowBytes * layout.height);
    reader.read(index, reduction, pixels.data(), rowBytes);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const Opened opened = open({bytes, size});
    if (!opened.reader) return 0;
    const std::size_t pages = std::min(opened.reader->pageCount(), mostPages);
    for (std::size_t index = 0; index < pages; ++index) {
        const PageInfo& page = opened.reader->page(index);
        if (page.layout.packedRowBytes() * page.layout.height > mostBytes) continue;
        const auto turned = exif_with_orientation(page.exif, 1);
        if (exif_summary(turned).orientation > 8) std::abort();
        for (const ExifField& field : exif_fields(page.exif))
            if (field.text.empty() == field.numbers.empty()) std::abort();
        read_page(*opened.reader, index, 1);
        read_page(*opened.reader, index, 8);
    }
    return 0;
}
