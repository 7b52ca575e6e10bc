#include "bench/zimg_scaler.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <zimg.h>

namespace bench {
namespace {

constexpr std::size_t alignment = 64;

void check(bool good) {
    if (good) return;
    char message[256];
    zimg_get_last_error(message, sizeof message);
    std::fprintf(stderr, "zimg: %s\n", message);
    std::abort();
}

std::uint8_t* allocate(std::size_t size) {
    const std::size_t whole = (size + alignment - 1) / alignment * alignment;
    auto* memory = static_cast<std::uint8_t*>(std::aligned_alloc(alignment, whole));
    if (!memory) std::abort();
    std::memset(memory, 128, whole);
    return memory;
}

zimg_image_format formatOf(Size size, Channels channels) {
    zimg_image_format format;
    zimg_image_format_default(&format, ZIMG_API_VERSION);
    format.width = static_cast<unsigned>(size.width);
    format.height = static_cast<unsigned>(size.height);
    format.pixel_type = ZIMG_PIXEL_BYTE;
    format.color_family = ZIMG_COLOR_RGB;
    format.matrix_coefficients = ZIMG_MATRIX_RGB;
    format.pixel_range = ZIMG_RANGE_FULL;
    if (channels == Channels::ColorsAndAlpha) format.alpha = ZIMG_ALPHA_PREMULTIPLIED;
    return format;
}

#if defined(__x86_64__)
#define FOR_EVERY_PROCESSOR __attribute__((target_clones("avx2", "default")))
#else
#define FOR_EVERY_PROCESSOR
#endif

FOR_EVERY_PROCESSOR void splitColors(const std::uint8_t* pixels, std::uint8_t* const* planes,
                                     unsigned count) {
    std::uint8_t* __restrict red = planes[0];
    std::uint8_t* __restrict green = planes[1];
    std::uint8_t* __restrict blue = planes[2];
    for (unsigned x = 0; x < count; ++x) {
        red[x] = pixels[4 * x];
        green[x] = pixels[4 * x + 1];
        blue[x] = pixels[4 * x + 2];
    }
}

FOR_EVERY_PROCESSOR void splitAll(const std::uint8_t* pixels, std::uint8_t* const* planes,
                                  unsigned count) {
    std::uint8_t* __restrict red = planes[0];
    std::uint8_t* __restrict green = planes[1];
    std::uint8_t* __restrict blue = planes[2];
    std::uint8_t* __restrict alpha = planes[3];
    for (unsigned x = 0; x < count; ++x) {
        red[x] = pixels[4 * x];
        green[x] = pixels[4 * x + 1];
        blue[x] = pixels[4 * x + 2];
        alpha[x] = pixels[4 * x + 3];
    }
}

FOR_EVERY_PROCESSOR void mergeColors(const std::uint8_t* const* planes,
                                     std::uint8_t* __restrict pixels, unsigned count) {
    for (unsigned x = 0; x < count; ++x) {
        pixels[4 * x] = planes[0][x];
        pixels[4 * x + 1] = planes[1][x];
        pixels[4 * x + 2] = planes[2][x];
        pixels[4 * x + 3] = 255;
    }
}

FOR_EVERY_PROCESSOR void mergeAll(const std::uint8_t* const* planes,
                                  std::uint8_t* __restrict pixels, unsigned count) {
    for (unsigned x = 0; x < count; ++x) {
        pixels[4 * x] = planes[0][x];
        pixels[4 * x + 1] = planes[1][x];
        pixels[4 * x + 2] = planes[2][x];
        pixels[4 * x + 3] = planes[3][x];
    }
}

} // namespace

struct ZimgScaler::Graph {
    zimg_filter_graph* filter = nullptr;
    ~Graph() { zimg_filter_graph_free(filter); }
};

void ZimgScaler::Free::operator()(void* memory) const { std::free(memory); }

ZimgScaler::Planes::Planes(int width, std::size_t rows, unsigned mask, int count)
    : rowBytes((static_cast<std::size_t>(width) + alignment - 1) / alignment * alignment)
    , rows(rows)
    , mask(mask) {
    memory.reset(allocate(rowBytes * rows * static_cast<unsigned>(count)));
}

ZimgScaler::ZimgScaler(Size from, Size to, Channels channels)
    : fromSize_(from)
    , toSize_(to)
    , planeCount_(channels == Channels::Colors ? 3 : 4)
    , graph_(std::make_unique<Graph>()) {
    const zimg_image_format fromFormat = formatOf(from, channels);
    const zimg_image_format toFormat = formatOf(to, channels);
    zimg_graph_builder_params parameters;
    zimg_graph_builder_params_default(&parameters, ZIMG_API_VERSION);
    parameters.resample_filter = ZIMG_RESIZE_LANCZOS;
    parameters.filter_param_a = 3;
    parameters.cpu_type = ZIMG_CPU_AUTO_64B;
    graph_->filter = zimg_filter_graph_build(&fromFormat, &toFormat, &parameters);
    check(graph_->filter);

    std::size_t scratchSize = 0;
    check(!zimg_filter_graph_get_tmp_size(graph_->filter, &scratchSize));
    scratch_.reset(allocate(scratchSize));
    const auto rowsOf = [this](unsigned inWork, Size size) {
        const unsigned mask = zimg_select_buffer_mask(inWork);
        const auto rows = static_cast<std::size_t>(
            mask == ZIMG_BUFFER_MAX ? static_cast<unsigned>(size.height) : mask + 1);
        return std::make_unique<Planes>(size.width, rows, mask, planeCount_);
    };
    unsigned inWork = 0;
    check(!zimg_filter_graph_get_input_buffering(graph_->filter, &inWork));
    fromRows_ = rowsOf(inWork, from);
    check(!zimg_filter_graph_get_output_buffering(graph_->filter, &inWork));
    toRows_ = rowsOf(inWork, to);
    fromPlanes_ = std::make_unique<Planes>(from.width, from.height, ZIMG_BUFFER_MAX, planeCount_);
    toPlanes_ = std::make_unique<Planes>(to.width, to.height, ZIMG_BUFFER_MAX, planeCount_);
}

ZimgScaler::~ZimgScaler() = default;

int ZimgScaler::split(void* self, unsigned y, unsigned left, unsigned right) {
    const auto& scaler = *static_cast<ZimgScaler*>(self);
    std::uint8_t* planes[4];
    for (int plane = 0; plane < scaler.planeCount_; ++plane)
        planes[plane] = scaler.fromRows_->row(plane, y) + left;
    const auto width = static_cast<unsigned>(scaler.fromSize_.width);
    const std::uint8_t* pixels = scaler.from_ + (std::size_t{y} * width + left) * 4;
    (scaler.planeCount_ == 4 ? splitAll : splitColors)(pixels, planes, right - left);
    return 0;
}

int ZimgScaler::merge(void* self, unsigned y, unsigned left, unsigned right) {
    const auto& scaler = *static_cast<ZimgScaler*>(self);
    const std::uint8_t* planes[4];
    for (int plane = 0; plane < scaler.planeCount_; ++plane)
        planes[plane] = scaler.toRows_->row(plane, y) + left;
    const auto width = static_cast<unsigned>(scaler.toSize_.width);
    std::uint8_t* pixels = scaler.to_ + (std::size_t{y} * width + left) * 4;
    (scaler.planeCount_ == 4 ? mergeAll : mergeColors)(planes, pixels, right - left);
    return 0;
}

void ZimgScaler::run(const Planes& from, const Planes& to, bool isPacked) {
    zimg_image_buffer_const source = {ZIMG_API_VERSION, {}};
    zimg_image_buffer target = {ZIMG_API_VERSION, {}};
    for (int plane = 0; plane < planeCount_; ++plane) {
        source.plane[plane] = {from.row(plane, 0), static_cast<std::ptrdiff_t>(from.rowBytes),
                               from.mask};
        target.plane[plane] = {to.row(plane, 0), static_cast<std::ptrdiff_t>(to.rowBytes), to.mask};
    }
    check(!zimg_filter_graph_process(graph_->filter, &source, &target, scratch_.get(),
                                     isPacked ? split : nullptr, this, isPacked ? merge : nullptr,
                                     this));
}

void ZimgScaler::scale(const std::uint8_t* from, std::uint8_t* to) {
    from_ = from;
    to_ = to;
    run(*fromRows_, *toRows_, true);
}

void ZimgScaler::scalePlanes() { run(*fromPlanes_, *toPlanes_, false); }

} // namespace bench
