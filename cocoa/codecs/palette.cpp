#include "cocoa/codecs/palette.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace cocoa::codecs {

namespace {

using Vector = std::array<float, 3>;

/// Pixels of nearly the same colour.
struct Bin {
    Vector color{}; ///< their mean
    float weight = 0;
};

/// The picture's pixels by the five high bits of their channels.
std::vector<Bin> bins_of(const Picture& picture) {
    struct Sum {
        std::uint32_t count = 0;
        std::array<std::uint32_t, 3> channels{};
    };
    constexpr std::size_t binCount = std::size_t{1} << 15;
    std::vector<Sum> sums(binCount);

    const PixelLayout& layout = picture.layout;
    constexpr std::uint64_t enough = 1 << 20;
    const std::uint64_t pixels = std::uint64_t{layout.width} * layout.height;
    // Steps that share no factor with most widths reach every column.
    const std::uint64_t step = pixels / enough + 1;
    for (std::uint64_t at = 0; at < pixels; at += step) {
        ColorCursor pixel(picture, static_cast<std::uint32_t>(at / layout.width));
        pixel.at += at % layout.width * pixel.step;
        if (pixel.opacity() < 128) continue;
        const RGBColor color = pixel.color();
        Sum& sum = sums[std::size_t{color[0]} >> 3 << 10 | std::size_t{color[1]} >> 3 << 5 |
                        std::size_t{color[2]} >> 3];
        ++sum.count;
        for (std::size_t i = 0; i < 3; ++i)
            sum.channels[i] += color[i];
    }

    std::vector<Bin> bins;
    for (const Sum& sum : sums) {
        if (sum.count == 0) continue;
        Bin bin;
        bin.weight = static_cast<float>(sum.count);
        for (std::size_t i = 0; i < 3; ++i)
            bin.color[i] = static_cast<float>(sum.channels[i]) / bin.weight;
        bins.push_back(bin);
    }
    return bins;
}

/// What a group of colours comes to.
struct Total {
    double weight = 0;
    std::array<double, 3> sum{};
    std::array<double, 3> squares{};

    void add(const Bin& bin) {
        weight += bin.weight;
        for (std::size_t i = 0; i < 3; ++i) {
            sum[i] += static_cast<double>(bin.weight * bin.color[i]);
            squares[i] += static_cast<double>(bin.weight * bin.color[i] * bin.color[i]);
        }
    }
    Vector mean() const {
        Vector mean;
        for (std::size_t i = 0; i < 3; ++i)
            mean[i] = static_cast<float>(sum[i] / weight);
        return mean;
    }
    /// The squared distances to the mean along one axis.
    double error(std::size_t axis) const {
        return weight > 0 ? squares[axis] - sum[axis] * sum[axis] / weight : 0;
    }
    double error() const { return error(0) + error(1) + error(2); }
};

Total total_of(std::span<const Bin> bins) {
    Total total;
    for (const Bin& bin : bins)
        total.add(bin);
    return total;
}

struct Box {
    std::span<Bin> bins;
    Total total;

    explicit Box(std::span<Bin> content)
        : bins(content)
        , total(total_of(content)) {}

