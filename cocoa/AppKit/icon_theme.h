#pragma once

/// The icon theme that is installed on the machine, found and laid out as freedesktop.org's themes
/// are.

#include <string>
#include <string_view>
#include <vector>

namespace cocoa::appkit {

/// One file of an icon.
struct IconFile {
    std::string path;
    bool isDrawing = false; ///< SVG, else PNG
    int size = 0;           ///< the side in pixels that it is made for
    int least = 0;          ///< the sides that it may be shown with
    int most = 0;
};

/// The files of the icon with that name, those of one theme: the user's, else the first of those
/// from which it inherits that has the icon, at last "hicolor". Empty when there is none, and for a
/// name with a slash. Reads the environment and the disk anew on every call.
std::vector<IconFile> findIcon(std::string_view name);

} // namespace cocoa::appkit
