#pragma once

/// Icon themes of a few files, which stand in for those of the machine.

#include "files.h"

namespace appkit_test {

/// An empty machine: no theme is installed but those that are written. The environment of the
/// process leads to them until the object goes.
class IconThemes {
public:
    IconThemes();
    ~IconThemes();
    IconThemes(const IconThemes&) = delete;
    IconThemes& operator=(const IconThemes&) = delete;

    /// `file` is below the folder of all icons, as in "Adwaita/16x16/folder.png".
    void write(std::string_view file, const ByteVector& content) const;
    void write(std::string_view file, std::string_view content) const;
    /// The index of a theme with one directory, for pictures of that size.
    void writeFixed(std::string_view theme, std::string_view directory, int size) const;
    /// The index of a theme with one directory, "scalable", for drawings.
    void writeScalable(std::string_view theme, int least, int most) const;

    std::string path(std::string_view file) const { return home_.path(icons_ + std::string(file)); }
    const codecs_test::TemporaryFolder& home() const { return home_; }

private:
    static constexpr const char* variables_[] = {"HOME", "XDG_DATA_HOME", "XDG_DATA_DIRS",
                                                 "XDG_CONFIG_HOME"};
    std::string icons_ = "data/icons/";
    codecs_test::TemporaryFolder home_;
    std::vector<std::optional<std::string>> before_;
};

/// A picture of one colour.
ByteVector plainPNG(std::uint32_t width, std::uint32_t height, const Pixel& pixel);

/// A drawing of 16 by 16 whose left half is of a colour and whose right half is empty.
std::string halfSVG(std::string_view color);

} // namespace appkit_test