    /// The number of bins, sorted along the widest axis, whose parting from the rest helps most.
    std::size_t best_cut() {
        std::size_t axis = 0;
        for (std::size_t i = 1; i < 3; ++i)
            if (total.error(i) > total.error(axis)) axis = i;
        std::sort(bins.begin(), bins.end(),
                  [axis](const Bin& a, const Bin& b) { return a.color[axis] < b.color[axis]; });
        // The least error in both parts is the greatest sum of squared means.
        std::size_t best = 1;
        double bestGain = -1;
        double weight = 0;
        std::array<double, 3> sum{};
        for (std::size_t count = 1; count < bins.size(); ++count) {
            const Bin& bin = bins[count - 1];
            weight += bin.weight;
            double gain = 0;
            for (std::size_t i = 0; i < 3; ++i) {
                sum[i] += static_cast<double>(bin.weight * bin.color[i]);
                const double rest = total.sum[i] - sum[i];
                gain += sum[i] * sum[i] / weight + rest * rest / (total.weight - weight);
            }
            if (gain <= bestGain) continue;
            bestGain = gain;
            best = count;
        }
        return best;
    }
};

/// Parts the colours into boxes, always the one that is worst as a single colour.
std::vector<Vector> cut_into(std::span<Bin> bins, std::size_t count) {
    std::vector<Box> boxes{Box(bins)};
    while (boxes.size() < count) {
        const auto worst =
            std::max_element(boxes.begin(), boxes.end(), [](const Box& a, const Box& b) {
                const auto gain = [](const Box& box) {
                    return box.bins.size() > 1 ? box.total.error() : -1;
                };
                return gain(a) < gain(b);
            });
        if (worst->bins.size() < 2) break;
        const std::span<Bin> all = worst->bins;
        const std::size_t cut = worst->best_cut();
        *worst = Box(all.first(cut));
        boxes.emplace_back(all.subspan(cut));
    }
    std::vector<Vector> means;
    for (const Box& box : boxes)
        means.push_back(box.total.mean());
    return means;
}

/// Distances of one colour to many, laid out for the compiler's vectors.
class Centers {
public:
    explicit Centers(std::span<const Vector> colors) {
        for (auto& channel : channels_)
            channel.fill(unreachable);
        for (std::size_t i = 0; i < colors.size(); ++i)
            for (std::size_t channel = 0; channel < 3; ++channel)
                channels_[channel][i] = colors[i][channel];
    }

    std::size_t nearest(const Vector& color) const {
        std::array<float, most> distances;
        for (std::size_t i = 0; i < most; ++i) {
            const float red = channels_[0][i] - color[0];
            const float green = channels_[1][i] - color[1];
            const float blue = channels_[2][i] - color[2];
            distances[i] = red * red + green * green + blue * blue;
        }
        return static_cast<std::size_t>(std::min_element(distances.begin(), distances.end()) -
                                        distances.begin());
    }

private:
    static constexpr std::size_t most = 256;
    static constexpr float unreachable = 1e6F;
    std::array<std::array<float, most>, 3> channels_;
};

/// Moves every colour to the mean of those that are nearest to it.
void settle(std::span<const Bin> bins, std::vector<Vector>& colors) {
    std::vector<Total> totals(colors.size());
    const Centers centers(colors);
    for (const Bin& bin : bins)
        totals[centers.nearest(bin.color)].add(bin);
    for (std::size_t i = 0; i < colors.size(); ++i)
        if (totals[i].weight > 0) colors[i] = totals[i].mean();
}

std::uint8_t to_byte(float value) { return static_cast<std::uint8_t>(std::lround(value)); }

} // namespace

std::vector<RGBColor> choose_palette(const Picture& picture, std::size_t count) {
    auto bins = bins_of(picture);
    if (bins.empty()) return {RGBColor{}};
    auto colors = cut_into(bins, count);
    constexpr int rounds = 4;
    for (int round = 0; round < rounds; ++round)
        settle(bins, colors);
    std::vector<RGBColor> palette;
    for (const Vector& color : colors)
        palette.push_back({to_byte(color[0]), to_byte(color[1]), to_byte(color[2])});
    return palette;
}

NearestColor::NearestColor(std::span<const RGBColor> palette)
    : count_(std::min<std::size_t>(palette.size(), 256))
    , cells_(std::size_t{1} << 18, unknown) {
    for (std::size_t i = 0; i < count_; ++i)
        for (std::size_t channel = 0; channel < 3; ++channel)
            channels_[channel][i] = palette[i][channel];
}

std::uint16_t NearestColor::search(std::size_t cell) {
    constexpr std::int32_t middle = 2;
    const auto red = static_cast<std::int32_t>(cell >> 12 << 2) + middle;
    const auto green = static_cast<std::int32_t>((cell >> 6 & 63) << 2) + middle;
    const auto blue = static_cast<std::int32_t>((cell & 63) << 2) + middle;
    std::int32_t best = std::numeric_limits<std::int32_t>::max();
    for (std::size_t i = 0; i < count_; ++i) {
        const std::int32_t dr = channels_[0][i] - red;
        const std::int32_t dg = channels_[1][i] - green;
        const std::int32_t db = channels_[2][i] - blue;
        // Distance and index in one number, so that its minimum tells both.
        const std::int32_t both = (dr * dr + dg * dg + db * db) << 8 | static_cast<std::int32_t>(i);
        best = std::min(best, both);
    }
    return cells_[cell] = static_cast<std::uint16_t>(best & 0xFF);
}

} // namespace cocoa::codecs
