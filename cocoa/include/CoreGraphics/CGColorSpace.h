#pragma once

/// Colour spaces. The device and generic RGB spaces are taken for sRGB where colours are converted.

#include <CoreFoundation/CFData.h>
#include <CoreFoundation/CFString.h>
#include <CoreGraphics/CGBase.h>

typedef struct CGColorSpace* CGColorSpaceRef;
typedef struct CGDataProvider* CGDataProviderRef;

typedef enum CGColorRenderingIntent : int32_t {
    kCGRenderingIntentDefault,
    kCGRenderingIntentAbsoluteColorimetric,
    kCGRenderingIntentRelativeColorimetric,
    kCGRenderingIntentPerceptual,
    kCGRenderingIntentSaturation
} CGColorRenderingIntent;

typedef enum CGColorSpaceModel : int32_t {
    kCGColorSpaceModelUnknown = -1,
    kCGColorSpaceModelMonochrome,
    kCGColorSpaceModelRGB,
    kCGColorSpaceModelCMYK,
    kCGColorSpaceModelLab,
    kCGColorSpaceModelDeviceN,
    kCGColorSpaceModelIndexed,
    kCGColorSpaceModelPattern
} CGColorSpaceModel;

CG_EXTERN const CFStringRef kCGColorSpaceGenericGray;
CG_EXTERN const CFStringRef kCGColorSpaceGenericGrayGamma2_2;
CG_EXTERN const CFStringRef kCGColorSpaceGenericRGB;
CG_EXTERN const CFStringRef kCGColorSpaceGenericCMYK;
CG_EXTERN const CFStringRef kCGColorSpaceSRGB;

CG_EXTERN CFTypeID CGColorSpaceGetTypeID(void);

CG_EXTERN CGColorSpaceRef CGColorSpaceCreateDeviceGray(void);
CG_EXTERN CGColorSpaceRef CGColorSpaceCreateDeviceRGB(void);
CG_EXTERN CGColorSpaceRef CGColorSpaceCreateDeviceCMYK(void);
/// One of the names above; null for another.
CG_EXTERN CGColorSpaceRef CGColorSpaceCreateWithName(CFStringRef name);
/// `range` gives a minimum and a maximum for each component and may be null (0 to 1). When the
/// profile is not one of `componentCount` components, `alternate` takes its place; without one the
/// result is null.
CG_EXTERN CGColorSpaceRef CGColorSpaceCreateICCBased(size_t componentCount, const CGFloat* range,
                                                     CGDataProviderRef profile,
                                                     CGColorSpaceRef alternate);
/// Null when the data is no gray, RGB or CMYK profile.
CG_EXTERN CGColorSpaceRef CGColorSpaceCreateWithICCProfile(CFDataRef profile);

CG_EXTERN CGColorSpaceRef CGColorSpaceRetain(CGColorSpaceRef space);
CG_EXTERN void CGColorSpaceRelease(CGColorSpaceRef space);

/// Without alpha: 1, 3 or 4.
CG_EXTERN size_t CGColorSpaceGetNumberOfComponents(CGColorSpaceRef space);
CG_EXTERN CGColorSpaceModel CGColorSpaceGetModel(CGColorSpaceRef space);
/// The name it was made with, or null. The caller owns it.
CG_EXTERN CFStringRef CGColorSpaceCopyName(CGColorSpaceRef space);
/// The profile it was made from; null for the other spaces, which have none.
CG_EXTERN CFDataRef CGColorSpaceCopyICCProfile(CGColorSpaceRef space);
