#include "support.h"

#include <ApplicationServices/ApplicationServices.h>

#include <array>
#include <limits>

namespace {

template <typename Ref>
using Owned = cocoa::Retained<Ref>;

Owned<CGContextRef> bitmap(CGFloat width, CGFloat height) {
    const auto space = Owned<CGColorSpaceRef>::adopt(CGColorSpaceCreateDeviceRGB());
    return Owned<CGContextRef>::adopt(
        CGBitmapContextCreate(nullptr, static_cast<size_t>(width), static_cast<size_t>(height), 8,
                              0, space.get(), kCGImageAlphaPremultipliedLast));
}

using Pixel = std::array<int, 4>;

/// Row 0 is the top row.
Pixel pixel(CGContextRef context, size_t x, size_t y) {
    const auto* const data = static_cast<const UInt8*>(CGBitmapContextGetData(context)) +
                             y * CGBitmapContextGetBytesPerRow(context) + x * 4;
    return {data[0], data[1], data[2], data[3]};
}

constexpr Pixel red{255, 0, 0, 255};
constexpr Pixel blue{0, 0, 255, 255};
constexpr Pixel nothing{0, 0, 0, 0};

class GraphicsObjects : public InPool {};

TEST_F(GraphicsObjects, TellTheirTypeAndAreRetainedOnce) {
    const auto context = bitmap(2, 2);
    const auto image = Owned<CGImageRef>::adopt(CGBitmapContextCreateImage(context.get()));
    const auto space = Owned<CGColorSpaceRef>::adopt(CGColorSpaceCreateDeviceGray());
    const auto color = Owned<CGColorRef>::adopt(CGColorCreateGenericGray(0.5, 1));
    const auto layer = Owned<CGLayerRef>::adopt(
        CGLayerCreateWithContext(context.get(), CGSizeMake(1, 1), nullptr));
    NSMutableData* const data = [NSMutableData data];
    const auto provider =
        Owned<CGDataProviderRef>::adopt(CGDataProviderCreateWithCFData((CFDataRef)data));
    const auto consumer =
        Owned<CGDataConsumerRef>::adopt(CGDataConsumerCreateWithCFData((CFMutableDataRef)data));
    const std::pair<CFTypeRef, CFTypeID> objects[] = {
        {context.get(), CGContextGetTypeID()},       {image.get(), CGImageGetTypeID()},
        {space.get(), CGColorSpaceGetTypeID()},      {color.get(), CGColorGetTypeID()},
        {layer.get(), CGLayerGetTypeID()},           {provider.get(), CGDataProviderGetTypeID()},
        {consumer.get(), CGDataConsumerGetTypeID()},
    };
    for (const auto& [object, type] : objects) {
        ASSERT_NE(object, nullptr) << type;
        EXPECT_EQ(CFGetTypeID(object), type);
        EXPECT_TRUE([(id)object respondsToSelector:@selector(_cfTypeID)]);
        EXPECT_EQ(CFGetRetainCount(object), 1) << type;
    }
}

class Consumers : public InPool {};

TEST_F(Consumers, KeepTheirDataAndLetItGo) {
    NSMutableData* const data = [[NSMutableData alloc] init];
    CGDataConsumerRef const consumer = CGDataConsumerCreateWithCFData((CFMutableDataRef)data);
    EXPECT_EQ(CFGetRetainCount(data), 2);
    CGDataConsumerRetain(consumer);
    CGDataConsumerRelease(consumer);
    EXPECT_EQ(CFGetRetainCount(data), 2);
    CGDataConsumerRelease(consumer);
    EXPECT_EQ(CFGetRetainCount(data), 1);
    [data release];
}

TEST_F(Consumers, TellTheirOwnerWhenTheyGo) {
    int released = 0;
    CGDataConsumerCallbacks callbacks = {[](void*, const void*, size_t count) { return count; },
                                         [](void* info) { ++*static_cast<int*>(info); }};
    CGDataConsumerRef const consumer = CGDataConsumerCreate(&released, &callbacks);
    EXPECT_EQ(released, 0);
    CGDataConsumerRelease(consumer);
    EXPECT_EQ(released, 1);
}

TEST_F(Consumers, AreNotMadeWithoutAPlaceForTheBytes) {
    EXPECT_EQ(CGDataConsumerCreate(nullptr, nullptr), nullptr);
    const CGDataConsumerCallbacks callbacks = {nullptr, nullptr};
    EXPECT_EQ(CGDataConsumerCreate(nullptr, &callbacks), nullptr);
    EXPECT_EQ(CGDataConsumerCreateWithCFData(nullptr), nullptr);
    CGDataConsumerRelease(nullptr);
}

class Layers : public InPool {
protected:
    /// 2 by 1: red on the left, nothing on the right.
    Owned<CGLayerRef> redAndNothing(CGContextRef context) {
        auto layer =
            Owned<CGLayerRef>::adopt(CGLayerCreateWithContext(context, CGSizeMake(2, 1), nullptr));
        CGContextSetRGBFillColor(CGLayerGetContext(layer.get()), 1, 0, 0, 1);
        CGContextFillRect(CGLayerGetContext(layer.get()), CGRectMake(0, 0, 1, 1));
        return layer;
    }
};

TEST_F(Layers, AreDrawnAtAPoint) {
    const auto context = bitmap(3, 2);
    CGContextSetRGBFillColor(context.get(), 0, 0, 1, 1);
    CGContextFillRect(context.get(), CGRectMake(2, 1, 1, 1));
    const auto layer = redAndNothing(context.get());
    EXPECT_EQ(pixel(context.get(), 0, 1), nothing) << "a layer shows nothing before it is drawn";
    CGContextDrawLayerAtPoint(context.get(), CGPointMake(1, 1), layer.get());
    EXPECT_EQ(pixel(context.get(), 0, 0), nothing);
    EXPECT_EQ(pixel(context.get(), 1, 0), red);
    EXPECT_EQ(pixel(context.get(), 2, 0), blue) << "shows through";
    EXPECT_EQ(pixel(context.get(), 1, 1), nothing);
}

TEST_F(Layers, AreScaledToARectangle) {
    const auto context = bitmap(4, 2);
    CGContextSetInterpolationQuality(context.get(), kCGInterpolationNone);
    CGContextDrawLayerInRect(context.get(), CGRectMake(0, 0, 4, 2),
                             redAndNothing(context.get()).get());
    for (size_t y = 0; y < 2; ++y) {
        EXPECT_EQ(pixel(context.get(), 1, y), red);
        EXPECT_EQ(pixel(context.get(), 2, y), nothing);
    }
}

TEST_F(Layers, CutOffWhatLiesBeyondAFraction) {
    const auto context = bitmap(3, 3);
    const auto layer = Owned<CGLayerRef>::adopt(
        CGLayerCreateWithContext(context.get(), CGSizeMake(1.5, 1), nullptr));
    EXPECT_EQ(CGLayerGetSize(layer.get()).width, CGFloat(1.5));
    CGContextRef const drawing = CGLayerGetContext(layer.get());
    CGContextSetRGBFillColor(drawing, 1, 0, 0, 1);
    CGContextFillRect(drawing, CGRectMake(0, 0, 100, 100));
    EXPECT_EQ(CGBitmapContextGetWidth(drawing), 2U);
    EXPECT_EQ(pixel(drawing, 0, 0), red);
    EXPECT_NEAR(pixel(drawing, 1, 0)[3], 128, 1) << "half of the pixel is covered";
}

TEST_F(Layers, AreNotMadeWithoutAContextOrASize) {
    const auto context = bitmap(1, 1);
    EXPECT_EQ(CGLayerCreateWithContext(nullptr, CGSizeMake(1, 1), nullptr), nullptr);
    for (const CGFloat wrong :
         {CGFloat(0), CGFloat(-1), CGFloat(1e10), std::numeric_limits<CGFloat>::infinity(),
          std::numeric_limits<CGFloat>::quiet_NaN()}) {
        EXPECT_EQ(CGLayerCreateWithContext(context.get(), CGSizeMake(wrong, 1), nullptr), nullptr);
        EXPECT_EQ(CGLayerCreateWithContext(context.get(), CGSizeMake(1, wrong), nullptr), nullptr);
    }
    EXPECT_EQ(CGLayerGetContext(nullptr), nullptr);
    EXPECT_EQ(CGLayerGetSize(nullptr).width, 0);
    CGContextDrawLayerAtPoint(context.get(), CGPointMake(0, 0), nullptr);
    CGLayerRelease(nullptr);
}

} // namespace
