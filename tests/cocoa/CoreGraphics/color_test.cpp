#include "cocoa/CoreGraphics/support.h"

#include <lcms2.h>

#include <cmath>
#include <cstdio>
#include <string>
#include <unistd.h>

using namespace cgtest;

namespace {

using Data = Made<CFDataRef>;
using Color = Made<CGColorRef>;

std::vector<std::uint8_t> bytesOf(cmsHPROFILE profile) {
    cmsUInt32Number size = 0;
    cmsSaveProfileToMem(profile, nullptr, &size);
    std::vector<std::uint8_t> bytes(size);
    cmsSaveProfileToMem(profile, bytes.data(), &size);
    cmsCloseProfile(profile);
    return bytes;
}

/// The primaries of sRGB with another tone curve: only tones are converted.
std::vector<std::uint8_t> profileOfGamma(double gamma) {
    const cmsCIExyY whitePoint = {0.3127, 0.3290, 1};
    const cmsCIExyYTRIPLE primaries = {{0.64, 0.33, 1}, {0.30, 0.60, 1}, {0.15, 0.06, 1}};
    cmsToneCurve* curve = cmsBuildGamma(nullptr, gamma);
    cmsToneCurve* curves[] = {curve, curve, curve};
    cmsHPROFILE profile = cmsCreateRGBProfile(&whitePoint, &primaries, curves);
    cmsFreeToneCurve(curve);
    return bytesOf(profile);
}

std::vector<std::uint8_t> linearGrayProfile() {
    cmsToneCurve* curve = cmsBuildGamma(nullptr, 1);
    cmsHPROFILE profile = cmsCreateGrayProfile(cmsD50_xyY(), curve);
    cmsFreeToneCurve(curve);
    return bytesOf(profile);
}

/// The curve of sRGB, from its definition.
int encoded(double light) {
    const double value =
        light <= 0.0031308 ? 12.92 * light : 1.055 * std::pow(light, 1 / 2.4) - 0.055;
    return static_cast<int>(std::lround(value * 255));
}

Space spaceOfProfile(const std::vector<std::uint8_t>& bytes) {
    const Data data = CFDataCreate(nullptr, bytes.data(), static_cast<CFIndex>(bytes.size()));
    return CGColorSpaceCreateWithICCProfile(data);
}

TEST(ColorSpace, KnowsItsModelAndItsNumberOfComponents) {
    EXPECT_EQ(CGColorSpaceGetModel(deviceGray()), kCGColorSpaceModelMonochrome);
    EXPECT_EQ(CGColorSpaceGetNumberOfComponents(deviceGray()), 1U);
    EXPECT_EQ(CGColorSpaceGetModel(deviceRGB()), kCGColorSpaceModelRGB);
    EXPECT_EQ(CGColorSpaceGetNumberOfComponents(deviceRGB()), 3U);
    const Space cmyk = CGColorSpaceCreateDeviceCMYK();
    EXPECT_EQ(CGColorSpaceGetModel(cmyk), kCGColorSpaceModelCMYK);
    EXPECT_EQ(CGColorSpaceGetNumberOfComponents(cmyk), 4U);
}

TEST(ColorSpace, OfANameKeepsTheName) {
    for (const CFStringRef name : {kCGColorSpaceGenericGray, kCGColorSpaceGenericRGB,
                                   kCGColorSpaceGenericCMYK, kCGColorSpaceSRGB}) {
        const Space space = CGColorSpaceCreateWithName(name);
        const Made<CFStringRef> copy = CGColorSpaceCopyName(space);
        ASSERT_NE(static_cast<CFStringRef>(copy), nullptr);
        EXPECT_TRUE(CFEqual(copy, name));
    }
    EXPECT_EQ(CGColorSpaceCreateWithName(CFSTR("Nowhere")), nullptr);
    EXPECT_EQ(CGColorSpaceCreateWithName(nullptr), nullptr);
    EXPECT_EQ(CGColorSpaceCopyName(deviceRGB()), nullptr);
}

TEST(ColorSpace, EqualsAnotherOfTheSameKind) {
    EXPECT_TRUE(CFEqual(deviceRGB(), deviceRGB()));
    EXPECT_EQ(CFHash(deviceRGB()), CFHash(deviceRGB()));
    EXPECT_FALSE(CFEqual(deviceRGB(), deviceGray()));
    EXPECT_FALSE(CFEqual(deviceRGB(), Space(CGColorSpaceCreateWithName(kCGColorSpaceSRGB))));
    const auto profile = profileOfGamma(1.8);
    EXPECT_TRUE(CFEqual(spaceOfProfile(profile), spaceOfProfile(profile)));
    EXPECT_FALSE(CFEqual(spaceOfProfile(profile), spaceOfProfile(profileOfGamma(2.6))));
}

TEST(ColorSpace, IsOfItsOwnType) {
    EXPECT_EQ(CFGetTypeID(deviceRGB()), CGColorSpaceGetTypeID());
    EXPECT_NE(CGColorSpaceGetTypeID(), CGColorGetTypeID());
}

TEST(ColorSpace, OfAProfileGivesTheProfileBack) {
    const auto profile = profileOfGamma(1.8);
    const Space space = spaceOfProfile(profile);
    EXPECT_EQ(CGColorSpaceGetModel(space), kCGColorSpaceModelRGB);
    const Data copy = CGColorSpaceCopyICCProfile(space);
    ASSERT_EQ(static_cast<std::size_t>(CFDataGetLength(copy)), profile.size());
    EXPECT_TRUE(std::equal(profile.begin(), profile.end(), CFDataGetBytePtr(copy)));
    EXPECT_EQ(CGColorSpaceCopyICCProfile(deviceRGB()), nullptr);
}

TEST(ColorSpace, IsNotMadeOfGarbage) {
    auto broken = profileOfGamma(1.8);
    EXPECT_NE(static_cast<CGColorSpaceRef>(spaceOfProfile(broken)), nullptr);
    broken[36] = 'x'; // the signature of all profiles
    EXPECT_EQ(static_cast<CGColorSpaceRef>(spaceOfProfile(broken)), nullptr);
    EXPECT_EQ(static_cast<CGColorSpaceRef>(spaceOfProfile({})), nullptr);
    EXPECT_EQ(CGColorSpaceCreateWithICCProfile(nullptr), nullptr);
}

TEST(ColorSpace, OfAProfileThatDoesNotFitIsTheAlternate) {
    const Provider rgb = provide(profileOfGamma(1.8));
    const Space own = CGColorSpaceCreateICCBased(3, nullptr, rgb, nullptr);
    EXPECT_EQ(CGColorSpaceGetModel(own), kCGColorSpaceModelRGB);
    const Space gray = deviceGray();
    const Space alternate = CGColorSpaceCreateICCBased(1, nullptr, rgb, gray);
    EXPECT_EQ(static_cast<CGColorSpaceRef>(alternate), static_cast<CGColorSpaceRef>(gray));
    EXPECT_EQ(CFGetRetainCount(gray), 2);
    EXPECT_EQ(CGColorSpaceCreateICCBased(1, nullptr, rgb, nullptr), nullptr);
    EXPECT_EQ(CGColorSpaceCreateICCBased(4, nullptr, rgb, gray), nullptr);
}

TEST(Color, KeepsComponentsAndAlpha) {
    const CGFloat components[] = {0.25, 0.5, 0.75, 0.5};
    const Space space = deviceRGB();
    const Color color = CGColorCreate(space, components);
    EXPECT_EQ(CGColorGetNumberOfComponents(color), 4U);
    EXPECT_EQ(CGColorGetAlpha(color), CGFloat(0.5));
    EXPECT_EQ(CGColorGetComponents(color)[2], CGFloat(0.75));
    EXPECT_EQ(CGColorGetColorSpace(color), static_cast<CGColorSpaceRef>(space));
    EXPECT_EQ(CFGetRetainCount(space), 2);
    EXPECT_EQ(CFGetTypeID(color), CGColorGetTypeID());
}

TEST(Color, IsNotMadeWithoutSpaceOrComponents) {
    const CGFloat components[] = {0, 0, 0, 0};
    EXPECT_EQ(CGColorCreate(nullptr, components), nullptr);
    EXPECT_EQ(CGColorCreate(deviceRGB(), nullptr), nullptr);
}

TEST(Color, EqualsAnotherOfTheSameComponentsInAnEqualSpace) {
    const Color color = CGColorCreateGenericRGB(0.25, 0.5, 0.75, 1);
    const Color same = CGColorCreateGenericRGB(0.25, 0.5, 0.75, 1);
    const Color faint = CGColorCreateCopyWithAlpha(color, 0.5);
    EXPECT_TRUE(CGColorEqualToColor(color, same));
    EXPECT_TRUE(CFEqual(color, same));
    EXPECT_EQ(CFHash(color), CFHash(same));
    EXPECT_FALSE(CGColorEqualToColor(color, faint));
    EXPECT_EQ(CGColorGetAlpha(faint), CGFloat(0.5));
    EXPECT_FALSE(CGColorEqualToColor(color, nullptr));
    EXPECT_TRUE(CGColorEqualToColor(nullptr, nullptr));
}

TEST(FillColor, OfAProfileIsConverted) {
    const Space linear = spaceOfProfile(profileOfGamma(1));
    const CGFloat components[] = {0.5, 0.1, 1, 1};
    const Color color = CGColorCreate(linear, components);
    Bitmap bitmap(1, 1);
    CGContextSetFillColorWithColor(bitmap, color);
    CGContextFillRect(bitmap, bitmap.bounds());
    EXPECT_THAT(bitmap.at(0, 0), IsNear(Pixel{encoded(0.5), encoded(0.1), 255}, 1));
}

TEST(FillColor, OfInkIsWhatTheInksLetThrough) {
    Bitmap bitmap(1, 1);
    CGContextSetCMYKFillColor(bitmap, 1, 0.5, 0, 0.2, 1);
    CGContextFillRect(bitmap, bitmap.bounds());
    // (1 - 0.5) (1 - 0.2) = 0.4
    EXPECT_EQ(bitmap.at(0, 0), (Pixel{0, 102, 204}));
}

TEST(FillColor, OutsideItsRangeIsCutToIt) {
    Bitmap bitmap(1, 1);
    CGContextSetRGBFillColor(bitmap, 2, -1, std::nan(""), 7);
    CGContextFillRect(bitmap, bitmap.bounds());
    EXPECT_EQ(bitmap.at(0, 0), red);
}

struct ProfiledImage : testing::TestWithParam<int> {
    int bits() const { return GetParam(); }

