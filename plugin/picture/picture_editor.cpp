#include "plugin/picture/picture_editor.h"

#include "plugin/entry/references.h"
#include "plugin/picture/picture_drawing.h"
#include "plugin/picture/unlock_pixels.h"
#include "sdk/gd_image.h"
#include "sdk/registration.h"

namespace {

// What the host turned out to be, once and for all.
bool IsDesktop = false;
bool IsConsole = false;

constexpr CGBitmapInfo alphaInfoMask = 7;
constexpr std::int32_t pixelBytes = 4;

void detect_host() {
    if (IsDesktop || IsConsole) return;
    REALclassRef const application = REALGetClassRef("Application");
    REALclassRef const webApplication = REALGetClassRef("WebApplication");
    REALclassRef const consoleApplication = REALGetClassRef("ConsoleApplication");
    if (application)
        IsDesktop = true;
    else if (webApplication || consoleApplication)
        IsConsole = true;
}

bool has_alpha_channel(REALpictureStruct* picture) {
    std::uint8_t hasAlpha = 0;
    return REALGetPropValueUInt8(picture, "HasAlphaChannel", &hasAlpha) && hasAlpha;
}

/// With an alpha channel, only premultiplied pixels are taken.
bool is_accepted(std::int32_t format, bool hasAlpha) {
    return format >= formatPremultipliedLast &&
           format <= (hasAlpha ? formatPremultipliedFirst : formatNoneSkipFirst);
}

bool is_true_colour(const gdImageStruct& image) {
    return !image.pixels && image.tpixels && image.trueColor;
}

} // namespace

std::optional<PixelOrder> pixel_order_of(std::int32_t pixelFormat) {
    switch (pixelFormat) {
    case formatPremultipliedLast:
    case formatLast:
    case formatNoneSkipLast:
        return PixelOrder::RGBx;
    case formatPremultipliedFirst:
    case formatFirst:
    case formatNoneSkipFirst:
        return PixelOrder::xRGB;
    case formatGD:
        return PixelOrder::BGRx;
    default:
        return std::nullopt;
    }
}

PictureSize size_of_picture(REALpictureStruct* picture) {
    PictureSize size;
    REALGetPropValueInt32(picture, "Width", &size.width);
    REALGetPropValueInt32(picture, "Height", &size.height);
    return size;
}

void unlock_failed_description(REALpictureStruct* picture) {
    if (rbversion < 2012.0) REALUnlockPictureDescription(picture);
}

PictureEditor::~PictureEditor() {
    reserved = 0;
    release();
}

void PictureEditor::release() {
    if (pixMap) UnlockPixels(std::exchange(pixMap, nullptr));
    if (descriptionLocked && picture) REALUnlockPictureDescription(picture);
    descriptionLocked = false;
    if (!picture) return;
    // The host keeps a rendering of the Picture, which is out of date now.
    if (forWriting) REALPictureClearCache(picture);
    REALUnlockObject(std::exchange(picture, nullptr));
}

void PictureEditor::take(REALpictureStruct* locked) {
    descriptionLocked = true;
    REALLockObject(locked);
    if (picture) REALUnlockObject(picture);
    picture = locked;
    bytesPerPixel = pixelBytes;
    column = 0;
    row = 0;
}

void PictureEditor::next_row() {
    column = 0;
    ++row;
    if (row >= height)
        cursor = baseAddress;
    else if (pixelFormat == formatGD)
        cursor = rowTable[row];
    else
        cursor = static_cast<char*>(baseAddress) + static_cast<std::ptrdiff_t>(row) * rowBytes;
}

signed char PictureEditor::GetPictureEditor(REALpictureStruct* locking, signed char reading,
                                            signed char writing) {
    reserved = 0;
    release();
    if (!locking) return 0;
    forWriting = writing != 0;
    forReading = reading != 0;
    detect_host();
    hasAlpha = has_alpha_channel(locking);
    alphaLocked = false;

    if (!IsConsole) {
        if (REALLockPictureDescription(locking, &description, REALpictureCGBitmapContext))
            return lock_context(locking);
        unlock_failed_description(locking);
        if (!hasAlpha && forReading && !forWriting)
            if (const auto result = read_copy(locking)) return *result;
    }
    return lock_gd_image(locking);
}

/// The description is locked already.
bool PictureEditor::lock_context(REALpictureStruct* locking) {
    IsDesktop = true;
    if (description.type != REALpictureCGBitmapContext || !description.data) {
        REALUnlockPictureDescription(locking);
        return false;
    }
    auto* const context = static_cast<CGContextRef>(description.data);
    const auto format = static_cast<std::int32_t>(
        static_cast<CGBitmapInfo>(CGBitmapContextGetAlphaInfo(context)) & alphaInfoMask);
    // By design such a description stays locked.
    if (!is_accepted(format, hasAlpha)) return false;
    if (CGBitmapContextGetBitsPerPixel(context) != 8 * pixelBytes) {
        REALUnlockPictureDescription(locking);
        return false;
    }
    take(locking);
    alphaLocked = hasAlpha;
    pixelFormat = format;
    rowBytes = static_cast<std::int32_t>(CGBitmapContextGetBytesPerRow(context));
    width = static_cast<std::int32_t>(CGBitmapContextGetWidth(context));
    height = static_cast<std::int32_t>(CGBitmapContextGetHeight(context));
    baseAddress = cursor = CGBitmapContextGetData(context);
    return true;
}

/// Gives access to a 32-bit copy that the host draws; nothing when there is none.
std::optional<signed char> PictureEditor::read_copy(REALpictureStruct* original) {
    // A host that locks no Picture at all locks no copy either.
    if (isReadingCopy_) return std::nullopt;
    const PictureSize size = size_of_picture(original);
    if (size.is_empty()) return std::nullopt;
    const HostObject copy = HostObject::adopt(REALNewPicture(size.width, size.height, 32));
    if (!copy) return std::nullopt;
    auto* const copyPicture = static_cast<REALpictureStruct*>(copy.get());

    if (const HostObject graphics = HostObject::adopt(REALGetPictureGraphics(copyPicture));
        graphics &&
        !draw_picture(graphics.get(), original, size.width, size.height, size.width, size.height))
        OwnCopy(copyPicture, original, 0, 0, size.width, size.height, 0, 0, size.width,
                size.height);

    isReadingCopy_ = true;
    const signed char result = GetPictureEditor(copyPicture, forReading, 0);
    isReadingCopy_ = false;
    return result;
}

bool PictureEditor::lock_gd_image(REALpictureStruct* locking) {
    if (IsDesktop) return false;
    if (!REALLockPictureDescription(locking, &description, REALpictureGDImage)) {
        unlock_failed_description(locking);
        return false;
    }
    IsConsole = true;
    const auto* const image = static_cast<const gdImageStruct*>(description.data);
    if (description.type != REALpictureGDImage || !image || !is_true_colour(*image)) {
        REALUnlockPictureDescription(locking);
        return false;
    }
    take(locking);
    pixelFormat = formatGD;
    width = description.width;
    height = description.height;
    rowBytes = width * pixelBytes;
    rowTable = image->tpixels;
    baseAddress = cursor = rowTable[0];
    return true;
}
