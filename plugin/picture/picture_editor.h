#pragma once

/// Access to the pixels of a host Picture. Desktop hosts keep them in CoreGraphics bitmap contexts,
/// console and web hosts in gd images; which of the two is found out once, and then the same road
/// is taken as long as the process lives.

#include "plugin/picture/pixel_kernels.h"
#include "sdk/types.h"

#include <Carbon/Carbon.h>

#include <optional>

/// How the bytes of a locked Picture's pixels are laid out: the alpha info of its bitmap context,
/// or gd's. Every pixel has 32 bits.
enum REALpixelFormat : std::int32_t {
    formatUnknown = 0,
    formatPremultipliedLast = 1,
    formatPremultipliedFirst = 2,
    formatLast = 3,
    formatFirst = 4,
    formatNoneSkipLast = 5,
    formatNoneSkipFirst = 6,
    formatGD = 8,
};

/// Nothing for a format that no Picture has.
std::optional<PixelOrder> pixel_order_of(std::int32_t pixelFormat);

/// Locks a Picture and walks its rows; what it holds is given back when it ends.
class PictureEditor {
public:
    PictureEditor() = default;
    PictureEditor(const PictureEditor&) = delete;
    PictureEditor& operator=(const PictureEditor&) = delete;
    virtual ~PictureEditor();

    /// Gives back what is held and gives access to the pixels of `picture`; 1 when there is access,
    /// 0 otherwise. A desktop Picture that cannot be locked but is only to be read is read from a
    /// copy.
    signed char GetPictureEditor(REALpictureStruct* picture, signed char reading,
                                 signed char writing);

    /// Moves to the start of the next row; behind the last one, back to the first.
    void next_row();

    std::uint8_t* pixels() const { return static_cast<std::uint8_t*>(cursor); }

    std::int32_t rowBytes = 0;
    std::int32_t width = 0;  ///< pixels
    std::int32_t height = 0; ///< pixels
    std::int32_t bytesPerPixel = 0;
    std::int32_t reserved = 0;
    std::int32_t pixelFormat = formatUnknown;
    void* cursor = nullptr; ///< the current pixel
    REALpictureDescription description = {};
    void* baseAddress = nullptr; ///< of row 0
    std::int32_t column = 0;
    std::int32_t row = 0;
    REALpictureStruct* picture = nullptr; ///< holds a host reference of its own
    PixMapHandle pixMap = nullptr;        ///< a pixel map locked by the caller, to be unlocked here
    int** rowTable = nullptr;             ///< the rows of a gd image
    bool hasAlpha = false;                ///< the Picture has an alpha channel
    bool alphaLocked = false;             ///< ... and is locked as a bitmap context
    bool forReading = false;
    bool forWriting = false;
    bool descriptionLocked = false;

private:
    bool lock_context(REALpictureStruct* locking);
    bool lock_gd_image(REALpictureStruct* locking);
    std::optional<signed char> read_copy(REALpictureStruct* original);
    void take(REALpictureStruct* locked);
    void release();

    bool isReadingCopy_ = false;
};

class PictureReader : public PictureEditor {};
class PictureWriter : public PictureEditor {};

/// The width and the height that a Picture tells; 0 for what it does not tell.
struct PictureSize {
    std::int32_t width = 0;
    std::int32_t height = 0;

    bool is_empty() const { return width < 1 || height < 1; }
};
PictureSize size_of_picture(REALpictureStruct* picture);

/// Gives back a description that could not be locked: older hosts keep it locked all the same.
void unlock_failed_description(REALpictureStruct* picture);
