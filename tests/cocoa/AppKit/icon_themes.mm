#include "icon_themes.h"

#include "cocoa/codecs/png_file.h"

#include <cstdlib>

namespace appkit_test {

IconThemes::IconThemes() {
    for (const char* variable : variables_) {
        const char* value = std::getenv(variable);
        before_.push_back(value ? std::optional<std::string>(value) : std::nullopt);
    }
    setenv("HOME", home_.path("").c_str(), 1);
    setenv("XDG_DATA_HOME", home_.path("data").c_str(), 1);
    setenv("XDG_DATA_DIRS", home_.path("shared").c_str(), 1);
    setenv("XDG_CONFIG_HOME", home_.path("config").c_str(), 1);
}

IconThemes::~IconThemes() {
    for (std::size_t index = 0; index < std::size(variables_); ++index) {
        if (before_[index])
            setenv(variables_[index], before_[index]->c_str(), 1);
        else
            unsetenv(variables_[index]);
    }
}

void IconThemes::write(std::string_view file, const ByteVector& content) const {
    std::filesystem::create_directories(std::filesystem::path(path(file)).parent_path());
    home_.write(icons_ + std::string(file), content);
}

void IconThemes::write(std::string_view file, std::string_view content) const {
    write(file, codecs_test::bytes_of(content));
}

void IconThemes::writeFixed(std::string_view theme, std::string_view directory, int size) const {
    const std::string name(directory);
    write(std::string(theme) + "/index.theme",
          "[Icon Theme]\nName=Test\nDirectories=" + name + "\n\n[" + name +
              "]\nSize=" + std::to_string(size) + "\nType=Fixed\n");
}

void IconThemes::writeScalable(std::string_view theme, int least, int most) const {
    write(std::string(theme) + "/index.theme",
          "[Icon Theme]\nName=Test\nDirectories=scalable\n\n[scalable]\nSize=16\nType=Scalable\n"
          "MinSize=" +
              std::to_string(least) + "\nMaxSize=" + std::to_string(most) + "\n");
}

ByteVector plainPNG(std::uint32_t width, std::uint32_t height, const Pixel& pixel) {
    ByteVector row;
    for (std::uint32_t x = 0; x < width; ++x)
        for (const int sample : {pixel.red, pixel.green, pixel.blue, pixel.alpha})
            row.push_back(static_cast<std::uint8_t>(sample));
    return codecs_test::PngFile(width, height, 8, codecs_test::PngRGBA)
        .rows(std::vector<ByteVector>(height, row))
        .end();
}

std::string halfSVG(std::string_view color) {
    return "<svg xmlns='http://www.w3.org/2000/svg' width='16' height='16'>"
           "<rect width='8' height='16' fill='" +
           std::string(color) + "'/></svg>";
}

} // namespace appkit_test
