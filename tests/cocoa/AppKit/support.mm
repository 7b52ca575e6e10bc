#include "support.h"

namespace appkit_test {

AppKitTest::AppKitTest()
    : pool_([[NSAutoreleasePool alloc] init]) {}

AppKitTest::~AppKitTest() {
    [NSGraphicsContext setCurrentContext:nil];
    [pool_ drain];
}

NSData* toData(const ByteVector& bytes) {
    return [NSData dataWithBytes:bytes.data() length:bytes.size()];
}

ByteVector toBytes(NSData* data) {
    const auto* first = static_cast<const std::uint8_t*>([data bytes]);
    return {first, first + [data length]};
}

void PrintTo(const Pixel& pixel, std::ostream* stream) {
    *stream << "{" << pixel.red << ", " << pixel.green << ", " << pixel.blue << ", " << pixel.alpha
            << "}";
}

NSBitmapImageRep* makeBitmap(const BitmapRecipe& recipe, unsigned char** planes) {
    return [[[NSBitmapImageRep alloc] initWithBitmapDataPlanes:planes
                                                    pixelsWide:recipe.width
                                                    pixelsHigh:recipe.height
                                                 bitsPerSample:recipe.bits
                                               samplesPerPixel:recipe.samples
                                                      hasAlpha:recipe.alpha
                                                      isPlanar:recipe.planar
                                                colorSpaceName:recipe.space
                                                  bitmapFormat:recipe.format
                                                   bytesPerRow:recipe.rowBytes
                                                  bitsPerPixel:recipe.pixelBits] autorelease];
}

NSBitmapImageRep* makeBitmap(const BitmapRecipe& recipe, const ByteVector& rows) {
    NSBitmapImageRep* bitmap = makeBitmap(recipe);
    EXPECT_EQ([bitmap bytesPerPlane] * [bitmap numberOfPlanes],
              static_cast<NSInteger>(rows.size()));
    std::copy(rows.begin(), rows.end(), [bitmap bitmapData]);
    return bitmap;
}

NSBitmapImageRep* makeRGBA(NSInteger width, NSInteger height, const std::vector<Pixel>& pixels) {
    ByteVector rows;
    for (const Pixel& pixel : pixels)
        for (const int sample : {pixel.red, pixel.green, pixel.blue, pixel.alpha})
            rows.push_back(static_cast<std::uint8_t>(sample));
    return makeBitmap({.width = width, .height = height, .samples = 4, .alpha = true}, rows);
}

NSBitmapImageRep* fourColors() { return makeRGBA(2, 2, {red, green, blue, white}); }

NSImage* makeImage(NSImageRep* rep) {
    NSImage* image = [[[NSImage alloc] initWithSize:[rep size]] autorelease];
    [image addRepresentation:rep];
    return image;
}

ByteVector rowsOf(NSBitmapImageRep* bitmap) {
    const auto row =
        static_cast<std::size_t>(([bitmap pixelsWide] * [bitmap bitsPerPixel] + 7) / 8);
    ByteVector rows;
    const unsigned char* start = [bitmap bitmapData];
    for (NSInteger y = 0; start && y < [bitmap pixelsHigh]; ++y, start += [bitmap bytesPerRow])
        rows.insert(rows.end(), start, start + row);
    return rows;
}

Pixel pixelAt(NSBitmapImageRep* bitmap, NSInteger x, NSInteger y) {
    NSUInteger samples[5] = {};
    [bitmap getPixel:samples atX:x y:y];
    const auto at = [&samples](NSInteger index) { return static_cast<int>(samples[index]); };
    const NSInteger count = [bitmap samplesPerPixel];
    const int alpha = [bitmap hasAlpha] ? at(count - 1) : 255;
    if (count < 3) return {at(0), at(0), at(0), alpha};
    return {at(0), at(1), at(2), alpha};
}

std::vector<Pixel> pixelsOf(NSBitmapImageRep* bitmap) {
    std::vector<Pixel> pixels;
    for (NSInteger y = 0; y < [bitmap pixelsHigh]; ++y)
        for (NSInteger x = 0; x < [bitmap pixelsWide]; ++x)
            pixels.push_back(pixelAt(bitmap, x, y));
    return pixels;
}

NSBitmapImageRep* bitmapOf(NSImage* image) {
    NSArray* representations = [image representations];
    EXPECT_EQ(1U, [representations count]);
    id rep = [representations count] ? [representations objectAtIndex:0] : nil;
    EXPECT_TRUE([rep isKindOfClass:[NSBitmapImageRep class]]);
    return rep;
}

NSBitmapImageRep* drawing(CGFloat width, CGFloat height, const std::function<void()>& draw) {
    NSImage* image = [[[NSImage alloc] initWithSize:NSMakeSize(width, height)] autorelease];
    [image lockFocus];
    draw();
    [image unlockFocus];
    return bitmapOf(image);
}

NSString* raisedBy(const std::function<void()>& work) {
    @try {
        work();
    } @catch (NSException* exception) {
        return [exception name];
    }
    return nil;
}

} // namespace appkit_test
