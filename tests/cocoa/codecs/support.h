#pragma once

/// What the codec tests share: byte strings, decoding, temporary files and other programs.

#include "cocoa/codecs/codec.h"
#include "support/temporary_folder.h"

#include <initializer_list>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace cocoa::codecs {

/// For test failures.
inline bool operator==(const PixelLayout& a, const PixelLayout& b) {
    return a.width == b.width && a.height == b.height && a.model == b.model && a.alpha == b.alpha &&
           a.bitsPerSample == b.bitsPerSample;
}
void PrintTo(const PixelLayout& layout, std::ostream* stream);

} // namespace cocoa::codecs

namespace codecs_test {

using namespace cocoa::codecs;
using ByteVector = std::vector<std::uint8_t>;

enum class ByteOrder { Little, Big };

void append(ByteVector& target, const ByteVector& source);
void append_16(ByteVector& target, ByteOrder order, std::uint16_t value);
void append_32(ByteVector& target, ByteOrder order, std::uint32_t value);
ByteVector bytes_of(std::string_view text);
/// 16-bit samples in the machine's order.
ByteVector words(std::initializer_list<std::uint16_t> samples);

/// The smallest EXIF block that states an orientation, which is its byte 19.
ByteVector exif_block(std::uint8_t orientation);

/// Bytes that look random and are the same on every run.
ByteVector noise(std::size_t count, unsigned seed);
/// A smooth, asymmetric gradient, as lossy codecs like it.
ByteVector gradient(std::uint32_t width, std::uint32_t height, int samples);

inline Bytes view(const Encoded& encoded) { return {encoded.bytes.get(), encoded.size}; }
ByteVector copy(const Encoded& encoded);

/// The pixels of a page as packed rows, unused bits at their ends cleared; nothing when it does not
/// open or decode. Fails the test when decoding writes outside a row.
std::optional<ByteVector> decode(Bytes data, std::size_t page = 0, int reduction = 1);
/// What the header says; nothing when it does not open.
std::optional<PageInfo> header(Bytes data, std::size_t page = 0);

/// A picture over `pixels`, its rows packed.
Picture picture(const PixelLayout& layout, const ByteVector& pixels);
/// As `picture`, but with the rows padded out; `storage` keeps them.
Picture padded_picture(const PixelLayout& layout, const ByteVector& pixels, ByteVector& storage);
Encoded encode(const Codec& codec, const Picture& page, const EncodeOptions& options = {});

class TemporaryFolder : public ::TemporaryFolder {
public:
    std::string write(std::string_view name, Bytes data) const;
    ByteVector read(std::string_view name) const;
};

struct CommandResult {
    int status = -1;
    std::string output; ///< standard output and error
};
CommandResult run(const std::string& command);

} // namespace codecs_test
