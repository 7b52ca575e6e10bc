#pragma once

/// What the tests of AppKit share.

#include "cocoa/codecs/support.h"

#import <AppKit/AppKit.h>

#include <gmock/gmock.h>

#include <functional>
#include <ostream>

namespace appkit_test {

using codecs_test::ByteVector;

/// Every test has a pool of its own, and ends without a current context.
class AppKitTest : public testing::Test {
protected:
    AppKitTest();
    ~AppKitTest() override;

private:
    NSAutoreleasePool* pool_;
};

NSData* toData(const ByteVector& bytes);
ByteVector toBytes(NSData* data); ///< nothing for nil

struct Pixel {
    int red;
    int green;
    int blue;
    int alpha = 255;

    friend bool operator==(const Pixel&, const Pixel&) = default;
};
void PrintTo(const Pixel& pixel, std::ostream* stream);

constexpr Pixel red{255, 0, 0};
constexpr Pixel green{0, 255, 0};
constexpr Pixel blue{0, 0, 255};
constexpr Pixel white{255, 255, 255};
constexpr Pixel black{0, 0, 0};
constexpr Pixel nothing{0, 0, 0, 0};

/// Every channel is as near as that.
MATCHER_P2(IsNear, expected, tolerance, "") {
    const auto near = [this](int a, int b) { return std::abs(a - b) <= tolerance; };
    return near(arg.red, expected.red) && near(arg.green, expected.green) &&
           near(arg.blue, expected.blue) && near(arg.alpha, expected.alpha);
}

struct BitmapRecipe {
    NSInteger width = 1;
    NSInteger height = 1;
    NSInteger bits = 8;
    NSInteger samples = 3;
    bool alpha = false;
    bool planar = false;
    NSString* space = NSCalibratedRGBColorSpace;
    NSBitmapFormat format = 0;
    NSInteger rowBytes = 0;
    NSInteger pixelBits = 0;
};

/// Autoreleased; nil where AppKit gives nil.
NSBitmapImageRep* makeBitmap(const BitmapRecipe& recipe, unsigned char** planes = nullptr);
/// With rows as given.
NSBitmapImageRep* makeBitmap(const BitmapRecipe& recipe, const ByteVector& rows);
/// 8-bit premultiplied RGBA.
NSBitmapImageRep* makeRGBA(NSInteger width, NSInteger height, const std::vector<Pixel>& pixels);
/// Red, green; blue, white.
NSBitmapImageRep* fourColors();
NSImage* makeImage(NSImageRep* rep);

/// All bytes of a meshed bitmap, row by row without padding.
ByteVector rowsOf(NSBitmapImageRep* bitmap);
/// Of an 8-bit bitmap of white, RGB or RGBA with alpha last; grey in all three colours.
Pixel pixelAt(NSBitmapImageRep* bitmap, NSInteger x, NSInteger y);
/// All of them, from the top.
std::vector<Pixel> pixelsOf(NSBitmapImageRep* bitmap);

/// The only representation of an image, as a bitmap.
NSBitmapImageRep* bitmapOf(NSImage* image);

/// What is drawn with the focus locked on a new image.
NSBitmapImageRep* drawing(CGFloat width, CGFloat height, const std::function<void()>& draw);

/// The name of the NSException that is raised; nil for none.
NSString* raisedBy(const std::function<void()>& work);

} // namespace appkit_test

#define EXPECT_EQUAL_STRINGS(expected, actual)                                                     \
    EXPECT_STREQ([(expected) UTF8String], [(actual) UTF8String])