    /// One pixel of samples of 0 to 255.
    Image image(CGColorSpaceRef space, CGBitmapInfo alpha, const std::vector<int>& samples) {
        std::vector<std::uint8_t> bytes;
        for (const int sample : samples) {
            for (int i = 0; i < bits(); i += 8)
                bytes.push_back(static_cast<std::uint8_t>(sample));
        }
        const std::size_t size = bytes.size();
        return CGImageCreate(1, 1, bits(), size * 8, size, space, alpha, provide(std::move(bytes)),
                             nullptr, false, kCGRenderingIntentDefault);
    }
};

TEST_P(ProfiledImage, IsConvertedWhenDrawn) {
    Bitmap bitmap(1, 1);
    CGContextDrawImage(bitmap, bitmap.bounds(),
                       image(spaceOfProfile(profileOfGamma(1)), kCGImageAlphaNone, {128, 26, 255}));
    EXPECT_THAT(bitmap.at(0, 0), IsNear(Pixel{encoded(128 / 255.0), encoded(26 / 255.0), 255}, 1));
}

TEST_P(ProfiledImage, OfGrayIsConverted) {
    Bitmap bitmap(1, 1);
    CGContextDrawImage(bitmap, bitmap.bounds(),
                       image(spaceOfProfile(linearGrayProfile()), kCGImageAlphaNone, {51}));
    const int tone = encoded(0.2);
    EXPECT_THAT(bitmap.at(0, 0), IsNear(Pixel{tone, tone, tone}, 1));
}

TEST_P(ProfiledImage, IsConvertedBeforeItIsMultipliedWithAlpha) {
    const Space linear = spaceOfProfile(profileOfGamma(1));
    const double half = 128 / 255.0;
    const int tone = static_cast<int>(std::lround(encoded(half) * half));
    Bitmap straight(1, 1);
    CGContextDrawImage(straight, straight.bounds(),
                       image(linear, kCGImageAlphaLast, {128, 0, 255, 128}));
    EXPECT_THAT(straight.at(0, 0), IsNear(Pixel{tone, 0, 128, 128}, 1));
    Bitmap multiplied(1, 1);
    CGContextDrawImage(multiplied, multiplied.bounds(),
                       image(linear, kCGImageAlphaPremultipliedLast, {64, 0, 128, 128}));
    EXPECT_THAT(multiplied.at(0, 0), IsNear(Pixel{tone, 0, 128, 128}, 1));
}

TEST_P(ProfiledImage, InABitmapOfTheSameProfileKeepsItsNumbers) {
    const Space linear = spaceOfProfile(profileOfGamma(1));
    std::array<std::uint8_t, 4> memory{};
    const Context context =
        CGBitmapContextCreate(memory.data(), 1, 1, 8, 4, linear, kCGImageAlphaNoneSkipLast);
    CGContextDrawImage(context, CGRectMake(0, 0, 1, 1),
                       image(linear, kCGImageAlphaNone, {128, 26, 255}));
    EXPECT_EQ(memory[0], 128);
    EXPECT_EQ(memory[1], 26);
    EXPECT_EQ(memory[2], 255);
}

INSTANTIATE_TEST_SUITE_P(Samples, ProfiledImage, testing::Values(8, 16),
                         testing::PrintToStringParamName());

struct ProviderOfFile : testing::Test {
    std::string path = testing::TempDir() + "provider_" + std::to_string(getpid());

