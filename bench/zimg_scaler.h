#pragma once

/// Scaling by zimg, for comparison: Lanczos with three lobes.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace bench {

struct Size {
    int width = 0;
    int height = 0;
};

enum class Channels { Colors, ColorsAndAlpha };

/// Scales pixels of four bytes, red, green, blue and premultiplied alpha, or of them the colours
/// alone. zimg works on planes, so pixels are split row by row as it asks for them, and merged as
/// it gives them out.
class ZimgScaler {
public:
    ZimgScaler(Size from, Size to, Channels channels);
    ~ZimgScaler();

    /// Of colours alone, the fourth byte of `to` becomes 255.
    void scale(const std::uint8_t* from, std::uint8_t* to);
    /// What is between splitting and merging: planes that are there already, into planes.
    void scalePlanes();

private:
    struct Graph;
    struct Free {
        void operator()(void* memory) const;
    };
    /// Planes one after the other, their rows aligned as zimg wants them.
    struct Planes {
        std::unique_ptr<std::uint8_t, Free> memory;
        std::size_t rowBytes = 0;
        std::size_t rows = 0;
        unsigned mask = 0;

        Planes(int width, std::size_t rows, unsigned mask, int count);
        std::uint8_t* row(int plane, unsigned y) const {
            return memory.get() + (static_cast<std::size_t>(plane) * rows + (y & mask)) * rowBytes;
        }
    };

    static int split(void* self, unsigned y, unsigned left, unsigned right);
    static int merge(void* self, unsigned y, unsigned left, unsigned right);
    void run(const Planes& from, const Planes& to, bool isPacked);

    Size fromSize_;
    Size toSize_;
    int planeCount_;
    std::unique_ptr<Graph> graph_;
    std::unique_ptr<std::uint8_t, Free> scratch_;
    std::unique_ptr<Planes> fromRows_, toRows_;     ///< as many rows as are in work at a time
    std::unique_ptr<Planes> fromPlanes_, toPlanes_; ///< whole pictures
    const std::uint8_t* from_ = nullptr;
    std::uint8_t* to_ = nullptr;
};

} // namespace bench
