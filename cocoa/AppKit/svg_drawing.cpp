#include "cocoa/AppKit/svg_drawing.h"

#include <cstddef>
#include <dlfcn.h>

namespace cocoa::appkit {
namespace {

constexpr int largestSide = 4096;

/// The calls of librsvg, and of the libraries below it, that drawing takes.
struct Library {
    struct Rectangle {
        double x, y, width, height;
    };
    static constexpr int formatARGB32 = 0; ///< words of premultiplied ARGB
    static constexpr int success = 0;

    void* (*rsvg_handle_new_from_data)(const std::uint8_t*, std::size_t, void** error);
    int (*rsvg_handle_render_document)(void* handle, void* cairo, const Rectangle*, void** error);
    void (*g_object_unref)(void*);
    void* (*cairo_image_surface_create_for_data)(std::uint8_t*, int format, int width, int height,
                                                 int stride);
    void* (*cairo_create)(void* surface);
    int (*cairo_status)(void* cairo);
    void (*cairo_destroy)(void* cairo);
    void (*cairo_surface_flush)(void* surface);
    void (*cairo_surface_destroy)(void* surface);

    /// Null where the library, or a call that is needed, is missing.
    static const Library* shared() {
        static const std::optional<Library> library = load();
        return library ? &*library : nullptr;
    }

private:
    static std::optional<Library> load() {
        // Never closed: it keeps threads and types of its own.
        void* file = dlopen("librsvg-2.so.2", RTLD_NOW | RTLD_LOCAL);
        if (!file) return std::nullopt;
        Library library{};
        bool complete = true;
        const auto find = [&](auto& function, const char* name) {
            function =
                reinterpret_cast<std::remove_reference_t<decltype(function)>>(dlsym(file, name));
            complete = complete && function;
        };
        find(library.rsvg_handle_new_from_data, "rsvg_handle_new_from_data");
        find(library.rsvg_handle_render_document, "rsvg_handle_render_document");
        find(library.g_object_unref, "g_object_unref");
        find(library.cairo_image_surface_create_for_data, "cairo_image_surface_create_for_data");
        find(library.cairo_create, "cairo_create");
        find(library.cairo_status, "cairo_status");
        find(library.cairo_destroy, "cairo_destroy");
        find(library.cairo_surface_flush, "cairo_surface_flush");
        find(library.cairo_surface_destroy, "cairo_surface_destroy");
        if (!complete) return std::nullopt;
        return library;
    }
};

/// A cairo context over a square of pixels.
class Canvas {
public:
    Canvas(const Library& library, std::uint8_t* pixels, int side)
        : library_(library)
        , surface_(library.cairo_image_surface_create_for_data(pixels, Library::formatARGB32, side,
                                                               side, side * 4))
        , context_(library.cairo_create(surface_)) {}
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;
    ~Canvas() {
        library_.cairo_destroy(context_);
        library_.cairo_surface_destroy(surface_);
    }

    bool draw(void* handle, int side) {
        if (library_.cairo_status(context_) != Library::success) return false;
        const Library::Rectangle all = {0, 0, double(side), double(side)};
        if (!library_.rsvg_handle_render_document(handle, context_, &all, nullptr)) return false;
        library_.cairo_surface_flush(surface_);
        return library_.cairo_status(context_) == Library::success;
    }

private:
    const Library& library_;
    void* surface_;
    void* context_;
};

} // namespace

void SvgDrawing::Close::operator()(void* handle) const {
    if (handle) Library::shared()->g_object_unref(handle);
}

std::optional<SvgDrawing> SvgDrawing::open(std::span<const std::uint8_t> bytes) {
    const Library* library = bytes.empty() ? nullptr : Library::shared();
    if (!library) return std::nullopt;
    void* handle = library->rsvg_handle_new_from_data(bytes.data(), bytes.size(), nullptr);
    if (!handle) return std::nullopt;
    return SvgDrawing(handle);
}

std::vector<std::uint8_t> SvgDrawing::render(int side) const {
    if (side <= 0 || side > largestSide) return {};
    std::vector<std::uint32_t> words(static_cast<std::size_t>(side) *
                                     static_cast<std::size_t>(side));
    if (!Canvas(*Library::shared(), reinterpret_cast<std::uint8_t*>(words.data()), side)
             .draw(handle_.get(), side))
        return {};
    std::vector<std::uint8_t> pixels;
    pixels.reserve(words.size() * 4);
    for (const std::uint32_t word : words)
        for (const int shift : {16, 8, 0, 24})
            pixels.push_back(static_cast<std::uint8_t>(word >> shift));
    return pixels;
}

} // namespace cocoa::appkit
