/// Makes examples/photo.jpg, the picture that the example programs load: a mountain lake in the
/// evening, rendered from nothing but noise, so that it is free of anybody's rights. The same
/// program always makes the same picture.
///
///     make_photo OUTPUT.jpg [WIDTH HEIGHT]

#include "cocoa/codecs/codec.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <random>
#include <thread>

#include <libexif/exif-data.h>

namespace {

using namespace cocoa::codecs;

// ---- Vectors, in kilometres; x is to the right, y up, z away. Colours are linear light.

struct Vector {
    float x = 0, y = 0, z = 0;
};
Vector operator+(Vector a, Vector b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
Vector operator-(Vector a, Vector b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
Vector operator*(Vector a, float f) { return {a.x * f, a.y * f, a.z * f}; }
Vector operator*(Vector a, Vector b) { return {a.x * b.x, a.y * b.y, a.z * b.z}; }
float dot(Vector a, Vector b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
Vector unit(Vector a) { return a * (1 / std::sqrt(dot(a, a))); }
float mix(float a, float b, float t) { return a + (b - a) * t; }
Vector mix(Vector a, Vector b, float t) { return a + (b - a) * t; }
float ramp(float from, float to, float value) {
    const float t = std::clamp((value - from) / (to - from), 0.0F, 1.0F);
    return t * t * (3 - 2 * t);
}

// ---- Noise

float lattice(int x, int y) {
    auto hash =
        static_cast<std::uint32_t>(x) * 0x9E3779B1U ^ static_cast<std::uint32_t>(y) * 0x85EBCA77U;
    hash = (hash ^ hash >> 15) * 0x2C1B3C6DU;
    hash = (hash ^ hash >> 12) * 0x297A2D39U;
    return static_cast<float>((hash ^ hash >> 15) >> 8) * (1.0F / (1 << 24));
}

/// 0 to 1, smooth, one feature a unit.
float noise(float x, float y) {
    const float cellX = std::floor(x);
    const float cellY = std::floor(y);
    const auto smooth = [](float t) { return t * t * t * (t * (t * 6 - 15) + 10); };
    const float u = smooth(x - cellX);
    const float v = smooth(y - cellY);
    const int i = static_cast<int>(cellX);
    const int j = static_cast<int>(cellY);
    return mix(mix(lattice(i, j), lattice(i + 1, j), u),
               mix(lattice(i, j + 1), lattice(i + 1, j + 1), u), v);
}

/// Layers of noise, each turned, half as strong and twice as fine. 0 to 1.
float cloudy_noise(float x, float y, int layers) {
    float sum = 0;
    float strength = 0.5F;
    for (int i = 0; i < layers; ++i, strength *= 0.5F) {
        sum += strength * noise(x, y);
        const float turned = 1.6F * x - 1.2F * y + 17.3F;
        y = 1.2F * x + 1.6F * y + 5.1F;
        x = turned;
    }
    return sum;
}

/// As `cloudy_noise`, but with sharp crests, on which the finer layers gather.
float crested_noise(float x, float y, int layers) {
    float sum = 0;
    float strength = 0.5F;
    float carried = 1;
    for (int i = 0; i < layers; ++i, strength *= 0.5F) {
        const float crest = 1 - std::abs(2 * noise(x, y) - 1);
        const float sharp = mix(crest, crest * crest, 0.6F) * carried;
        sum += strength * sharp;
        carried = std::clamp(sharp * 1.6F, 0.15F, 1.0F);
        const float turned = 1.6F * x - 1.2F * y + 31.7F;
        y = 1.2F * x + 1.6F * y + 11.9F;
        x = turned;
    }
    return sum;
}

// ---- The land: a lake in a valley that mountains close behind and at both sides

const Vector sunDirection = unit({0.70F, 0.27F, 0.50F});
const Vector sunLight{3.3F, 2.35F, 1.35F};
const Vector skyLight{0.30F, 0.42F, 0.62F};

constexpr int coarseLayers = 7;
constexpr int fineLayers = 11;

/// Height over the lake's surface; below 0 is water.
float land_height(float x, float z, int layers) {
    const float bend = 0.55F * std::sin(z * 0.45F + 0.6F);
    const float fromAxis = std::abs(x - bend) - 0.55F - 0.25F * noise(x * 0.9F + 4, z * 0.9F);
    const float behind = z - 6.3F - 0.9F * noise(x * 0.6F, 7.7F);
    const float shore = std::max(fromAxis * 0.75F, behind * 0.6F);
    const float rise = ramp(0.0F, 4.2F, shore);
    const float crests = crested_noise(x * 0.30F + 3.1F, z * 0.30F + 8.4F, layers);
    const float rough = cloudy_noise(x * 2.1F, z * 2.1F, std::max(layers - 4, 2)) - 0.5F;
    const float banks = std::clamp(shore, -0.3F, 0.5F) * 0.22F;
    return banks + rise * (0.20F + 2.9F * crests) + rough * 0.16F * ramp(-0.05F, 0.8F, shore);
}

/// The tops of trees stand out from the slopes they grow on.
float forest(float x, float z, float height) {
    const float edge = height + 0.25F * (cloudy_noise(x * 1.7F + 9, z * 1.7F, 4) - 0.5F);
    return ramp(0.012F, 0.03F, edge) * (1 - ramp(0.62F, 0.95F, edge));
}

// ---- The sky

Vector sky_color(Vector direction) {
    const float up = std::max(direction.y, 0.0F);
    const float towardSun = std::max(dot(direction, sunDirection), 0.0F);
    const Vector zenith{0.085F, 0.20F, 0.47F};
    const Vector horizon{0.62F, 0.66F, 0.70F};
    Vector color = mix(horizon, zenith, 1 - std::exp(-3.6F * up));
    const float haze = std::exp(-7 * up);
    color = color + Vector{0.75F, 0.42F, 0.16F} * (haze * std::pow(towardSun, 3.0F) * 0.9F);
    color = color + Vector{1.0F, 0.72F, 0.40F} * (0.35F * std::pow(towardSun, 12.0F));
    color = color + Vector{1.0F, 0.86F, 0.62F} * (1.1F * std::pow(towardSun, 180.0F));
    return color + Vector{30, 26, 20} * ramp(0.99962F, 0.99985F, towardSun);
}

float cloud_density(float x, float z) {
    const float warp = cloudy_noise(x * 0.35F + 2.2F, z * 0.35F, 4);
    const float shape = cloudy_noise(x * 0.55F + 1.3F * warp, z * 0.8F + 0.9F * warp + 3, 8);
    return ramp(0.455F, 0.66F, shape);
}

/// A thin layer of broken clouds, seen from below.
Vector sky_with_clouds(Vector direction) {
    Vector color = sky_color(direction);
    if (direction.y < 0.015F) return color;
    const float distance = 2.4F / (direction.y + 0.04F);
    const float x = direction.x * distance * 0.62F;
    const float z = direction.z * distance * 0.62F;
    const float density = cloud_density(x, z);
    const float thicker = cloud_density(x + sunDirection.x * 0.22F, z + sunDirection.z * 0.22F);
    const float lit = std::clamp(1.05F - 0.75F * thicker, 0.0F, 1.0F);
    const float towardSun = std::max(dot(direction, sunDirection), 0.0F);
    const Vector shaded{0.36F, 0.40F, 0.50F};
    const Vector bright{1.30F, 1.12F, 0.92F};
    Vector cloud = mix(shaded, bright, lit * (0.75F + 0.25F * (1 - density)));
    cloud = cloud + Vector{0.9F, 0.55F, 0.25F} * (0.6F * std::pow(towardSun, 8.0F) * lit);
    const float near = ramp(0.015F, 0.16F, direction.y);
    return mix(color, cloud, density * 0.88F * near);
}

/// What the air between adds and takes.
Vector through_air(Vector color, Vector direction, float distance) {
    const float towardSun = std::max(dot(direction, sunDirection), 0.0F);
    const Vector air = mix(Vector{0.42F, 0.52F, 0.66F}, Vector{1.05F, 0.82F, 0.58F},
                           0.75F * std::pow(towardSun, 4.0F));
    const Vector clear{std::exp(-distance * 0.020F), std::exp(-distance * 0.028F),
                       std::exp(-distance * 0.042F)};
    return color * clear + air * (Vector{1, 1, 1} - clear);
}

// ---- Light on the land

constexpr float farthest = 30;

/// The distance at which a ray meets the land; negative when it does not.
float meet_land(Vector origin, Vector direction, float start, float precision) {
    constexpr float highest = 4.2F;
    float last = start;
    for (float t = start; t < farthest;) {
        const Vector at = origin + direction * t;
        if (at.y > highest && direction.y > 0) return -1;
        const float above = at.y - land_height(at.x, at.z, coarseLayers);
        if (above < precision * t * 0.3F) {
            float low = last;
            float high = t;
            for (int i = 0; i < 6; ++i) {
                const float middle = (low + high) / 2;
                const Vector trial = origin + direction * middle;
                (trial.y < land_height(trial.x, trial.z, coarseLayers + 1) ? high : low) = middle;
            }
            return (low + high) / 2;
        }
        last = t;
        t += std::max(above * 0.38F, precision * t);
    }
    return -1;
}

float sunlight_at(Vector point) {
    float light = 1;
    for (float t = 0.03F; t < 7; t *= 1.17F) {
        const Vector at = point + sunDirection * t;
        const float above = at.y - land_height(at.x, at.z, coarseLayers);
        if (above < 0) return 0;
        light = std::min(light, 14 * above / t);
        if (at.y > 4) break;
    }
    return light;
}

Vector land_normal(Vector point, float width) {
    const auto height = [&](float x, float z) {
        const float ground = land_height(x, z, fineLayers);
        const float trees = forest(x, z, ground);
        const float tops = noise(x * 95, z * 95) * 0.65F + noise(x * 260, z * 260) * 0.35F;
        return ground + trees * tops * 0.011F;
    };
    return unit({height(point.x - width, point.z) - height(point.x + width, point.z), 2 * width,
                 height(point.x, point.z - width) - height(point.x, point.z + width)});
}

Vector land_color(Vector point, Vector normal) {
    const float broad = cloudy_noise(point.x * 3, point.z * 3, 5);
    const float fine = cloudy_noise(point.x * 40, point.z * 40 + point.y * 60, 4);
    const Vector rock =
        mix(Vector{0.15F, 0.135F, 0.12F}, Vector{0.30F, 0.27F, 0.235F}, 0.5F * broad + 0.7F * fine);
    const Vector meadow = mix(Vector{0.075F, 0.092F, 0.03F}, Vector{0.17F, 0.15F, 0.065F},
                              0.6F * broad + 0.5F * fine);
    const Vector trees = mix(Vector{0.016F, 0.030F, 0.013F}, Vector{0.050F, 0.070F, 0.024F},
                             noise(point.x * 95, point.z * 95) * 0.7F + fine * 0.4F);
    const Vector snow{0.86F, 0.89F, 0.95F};

    const float flat = ramp(0.52F, 0.80F, normal.y + 0.25F * (fine - 0.5F));
    Vector color = mix(rock, meadow, flat * (1 - ramp(0.9F, 1.5F, point.y + 0.5F * broad)));
    color = mix(color, trees, forest(point.x, point.z, point.y) * ramp(0.34F, 0.52F, normal.y));
    const float snowLine = point.y + 0.9F * (broad - 0.5F) + 0.25F * (fine - 0.5F);
    color = mix(color, snow, ramp(1.25F, 1.75F, snowLine) * ramp(0.42F, 0.66F, normal.y));
    const float beach = 1 - ramp(0.004F, 0.016F, point.y);
    return mix(color, Vector{0.20F, 0.18F, 0.15F} * (0.6F + 0.7F * fine), beach);
}

Vector seen_land(Vector origin, Vector direction, float distance) {
    const Vector point = origin + direction * distance;
    const Vector normal = land_normal(point, std::max(0.0009F * distance, 0.0012F));
    const Vector color = land_color(point, normal);
    const float facing = std::max(dot(normal, sunDirection), 0.0F);
    const float sun = facing > 0 ? facing * sunlight_at(point + Vector{0, 0.006F, 0}) : 0;
    const float bounce = std::max(-normal.x * 0.5F - normal.z * 0.5F, 0.0F) * 0.12F;
    const Vector light =
        sunLight * sun + skyLight * (0.55F + 0.45F * normal.y) + Vector{1, 0.8F, 0.6F} * bounce;
    return through_air(color * light, direction, distance);
}

Vector seen_without_lake(Vector origin, Vector direction, float start, float precision) {
    const float distance = meet_land(origin, direction, start, precision);
    return distance > 0 ? seen_land(origin, direction, distance) : sky_with_clouds(direction);
}

// ---- The lake

Vector water_normal(Vector point, float distance) {
    const float calm =
        0.35F + 1.1F * ramp(0.42F, 0.62F, cloudy_noise(point.x * 2.2F, point.z * 0.9F, 3));
    const auto waves = [](float x, float z) {
        return noise(x * 75, z * 130) * 0.6F + noise(x * 190 + 5, z * 330) * 0.3F +
               noise(x * 520, z * 800 + 9) * 0.16F;
    };
    constexpr float step = 0.0006F;
    const float strength = 0.020F * calm / (1 + distance * 0.9F);
    const float slopeX =
        (waves(point.x + step, point.z) - waves(point.x - step, point.z)) * strength;
    const float slopeZ =
        (waves(point.x, point.z + step) - waves(point.x, point.z - step)) * strength;
    return unit({-slopeX, 0.055F, -slopeZ});
}

Vector seen_lake(Vector origin, Vector direction, float distance) {
    const Vector point = origin + direction * distance;
    const Vector normal = water_normal(point, distance);
    Vector mirrored = direction - normal * (2 * dot(direction, normal));
    mirrored.y = std::max(mirrored.y, 0.004F);
    mirrored = unit(mirrored);
    const float facing = std::clamp(-dot(direction, normal), 0.0F, 1.0F);
    const float mirror = 0.03F + 0.97F * std::pow(1 - facing, 5.0F);
    const Vector reflected = seen_without_lake(point, mirrored, 0.02F, 0.009F);
    const float depth = std::max(-land_height(point.x, point.z, 3), 0.0F);
    const Vector deep =
        mix(Vector{0.10F, 0.13F, 0.10F}, Vector{0.012F, 0.045F, 0.06F}, ramp(0, 0.06F, depth));
    return through_air(mix(deep, reflected, std::min(mirror * 1.25F + 0.10F, 1.0F)), direction,
                       distance * 0.5F);
}

Vector seen(Vector origin, Vector direction) {
    constexpr float precision = 0.0022F;
    const float lake = direction.y < 0 ? -origin.y / direction.y : farthest;
    const float land = meet_land(origin, direction, 0.05F, precision);
    if (land > 0 && land < lake) return seen_land(origin, direction, land);
    if (lake < farthest) return seen_lake(origin, direction, lake);
    return sky_with_clouds(direction);
}

// ---- The picture: linear light, and what stands close in front of the camera

struct Canvas {
    int width;
    int height;
    std::vector<Vector> pixels;

    Canvas(int w, int h)
        : width(w)
        , height(h)
        , pixels(static_cast<std::size_t>(w) * h) {}
    Vector& at(int x, int y) { return pixels[static_cast<std::size_t>(y) * width + x]; }
    void cover(int x, int y, Vector color, float opacity) {
        if (x < 0 || y < 0 || x >= width || y >= height || opacity <= 0) return;
        at(x, y) = mix(at(x, y), color, std::min(opacity, 1.0F));
    }
};

void render_land(Canvas& canvas) {
    const Vector camera{-0.05F, 0.028F, -0.35F};
    const float scale = 1.05F / static_cast<float>(canvas.width);
    const auto render_rows = [&](int first, int step) {
        for (int y = first; y < canvas.height; y += step) {
            for (int x = 0; x < canvas.width; ++x) {
                Vector sum;
                constexpr float offsets[4][2] = {
                    {-.125F, -.375F}, {.375F, -.125F}, {-.375F, .125F}, {.125F, .375F}};
                for (const auto& offset : offsets) {
                    const float across =
                        (static_cast<float>(x) + offset[0] - canvas.width * 0.5F) * scale;
                    const float up =
                        (canvas.height * 0.56F - static_cast<float>(y) - offset[1]) * scale;
                    // Before averaging, what is brighter than white is held down: no jagged sun.
                    const Vector color = seen(camera, unit({across, up, 1}));
                    sum = sum + Vector{std::min(color.x, 4.0F), std::min(color.y, 4.0F),
                                       std::min(color.z, 4.0F)};
                }
                canvas.at(x, y) = sum * 0.25F;
            }
        }
    };
    const int threads = static_cast<int>(std::max(std::thread::hardware_concurrency(), 1U));
    std::vector<std::thread> workers;
    for (int i = 0; i < threads; ++i)
        workers.emplace_back(render_rows, i, threads);
    for (auto& worker : workers)
        worker.join();
}

using Random = std::mt19937;
float between(Random& random, float from, float to) {
    return from + (to - from) * static_cast<float>(random() >> 8) * (1.0F / (1 << 24));
}

/// A thin line that fades towards its end.
void draw_needle(Canvas& canvas, float x, float y, float dx, float dy, Vector color) {
    const float length = std::max(std::abs(dx), std::abs(dy)) + 0.5F;
    for (float along = 0; along < length; along += 0.8F) {
        const float px = x + dx * along / length;
        const float py = y + dy * along / length;
        const int column = static_cast<int>(std::floor(px));
        const float right = px - static_cast<float>(column);
        const float opacity = 0.75F - 0.3F * along / length;
        canvas.cover(column, static_cast<int>(py), color, opacity * (1 - right));
        canvas.cover(column + 1, static_cast<int>(py), color, opacity * right);
    }
}

/// A spruce: uneven branches from the top down, each a row of tufts of hanging needles.
void draw_spruce(Canvas& canvas, Random& random, float x, float base, float height, float haze) {
    const float halfWidth = height * between(random, 0.16F, 0.21F);
    const Vector air{0.42F, 0.44F, 0.46F};
    const auto tint = [&](Vector color) { return mix(color, air, haze); };
    for (float down = 0; down < height; down += 1) {
        const float wide = 0.5F + 0.007F * down;
        for (float i = -wide; i <= wide; i += 0.7F) {
            draw_needle(canvas, x + i, base - height + down, 0, 1.5F,
                        tint({0.026F, 0.019F, 0.013F}));
        }
    }
    const float unitSize = static_cast<float>(canvas.height) / 1067;
    const float needle = std::clamp(height * 0.014F, 1.6F, std::max(7.0F * unitSize, 1.6F));
    for (float down = height * 0.015F; down < height * 0.97F;
         down += needle * between(random, 0.06F, 0.22F)) {
        const float portion = down / height;
        const float side = random() & 1 ? 1.0F : -1.0F;
        const float length = halfWidth * std::pow(portion, 0.85F) *
                                 (0.65F + 0.6F * noise(portion * 26, x + side)) *
                                 (0.30F + 0.75F * std::sqrt(between(random, 0, 1))) +
                             1;
        const float slope = between(random, -0.05F, 0.50F) * (0.35F + portion);
        const float lift = between(random, 0.05F, 0.30F);
        const float shade = between(random, 0.25F, 1.0F) * (side > 0 ? 1.0F : 0.30F);
        for (float out = 0; out < length; out += needle * 0.16F) {
            const float along = out / length;
            const float px = x + side * out;
            const float py = base - height + down + out * slope - length * lift * along * along;
            const float light = shade * along * between(random, 0.3F, 1.0F);
            const Vector color =
                mix(Vector{0.008F, 0.014F, 0.008F}, Vector{0.105F, 0.115F, 0.035F}, light);
            const float size = needle * (1.25F - along) * between(random, 0.4F, 1.1F);
            draw_needle(canvas, px + between(random, -1, 1),
                        py + between(random, -0.3F, 0.3F) * needle,
                        side * size * between(random, -0.2F, 0.9F),
                        size * between(random, 0.1F, 1.1F), tint(color));
        }
    }
}

/// Meadow along the lower edge: blades from the far ones to the near ones.
void draw_grass(Canvas& canvas, Random& random) {
    const float unitSize = static_cast<float>(canvas.height) / 1067;
    const auto ground = [&](float x) {
        const float u = x / static_cast<float>(canvas.width);
        return static_cast<float>(canvas.height) *
               (0.985F - 0.085F * ramp(0.42F, 0.0F, u) - 0.05F * ramp(0.70F, 1.0F, u) -
                0.018F * cloudy_noise(u * 7, 3.3F, 4));
    };
    for (int x = 0; x < canvas.width; ++x) {
        for (int y = static_cast<int>(ground(static_cast<float>(x))); y < canvas.height; ++y) {
            const float patch = cloudy_noise(x * 0.05F / unitSize, y * 0.11F / unitSize, 4);
            canvas.cover(
                x, y, mix(Vector{0.012F, 0.016F, 0.006F}, Vector{0.05F, 0.05F, 0.02F}, patch), 1);
        }
    }
    constexpr int blades = 26000;
    for (int i = 0; i < blades; ++i) {
        const float nearness = static_cast<float>(i) / blades;
        const float x = between(random, -10, static_cast<float>(canvas.width) + 10);
        const float top = ground(x);
        const float root =
            top + (static_cast<float>(canvas.height) + 25 * unitSize - top) * nearness;
        const float clump = cloudy_noise(x * 0.02F / unitSize, root * 0.03F / unitSize, 3);
        const float length =
            unitSize * mix(7, 34, nearness) * between(random, 0.5F, 1.2F) * (0.5F + clump);
        const float lean = between(random, -0.45F, 0.55F);
        const float width = unitSize * mix(0.5F, 1.25F, nearness);
        const float dry = between(random, 0.0F, 1.0F) * clump * 1.4F;
        const Vector tip =
            mix(Vector{0.16F, 0.19F, 0.045F}, Vector{0.52F, 0.40F, 0.16F}, std::min(dry, 1.0F));
        for (float along = 0; along < 1; along += 0.7F / length) {
            const float px = x + lean * length * along * along;
            const float py = root - length * along;
            const Vector color =
                mix(Vector{0.018F, 0.024F, 0.008F}, tip, along * (0.45F + 0.55F * clump));
            const float wide = width * (1 - along) + 0.3F;
            canvas.cover(static_cast<int>(px), static_cast<int>(py), color, 0.9F * wide);
            canvas.cover(static_cast<int>(px) + 1, static_cast<int>(py), color,
                         0.9F * (wide - 0.7F));
        }
    }
}

void draw_foreground(Canvas& canvas) {
    Random random(20090511);
    const float w = static_cast<float>(canvas.width);
    const float h = static_cast<float>(canvas.height);
    struct Stand {
        float x, base, height, haze;
    };
    std::vector<Stand> stands;
    for (int i = 0; i < 16; ++i) {
        const float u = between(random, -0.02F, 0.20F);
        stands.push_back(
            {u, 0.90F + 0.05F * u, between(random, 0.16F, 0.30F) * (1.25F - 3.0F * u), 0.06F});
    }
    for (int i = 0; i < 9; ++i) {
        const float u = between(random, 0.90F, 1.02F);
        stands.push_back(
            {u, 0.93F, between(random, 0.12F, 0.22F) * (0.2F + 6.0F * (u - 0.85F)), 0.05F});
    }
    stands.push_back({0.055F, 0.975F, 0.74F, 0});
    stands.push_back({0.135F, 0.985F, 0.53F, 0});
    stands.push_back({-0.01F, 0.99F, 0.60F, 0});
    stands.push_back({0.965F, 0.985F, 0.40F, 0});
    for (const Stand& stand : stands) {
        draw_spruce(canvas, random, stand.x * w, stand.base * h, stand.height * h, stand.haze);
    }
    draw_grass(canvas, random);
}

// ---- Developing

float film(float light) { // a filmic shoulder and toe
    light = std::max(light, 0.0F) * 1.02F;
    return light * (2.51F * light + 0.03F) / (light * (2.43F * light + 0.59F) + 0.14F);
}

std::uint8_t eight_bits(float linear, float grain) {
    const float value = std::clamp(linear, 0.0F, 1.0F);
    const float encoded =
        value <= 0.0031308F ? value * 12.92F : 1.055F * std::pow(value, 1 / 2.4F) - 0.055F;
    return static_cast<std::uint8_t>(std::clamp(encoded * 255 + grain + 0.5F, 0.0F, 255.0F));
}

std::vector<std::uint8_t> develop(Canvas& canvas) {
    Random random(7);
    std::vector<std::uint8_t> bytes;
    bytes.reserve(canvas.pixels.size() * 3);
    for (int y = 0; y < canvas.height; ++y) {
        for (int x = 0; x < canvas.width; ++x) {
            const float dx = static_cast<float>(x) / canvas.width - 0.5F;
            const float dy = static_cast<float>(y) / canvas.height - 0.5F;
            const Vector color = canvas.at(x, y) * (0.86F * (1 - 0.60F * (dx * dx + dy * dy)));
            const float grain = between(random, -1.6F, 1.6F);
            bytes.push_back(eight_bits(film(color.x), grain));
            bytes.push_back(eight_bits(film(color.y), grain));
            bytes.push_back(eight_bits(film(color.z), grain));
        }
    }
    return bytes;
}

// ---- What a camera writes beside the pixels

class ExifBlock {
public:
    ExifBlock() { exif_data_set_byte_order(data_, order); }
    ~ExifBlock() { exif_data_unref(data_); }
    ExifBlock(const ExifBlock&) = delete;
    ExifBlock& operator=(const ExifBlock&) = delete;

    void text(ExifIfd directory, ExifTag tag, const char* value) {
        const auto size = static_cast<unsigned>(std::strlen(value) + 1);
        std::memcpy(add(directory, tag, EXIF_FORMAT_ASCII, size, size), value, size);
    }
    void number(ExifIfd directory, ExifTag tag, ExifShort value) {
        exif_set_short(add(directory, tag, EXIF_FORMAT_SHORT, 1, 2), order, value);
    }
    void long_number(ExifIfd directory, ExifTag tag, ExifLong value) {
        exif_set_long(add(directory, tag, EXIF_FORMAT_LONG, 1, 4), order, value);
    }
    void fraction(ExifIfd directory, ExifTag tag, ExifLong numerator, ExifLong denominator) {
        exif_set_rational(add(directory, tag, EXIF_FORMAT_RATIONAL, 1, 8), order,
                          {numerator, denominator});
    }
    void version(ExifTag tag, const char* fourDigits) {
        std::memcpy(add(EXIF_IFD_EXIF, tag, EXIF_FORMAT_UNDEFINED, 4, 4), fourDigits, 4);
    }

    std::vector<std::uint8_t> bytes() const {
        unsigned char* saved = nullptr;
        unsigned size = 0;
        exif_data_save_data(data_, &saved, &size);
        constexpr unsigned marker = 6;
        std::vector<std::uint8_t> block(saved + marker, saved + size);
        std::free(saved);
        return block;
    }

private:
    static constexpr ExifByteOrder order = EXIF_BYTE_ORDER_MOTOROLA;

    unsigned char* add(ExifIfd directory, ExifTag tag, ExifFormat format, unsigned count,
                       unsigned size) {
        ExifEntry* entry = exif_entry_new();
        entry->tag = tag;
        entry->format = format;
        entry->components = count;
        entry->size = size;
        entry->data = static_cast<unsigned char*>(std::calloc(1, size));
        exif_content_add_entry(data_->ifd[directory], entry);
        exif_entry_unref(entry);
        return entry->data;
    }

    ExifData* data_ = exif_data_new();
};

std::vector<std::uint8_t> camera_notes(int width, int height) {
    ExifBlock block;
    block.text(EXIF_IFD_0, EXIF_TAG_MAKE, "Noise & Light");
    block.text(EXIF_IFD_0, EXIF_TAG_MODEL, "Procedural 1");
    block.number(EXIF_IFD_0, EXIF_TAG_ORIENTATION, 1);
    block.fraction(EXIF_IFD_0, EXIF_TAG_X_RESOLUTION, 300, 1);
    block.fraction(EXIF_IFD_0, EXIF_TAG_Y_RESOLUTION, 300, 1);
    block.number(EXIF_IFD_0, EXIF_TAG_RESOLUTION_UNIT, 2);
    block.text(EXIF_IFD_0, EXIF_TAG_DATE_TIME, "2009:05:11 19:42:07");
    block.fraction(EXIF_IFD_EXIF, EXIF_TAG_EXPOSURE_TIME, 1, 250);
    block.fraction(EXIF_IFD_EXIF, EXIF_TAG_FNUMBER, 80, 10);
    block.number(EXIF_IFD_EXIF, EXIF_TAG_ISO_SPEED_RATINGS, 200);
    block.version(EXIF_TAG_EXIF_VERSION, "0221");
    block.text(EXIF_IFD_EXIF, EXIF_TAG_DATE_TIME_ORIGINAL, "2009:05:11 19:42:07");
    block.fraction(EXIF_IFD_EXIF, EXIF_TAG_FOCAL_LENGTH, 34, 1);
    block.number(EXIF_IFD_EXIF, EXIF_TAG_COLOR_SPACE, 1);
    block.long_number(EXIF_IFD_EXIF, EXIF_TAG_PIXEL_X_DIMENSION, static_cast<ExifLong>(width));
    block.long_number(EXIF_IFD_EXIF, EXIF_TAG_PIXEL_Y_DIMENSION, static_cast<ExifLong>(height));
    return block.bytes();
}

} // namespace

int main(int count, char** arguments) {
    if (count != 2 && count != 4) {
        std::fprintf(stderr, "usage: make_photo OUTPUT.jpg [WIDTH HEIGHT]\n");
        return 2;
    }
    const int width = count == 4 ? std::atoi(arguments[2]) : 1600;
    const int height = count == 4 ? std::atoi(arguments[3]) : 1067;
    if (width < 16 || height < 16 || width > 10000 || height > 10000) {
        std::fprintf(stderr, "make_photo: sides must be 16 to 10000\n");
        return 2;
    }
    Canvas canvas(width, height);
    render_land(canvas);
    draw_foreground(canvas);
    const auto pixels = develop(canvas);
    const auto exif = camera_notes(width, height);

    Picture picture;
    picture.layout.width = static_cast<std::uint32_t>(width);
    picture.layout.height = static_cast<std::uint32_t>(height);
    picture.pixels = pixels.data();
    picture.rowBytes = static_cast<std::size_t>(width) * 3;
    picture.dpiX = picture.dpiY = 300;
    picture.exif = exif;
    const Encoded file = jpeg.encode({&picture, 1}, {.quality = 0.9F});
    std::ofstream output(arguments[1], std::ios::binary);
    output.write(reinterpret_cast<const char*>(file.bytes.get()),
                 static_cast<std::streamsize>(file.size));
    output.close();
    if (!file || !output) {
        std::fprintf(stderr, "make_photo: cannot write %s\n", arguments[1]);
        return 1;
    }
    return 0;
}
