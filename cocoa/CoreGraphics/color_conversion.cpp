#include "cocoa/CoreGraphics/color_conversion.h"

#include <lcms2.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <deque>
#include <mutex>

namespace cocoa::cg {
namespace {

struct CloseProfile {
    void operator()(void* profile) const { cmsCloseProfile(profile); }
};
using ProfileHandle = std::unique_ptr<void, CloseProfile>;

class LittleCMSConversion final : public ProfileConversion {
public:
    explicit LittleCMSConversion(cmsHTRANSFORM transform)
        : transform(transform) {}
    ~LittleCMSConversion() override { cmsDeleteTransform(transform); }

    void convert(const void* source, void* rgb, std::size_t count) const override {
        // The library counts in 32 bits; rows are shorter than that.
        cmsDoTransform(transform, source, rgb, static_cast<cmsUInt32Number>(count));
    }

private:
    cmsHTRANSFORM transform;
};

ProfileHandle openProfile(const Profile& profile) {
    if (!profile) return ProfileHandle(cmsCreate_sRGBProfile());
    return ProfileHandle(
        cmsOpenProfileFromMem(profile->data(), static_cast<cmsUInt32Number>(profile->size())));
}

cmsUInt32Number sampleFormat(CGColorSpaceModel model, int bits) {
    const bool wide = bits == 16;
    switch (model) {
    case kCGColorSpaceModelMonochrome:
        return wide ? TYPE_GRAY_16 : TYPE_GRAY_8;
    case kCGColorSpaceModelCMYK:
        return wide ? TYPE_CMYK_16 : TYPE_CMYK_8;
    default:
        return wide ? TYPE_RGB_16 : TYPE_RGB_8;
    }
}

cmsUInt32Number profileIntent(CGColorRenderingIntent intent) {
    switch (intent) {
    case kCGRenderingIntentAbsoluteColorimetric:
        return INTENT_ABSOLUTE_COLORIMETRIC;
    case kCGRenderingIntentRelativeColorimetric:
        return INTENT_RELATIVE_COLORIMETRIC;
    case kCGRenderingIntentSaturation:
        return INTENT_SATURATION;
    default:
        return INTENT_PERCEPTUAL;
    }
}

struct Key {
    Profile source; ///< null for sRGB
    Profile target;
    CGColorSpaceModel model;
    int bits;
    CGColorRenderingIntent intent;

    static bool same(const Profile& first, const Profile& second) {
        return first == second || (first && second && *first == *second);
    }
    bool operator==(const Key& other) const {
        return model == other.model && bits == other.bits && intent == other.intent &&
               same(source, other.source) && same(target, other.target);
    }
};

std::shared_ptr<const ProfileConversion> makeConversion(const Key& key) {
    const ProfileHandle source = openProfile(key.source);
    const ProfileHandle target = openProfile(key.target);
    if (!source || !target) return nullptr;
    // Without its own one-pixel cache a transform can be used by several threads at once.
    cmsHTRANSFORM transform = cmsCreateTransform(
        source.get(), sampleFormat(key.model, key.bits), target.get(),
        sampleFormat(kCGColorSpaceModelRGB, key.bits), profileIntent(key.intent), cmsFLAGS_NOCACHE);
    if (transform == nullptr) return nullptr;
    return std::make_shared<LittleCMSConversion>(transform);
}

/// The last few conversions: making one costs far more than a small picture.
class ConversionCache {
public:
    std::shared_ptr<const ProfileConversion> find(const Key& key) {
        const std::lock_guard lock(mutex);
        for (const Entry& entry : entries) {
            if (entry.key == key) return entry.conversion;
        }
        entries.push_front({key, makeConversion(key)});
        if (entries.size() > capacity) entries.pop_back();
        return entries.front().conversion;
    }

private:
    static constexpr std::size_t capacity = 8;
    struct Entry {
        Key key;
        std::shared_ptr<const ProfileConversion> conversion;
    };
    std::mutex mutex;
    std::deque<Entry> entries;
};

ConversionCache& cache() {
    // Never destroyed, since objects that outlive the statics may still draw.
    static auto* conversions = new ConversionCache;
    return *conversions;
}

} // namespace

std::shared_ptr<const ProfileConversion> profileConversion(const ColorSpace* source,
                                                           const ColorSpace* target, int bits,
                                                           CGColorRenderingIntent intent) {
    if (source == nullptr || source->origin == ColorSpace::Origin::Device) return nullptr;
    const Profile targetProfile =
        target != nullptr && target->model == kCGColorSpaceModelRGB ? target->profile : nullptr;
    const Key key{source->profile, targetProfile, source->model, bits, intent};
    if (Key::same(key.source, key.target)) return nullptr;
    // A generic gray or CMYK space has no profile that could take part.
    if (!source->profile && source->model != kCGColorSpaceModelRGB) return nullptr;
    return cache().find(key);
}

RGB convertColor(const ColorSpace& source, const CGFloat* components, const ColorSpace* target) {
    std::array<double, 4> value{};
    for (std::size_t i = 0; i < source.components(); ++i) {
        const auto component = static_cast<double>(components[i]);
        value[i] = component > 0 ? std::min(component, 1.0) : 0;
    }
    if (const auto conversion = profileConversion(&source, target, 16, kCGRenderingIntentDefault)) {
        std::array<std::uint16_t, 4> samples{};
        std::array<std::uint16_t, 3> rgb{};
        for (std::size_t i = 0; i < 4; ++i) {
            samples[i] = static_cast<std::uint16_t>(std::lround(value[i] * 65535));
        }
        conversion->convert(samples.data(), rgb.data(), 1);
        return {rgb[0] / 65535.0, rgb[1] / 65535.0, rgb[2] / 65535.0};
    }
    switch (source.model) {
    case kCGColorSpaceModelMonochrome:
        return {value[0], value[0], value[0]};
    case kCGColorSpaceModelCMYK: {
        const double light = 1 - value[3];
        return {(1 - value[0]) * light, (1 - value[1]) * light, (1 - value[2]) * light};
    }
    default:
        return {value[0], value[1], value[2]};
    }
}

} // namespace cocoa::cg