    ProviderOfFile() {
        std::FILE* file = std::fopen(path.c_str(), "wb");
        std::fputs("abc", file);
        std::fclose(file);
    }
    ~ProviderOfFile() override { std::remove(path.c_str()); }
};

TEST_F(ProviderOfFile, ReadsIt) {
    const Made<CFURLRef> url = CFURLCreateFromFileSystemRepresentation(
        nullptr, reinterpret_cast<const UInt8*>(path.data()), static_cast<CFIndex>(path.size()),
        false);
    for (const CGDataProviderRef made :
         {CGDataProviderCreateWithURL(url), CGDataProviderCreateWithFilename(path.c_str())}) {
        const Provider provider = made;
        const Data data = CGDataProviderCopyData(provider);
        ASSERT_EQ(CFDataGetLength(data), 3);
        EXPECT_EQ(CFDataGetBytePtr(data)[2], 'c');
    }
}

TEST_F(ProviderOfFile, IsNullForAFileThatIsMissingOrAFolder) {
    EXPECT_EQ(CGDataProviderCreateWithFilename((path + "x").c_str()), nullptr);
    EXPECT_EQ(CGDataProviderCreateWithFilename("/"), nullptr);
    EXPECT_EQ(CGDataProviderCreateWithFilename(nullptr), nullptr);
    EXPECT_EQ(CGDataProviderCreateWithURL(nullptr), nullptr);
}

struct Released {
    void* info = nullptr;
    const void* data = nullptr;
    std::size_t size = 0;
    int times = 0;
};
Released released;

TEST(Provider, SaysOnceThatItsMemoryIsNotNeededAnyMore) {
    const char memory[] = "abc";
    CGDataProviderRef provider = CGDataProviderCreateWithData(
        &released, memory, 3, [](void* info, const void* data, std::size_t size) {
            released = {info, data, size, released.times + 1};
        });
    CFRetain(provider);
    CFRelease(provider);
    EXPECT_EQ(released.times, 0);
    CGDataProviderRelease(provider);
    EXPECT_EQ(released.times, 1);
    EXPECT_EQ(released.info, &released);
    EXPECT_EQ(released.data, memory);
    EXPECT_EQ(released.size, 3U);
}

TEST(Provider, OfDataRetainsIt) {
    const Data data = CFDataCreate(nullptr, reinterpret_cast<const UInt8*>("abc"), 3);
    {
        const Provider provider = CGDataProviderCreateWithCFData(data);
        EXPECT_EQ(CFGetRetainCount(data), 2);
    }
    EXPECT_EQ(CFGetRetainCount(data), 1);
    EXPECT_EQ(CGDataProviderCreateWithCFData(nullptr), nullptr);
    EXPECT_EQ(CGDataProviderCreateWithData(nullptr, nullptr, 1, nullptr), nullptr);
}

} // namespace
