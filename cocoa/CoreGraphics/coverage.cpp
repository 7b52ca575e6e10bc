#include "cocoa/CoreGraphics/coverage.h"

#include "cocoa/CoreGraphics/arithmetic.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace cocoa::cg {

std::unique_ptr<Coverage> Coverage::cut(const PixelRect& smaller) const {
    auto result = std::make_unique<Coverage>(smaller);
    for (int y = smaller.top; y < smaller.bottom; ++y) {
        std::memcpy(result->row(y), at(smaller.left, y), static_cast<std::size_t>(smaller.width()));
    }
    return result;
}

void Coverage::multiply(const Coverage& other) {
    for (int y = area.top; y < area.bottom; ++y) {
        std::uint8_t* own = row(y);
        const std::uint8_t* factor = other.at(area.left, y);
        for (int x = 0; x < area.width(); ++x) {
            own[x] = static_cast<std::uint8_t>(multiply8(own[x], factor[x]));
        }
    }
}

double snapped(double edge) {
    constexpr double tolerance = 1.0 / 500;
    const double nearest = std::round(edge);
    return std::abs(edge - nearest) <= tolerance ? nearest : edge;
}

namespace {

/// The whole pixels around low to high that lie within least to most.
struct Span {
    int first;
    int end;
};

Span pixelsAround(double low, double high, int least, int most) {
    // Cut before narrowing: edges may lie anywhere.
    const double first = std::clamp(std::floor(low), double(least), double(most));
    const double end = std::clamp(std::ceil(high), double(least), double(most));
    return {static_cast<int>(first), static_cast<int>(end)};
}

/// The part of pixel `i` between two edges.
double overlap(int i, double low, double high) {
    return std::max(0.0, std::min(high, i + 1.0) - std::max(low, double(i)));
}

/// Whether the edges lie on pixel borders: between its first and its last pixel a span is covered
/// wholly.
bool isWhole(const Span& span, double low, double high) {
    return overlap(span.first, low, high) == 1 && overlap(span.end - 1, low, high) == 1;
}

Region coveredUpright(double left, double top, double right, double bottom, const PixelRect& limits,
                      bool antialias) {
    const auto edge = [antialias](double position) {
        // A pixel whose centre is on the edge belongs to the shape on its right or below.
        return antialias ? snapped(position) : std::ceil(snapped(position * 2) / 2 - 0.5);
    };
    left = edge(left);
    top = edge(top);
    right = edge(right);
    bottom = edge(bottom);
    const Span x = pixelsAround(left, right, limits.left, limits.right);
    const Span y = pixelsAround(top, bottom, limits.top, limits.bottom);
    Region region{{x.first, y.first, x.end, y.end}, nullptr};
    if (region.isEmpty()) return region;
    if (isWhole(x, left, right) && isWhole(y, top, bottom)) return region;
    auto coverage = std::make_shared<Coverage>(region.bounds);
    for (int line = y.first; line < y.end; ++line) {
        std::uint8_t* values = coverage->row(line);
        const double height = overlap(line, top, bottom) * 255;
        for (int column = x.first; column < x.end; ++column) {
            values[column - x.first] =
                static_cast<std::uint8_t>(std::lround(overlap(column, left, right) * height));
        }
    }
    region.coverage = std::move(coverage);
    return region;
}

/// What of a convex polygon lies on one side of an upright or level line.
std::vector<Point> clipped(const std::vector<Point>& polygon, double Point::*axis, double limit,
                           bool keepAbove) {
    std::vector<Point> result;
    const auto inside = [&](const Point& p) {
        return keepAbove ? p.*axis >= limit : p.*axis <= limit;
    };
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        const Point& from = polygon[i];
        const Point& to = polygon[(i + 1) % polygon.size()];
        if (inside(from)) result.push_back(from);
        if (inside(from) != inside(to)) {
            const double t = (limit - from.*axis) / (to.*axis - from.*axis);
            Point crossing{from.x + (to.x - from.x) * t, from.y + (to.y - from.y) * t};
            crossing.*axis = limit;
            result.push_back(crossing);
        }
    }
    return result;
}

/// Sums, for every pixel, the signed area between an edge and the right border; running sums along
/// the rows then give the area of the polygon in each pixel.
class AreaAccumulator {
public:
    explicit AreaAccumulator(const PixelRect& area)
        : area(area)
        , stride(static_cast<std::size_t>(area.width()) + 2)
        , cells(stride * static_cast<std::size_t>(area.height())) {}

    void addEdge(Point from, Point to) {
        const double sign = from.y < to.y ? 1 : -1;
        if (sign < 0) std::swap(from, to);
        const int firstLine = static_cast<int>(std::floor(from.y));
        for (int y = std::max(firstLine, area.top); y < area.bottom && y < to.y; ++y) {
            const double top = std::max(from.y, double(y));
            const double bottom = std::min(to.y, y + 1.0);
            if (bottom <= top) continue;
            const double slope = (to.x - from.x) / (to.y - from.y);
            addLine(y, from.x + slope * (top - from.y), from.x + slope * (bottom - from.y),
                    (bottom - top) * sign);
        }
    }

