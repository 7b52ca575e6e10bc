#include "cocoa/codecs/tiff_memory.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <limits>
#include <string_view>

namespace cocoa::codecs {

namespace {

struct FreeOptions {
    void operator()(TIFFOpenOptions* options) const { TIFFOpenOptionsFree(options); }
};

int note_error(TIFF*, void* user, const char*, const char*, va_list) {
    if (user) static_cast<TiffInput*>(user)->complained = true;
    return 1; // handled: nothing goes to standard error
}

/// The codecs warn where they fill up broken data; other warnings are of tags.
int note_warning(TIFF*, void* user, const char* module, const char*, va_list) {
    using namespace std::string_view_literals;
    if (user && module && module == "JPEGLib"sv) static_cast<TiffInput*>(user)->complained = true;
    return 1;
}

std::uint64_t sought(std::uint64_t position, std::uint64_t size, toff_t offset, int whence) {
    switch (whence) {
    case SEEK_CUR:
        return position + offset;
    case SEEK_END:
        return size + offset;
    default:
        return offset;
    }
}

TiffInput& input_of(thandle_t handle) { return *static_cast<TiffInput*>(handle); }
TiffOutput& output_of(thandle_t handle) { return *static_cast<TiffOutput*>(handle); }

tmsize_t read_input(thandle_t handle, void* destination, tmsize_t count) {
    TiffInput& input = input_of(handle);
    if (count <= 0 || input.position >= input.data.size()) return 0;
    const std::size_t available = input.data.size() - static_cast<std::size_t>(input.position);
    const std::size_t copied = std::min(available, static_cast<std::size_t>(count));
    std::memcpy(destination, input.data.data() + input.position, copied);
    input.position += copied;
    return static_cast<tmsize_t>(copied);
}

toff_t seek_input(thandle_t handle, toff_t offset, int whence) {
    TiffInput& input = input_of(handle);
    return input.position = sought(input.position, input.data.size(), offset, whence);
}

toff_t input_size(thandle_t handle) { return input_of(handle).data.size(); }

/// libtiff reads mapped data in place and never writes to it.
int map_input(thandle_t handle, void** base, toff_t* size) {
    const Bytes data = input_of(handle).data;
    *base = const_cast<std::uint8_t*>(data.data());
    *size = data.size();
    return 1;
}

tmsize_t refuse(thandle_t, void*, tmsize_t) { return 0; }
int close_nothing(thandle_t) { return 0; }
void unmap_nothing(thandle_t, void*, toff_t) {}
int map_nothing(thandle_t, void**, toff_t*) { return 0; }

tmsize_t read_output(thandle_t handle, void* destination, tmsize_t count) {
    TiffOutput& output = output_of(handle);
    if (count <= 0 || output.position >= output.bytes.size()) return 0;
    const std::size_t available = output.bytes.size() - static_cast<std::size_t>(output.position);
    const std::size_t copied = std::min(available, static_cast<std::size_t>(count));
    std::memcpy(destination, output.bytes.data() + output.position, copied);
    output.position += copied;
    return static_cast<tmsize_t>(copied);
}

tmsize_t write_output(thandle_t handle, void* source, tmsize_t count) {
    TiffOutput& output = output_of(handle);
    if (count < 0 || output.position > std::numeric_limits<std::size_t>::max()) return 0;
    if (!output.bytes.write_at(static_cast<std::size_t>(output.position), source,
                               static_cast<std::size_t>(count))) {
        return 0;
    }
    output.position += static_cast<std::uint64_t>(count);
    return count;
}

toff_t seek_output(thandle_t handle, toff_t offset, int whence) {
    TiffOutput& output = output_of(handle);
    return output.position = sought(output.position, output.bytes.size(), offset, whence);
}

toff_t output_size(thandle_t handle) { return output_of(handle).bytes.size(); }

} // namespace

TiffHandle open_tiff_input(TiffInput& input) {
    const std::unique_ptr<TIFFOpenOptions, FreeOptions> options(TIFFOpenOptionsAlloc());
    if (!options) return nullptr;
    TIFFOpenOptionsSetErrorHandlerExtR(options.get(), note_error, &input);
    TIFFOpenOptionsSetWarningHandlerExtR(options.get(), note_warning, &input);
    // libtiff's tables are in proportion to the data, its row buffers to a page's side.
    constexpr std::uint64_t baseAllowance = 256 << 20;
    const std::uint64_t allowance = std::min<std::uint64_t>(
        baseAllowance + std::uint64_t{input.data.size()} * 8, std::numeric_limits<tmsize_t>::max());
    TIFFOpenOptionsSetMaxSingleMemAlloc(options.get(), static_cast<tmsize_t>(allowance));
    return TiffHandle(TIFFClientOpenExt("", "r", &input, read_input, refuse, seek_input,
                                        close_nothing, input_size, map_input, unmap_nothing,
                                        options.get()));
}

TiffHandle open_tiff_output(TiffOutput& output) {
    const std::unique_ptr<TIFFOpenOptions, FreeOptions> options(TIFFOpenOptionsAlloc());
    if (!options) return nullptr;
    TIFFOpenOptionsSetErrorHandlerExtR(options.get(), note_error, nullptr);
    TIFFOpenOptionsSetWarningHandlerExtR(options.get(), note_warning, nullptr);
    return TiffHandle(TIFFClientOpenExt("", "w", &output, read_output, write_output, seek_output,
                                        close_nothing, output_size, map_nothing, unmap_nothing,
                                        options.get()));
}

} // namespace cocoa::codecs
