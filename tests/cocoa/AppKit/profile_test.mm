/// Colour profiles on their way through bitmaps.

#include "files.h"

#include "cocoa/codecs/png_file.h"

#include <lcms2.h>

namespace appkit_test {
namespace {

using testing::ElementsAre;

class Profile : public AppKitTest {};

ByteVector saved(cmsHPROFILE profile) {
    cmsUInt32Number size = 0;
    cmsSaveProfileToMem(profile, nullptr, &size);
    ByteVector bytes(size);
    cmsSaveProfileToMem(profile, bytes.data(), &size);
    cmsCloseProfile(profile);
    return bytes;
}

/// Red and green have changed places; everything else is sRGB.
ByteVector exchangedProfile() {
    const cmsCIExyY white{0.3127, 0.3290, 1};
    const cmsCIExyYTRIPLE primaries{{0.30, 0.60, 1}, {0.64, 0.33, 1}, {0.15, 0.06, 1}};
    cmsToneCurve* curve = cmsBuildGamma(nullptr, 2.2);
    cmsToneCurve* curves[] = {curve, curve, curve};
    const ByteVector bytes = saved(cmsCreateRGBProfile(&white, &primaries, curves));
    cmsFreeToneCurve(curve);
    return bytes;
}

ByteVector grayProfile() {
    const cmsCIExyY white{0.3127, 0.3290, 1};
    cmsToneCurve* curve = cmsBuildGamma(nullptr, 1.8);
    const ByteVector bytes = saved(cmsCreateGrayProfile(&white, curve));
    cmsFreeToneCurve(curve);
    return bytes;
}

/// One red pixel, as the profile sees it.
NSBitmapImageRep* taggedBitmap(const ByteVector& profile) {
    NSDictionary* properties = [NSDictionary dictionaryWithObject:toData(profile)
                                                           forKey:NSImageColorSyncProfileData];
    NSData* data = [makeBitmap({}, {255, 0, 0}) representationUsingType:NSPNGFileType
                                                             properties:properties];
    return [NSBitmapImageRep imageRepWithData:data];
}

TEST_F(Profile, OfAFileIsTheBitmapsSpace) {
    NSBitmapImageRep* bitmap = taggedBitmap(exchangedProfile());
    EXPECT_EQ(exchangedProfile().size(), [[[bitmap colorSpace] ICCProfileData] length]);
    EXPECT_EQ([bitmap colorSpace], [bitmap colorSpace]);
    EXPECT_EQUAL_STRINGS(NSCalibratedRGBColorSpace, [bitmap colorSpaceName]);
    EXPECT_TRUE([[bitmap valueForProperty:NSImageColorSyncProfileData]
        isEqual:[[bitmap colorSpace] ICCProfileData]]);
}

TEST_F(Profile, ConvertsColoursWhenDrawn) {
    NSBitmapImageRep* drawn = drawing(1, 1, [] {
        [makeImage(taggedBitmap(exchangedProfile())) compositeToPoint:NSZeroPoint
                                                            operation:NSCompositeCopy];
    });
    EXPECT_THAT(pixelAt(drawn, 0, 0), IsNear(green, 12)); // curves of sRGB are not quite 2.2
}

TEST_F(Profile, IsWrittenAgain) {
    NSBitmapImageRep* bitmap = taggedBitmap(exchangedProfile());
    for (const NSBitmapImageFileType type : {NSPNGFileType, NSTIFFFileType, NSJPEGFileType}) {
        NSBitmapImageRep* back = [NSBitmapImageRep
            imageRepWithData:[bitmap representationUsingType:type properties:nil]];
        EXPECT_TRUE(
            [[[back colorSpace] ICCProfileData] isEqual:[[bitmap colorSpace] ICCProfileData]])
            << type;
    }
}

TEST_F(Profile, OfAnotherModelIsNotWritten) {
    NSBitmapImageRep* bitmap = taggedBitmap(grayProfile());
    EXPECT_EQ([NSColorSpace genericRGBColorSpace], [bitmap colorSpace]);
    EXPECT_EQ(nil, [bitmap valueForProperty:NSImageColorSyncProfileData]);
}

TEST_F(Profile, ThatIsNoneIsNotWritten) {
    EXPECT_EQ([NSColorSpace genericRGBColorSpace], [taggedBitmap(ByteVector(200, 3)) colorSpace]);
}

TEST_F(Profile, MakesAColourSpaceObject) {
    NSData* data = toData(grayProfile());
    NSColorSpace* space = [[[NSColorSpace alloc] initWithICCProfileData:data] autorelease];
    EXPECT_EQ(NSGrayColorSpaceModel, [space colorSpaceModel]);
    EXPECT_EQ(1, [space numberOfColorComponents]);
    EXPECT_TRUE([data isEqual:[space ICCProfileData]]);
}

TEST_F(Profile, OfACGImageIsTheBitmapsSpace) {
    NSBitmapImageRep* bitmap = taggedBitmap(exchangedProfile());
    NSBitmapImageRep* copy =
        [[[NSBitmapImageRep alloc] initWithCGImage:[bitmap CGImage]] autorelease];
    EXPECT_TRUE([[[copy colorSpace] ICCProfileData] isEqual:[[bitmap colorSpace] ICCProfileData]]);
    EXPECT_THAT(rowsOf(copy), ElementsAre(255, 0, 0));
    EXPECT_TRUE([[[[[bitmap copy] autorelease] colorSpace] ICCProfileData]
        isEqual:[[bitmap colorSpace] ICCProfileData]]);
}

} // namespace
} // namespace appkit_test