    void finish(Coverage& coverage, bool antialias) const {
        for (int y = area.top; y < area.bottom; ++y) {
            const double* line = cells.data() + static_cast<std::size_t>(y - area.top) * stride;
            std::uint8_t* values = coverage.row(y);
            double sum = 0;
            for (int x = 0; x < area.width(); ++x) {
                sum += line[x];
                const double part = std::min(std::abs(sum), 1.0);
                values[x] = antialias ? static_cast<std::uint8_t>(std::lround(part * 255))
                                      : (part >= 0.5 ? 255 : 0);
            }
        }
    }

private:
    /// The piece of an edge within one row, from x0 to x1 over a signed height.
    void addLine(int y, double x0, double x1, double height) {
        double* line = cells.data() + static_cast<std::size_t>(y - area.top) * stride;
        // Rounding may have left an edge a little outside.
        const double low = std::clamp(std::min(x0, x1) - area.left, 0.0, double(area.width()));
        const double high = std::clamp(std::max(x0, x1) - area.left, low, double(area.width()));
        const int first = static_cast<int>(std::floor(low));
        const int last = std::max(static_cast<int>(std::ceil(high)) - 1, first);
        double before = 0; // the share of the height that was passed left of the pixel
        double areaBefore = 0;
        for (int x = first; x <= last; ++x) {
            const double reach = std::min(high, x + 1.0);
            const double passed = high > low ? (reach - low) / (high - low) : 1;
            // Of the pixel, what lies right of the edge.
            const double enter = std::max(low, double(x));
            const double share = passed - before;
            const double inPixel = before + share * (x + 1 - (enter + reach) / 2);
            line[x] += height * (inPixel - areaBefore);
            areaBefore = inPixel;
            before = passed;
        }
        line[last + 1] += height * (1 - areaBefore);
    }

    PixelRect area;
    std::size_t stride;
    std::vector<double> cells;
};

Region coveredSlanted(const Quad& quad, const PixelRect& limits, bool antialias) {
    std::vector<Point> polygon(quad.begin(), quad.end());
    polygon = clipped(polygon, &Point::x, limits.left, true);
    polygon = clipped(polygon, &Point::x, limits.right, false);
    polygon = clipped(polygon, &Point::y, limits.top, true);
    polygon = clipped(polygon, &Point::y, limits.bottom, false);
    if (polygon.size() < 3) return {};
    const auto byX = [](const Point& a, const Point& b) { return a.x < b.x; };
    const auto byY = [](const Point& a, const Point& b) { return a.y < b.y; };
    const auto [left, right] = std::minmax_element(polygon.begin(), polygon.end(), byX);
    const auto [top, bottom] = std::minmax_element(polygon.begin(), polygon.end(), byY);
    const Span x = pixelsAround(left->x, right->x, limits.left, limits.right);
    const Span y = pixelsAround(top->y, bottom->y, limits.top, limits.bottom);
    Region region{{x.first, y.first, x.end, y.end}, nullptr};
    if (region.isEmpty()) return region;
    AreaAccumulator accumulator(region.bounds);
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        accumulator.addEdge(polygon[i], polygon[(i + 1) % polygon.size()]);
    }
    auto coverage = std::make_shared<Coverage>(region.bounds);
    accumulator.finish(*coverage, antialias);
    region.coverage = std::move(coverage);
    return region;
}

} // namespace

Region covered(const Quad& quad, const PixelRect& limits, bool antialias) {
    for (const Point& corner : quad) {
        if (!std::isfinite(corner.x) || !std::isfinite(corner.y)) return {};
    }
    if (limits.isEmpty()) return {};
    constexpr double level = 1e-3;
    const auto same = [](double a, double b) { return std::abs(a - b) < level; };
    const bool upright = same(quad[0].y, quad[1].y) && same(quad[1].x, quad[2].x) &&
                         same(quad[2].y, quad[3].y) && same(quad[3].x, quad[0].x);
    const bool turned = same(quad[0].x, quad[1].x) && same(quad[1].y, quad[2].y) &&
                        same(quad[2].x, quad[3].x) && same(quad[3].y, quad[0].y);
    if (upright || turned) {
        return coveredUpright(std::min(quad[0].x, quad[2].x), std::min(quad[0].y, quad[2].y),
                              std::max(quad[0].x, quad[2].x), std::max(quad[0].y, quad[2].y),
                              limits, antialias);
    }
    return coveredSlanted(quad, limits, antialias);
}

Region intersection(const Region& first, const Region& second) {
    Region result{intersection(first.bounds, second.bounds), nullptr};
    if (result.isEmpty()) return result;
    const auto& one = first.coverage ? first.coverage : second.coverage;
    if (!one) return result;
    std::shared_ptr<Coverage> coverage = one->cut(result.bounds);
    if (first.coverage && second.coverage) coverage->multiply(*second.coverage);
    result.coverage = std::move(coverage);
    return result;
}

Region unionOf(const Region& first, const Region& second) {
    if (first.isEmpty()) return second;
    if (second.isEmpty()) return first;
    const PixelRect& one = first.bounds;
    const PixelRect& two = second.bounds;
    Region result{{std::min(one.left, two.left), std::min(one.top, two.top),
                   std::max(one.right, two.right), std::max(one.bottom, two.bottom)},
                  nullptr};
    auto coverage = std::make_shared<Coverage>(result.bounds);
    for (const Region* region : {&first, &second}) {
        const PixelRect& bounds = region->bounds;
        for (int y = bounds.top; y < bounds.bottom; ++y) {
            std::uint8_t* values = coverage->row(y) + (bounds.left - result.bounds.left);
            const std::uint8_t* parts =
                region->coverage ? region->coverage->at(bounds.left, y) : nullptr;
            for (int x = 0; x < bounds.width(); ++x) {
                values[x] = std::max<std::uint8_t>(values[x], parts != nullptr ? parts[x] : 255);
            }
        }
    }
    result.coverage = std::move(coverage);
    return result;
}

} // namespace cocoa::cg
