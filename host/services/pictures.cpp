#include "host/objects/picture.h"

#include "host/objects/graphics.h"
#include "host/objects/runtime.h"
#include "host/services/arguments.h"
#include "host/services/exports.h"

namespace host::exports {

namespace {

/// Up to this version a description that could not be locked had to be unlocked all the same.
constexpr double firstVersionWithCleanFailures = 2012.0;

constexpr std::int32_t onlyDepth = 32;

Runtime& runtime() { return Runtime::current(); }

Picture* pictureFrom(int number, REALpictureStruct* picture) {
    return arguments::isObject(number, picture, "Picture") ? stateOf<Picture>(picture) : nullptr;
}

/// What is found where nothing could be locked.
std::uint8_t refuse(Picture& picture) {
    if (runtime().options().version < firstVersionWithCleanFailures) ++picture.locks;
    return false;
}

std::uint8_t lock(Picture& picture, REALpictureDescription& description) {
    description.type = picture.pixels()->type();
    description.data = picture.pixels()->data();
    description.width = picture.width();
    description.height = picture.height();
    ++picture.locks;
    return true;
}

} // namespace

REALpictureStruct* newPicture(std::int32_t width, std::int32_t height, std::int32_t depth) {
    if (depth != onlyDepth) {
        runtime().reportMisuse("argument 3: a depth of " + std::to_string(depth));
        return nullptr;
    }
    return static_cast<REALpictureStruct*>(host::newPicture(width, height).release());
}

std::uint8_t lockPictureDescription(REALpictureStruct* picture, REALpictureDescription* description,
                                    std::uint32_t type) {
    Picture* const held = pictureFrom(1, picture);
    if (!held || !arguments::isGiven(2, description)) return false;
    if (held->isVector || !held->pixels() || held->pixels()->type() != type) return refuse(*held);
    return lock(*held, *description);
}

std::uint8_t lockPictureDescriptionOlder(REALpictureStruct* picture,
                                         REALpictureDescription* description) {
    Picture* const held = pictureFrom(1, picture);
    if (!held || !arguments::isGiven(2, description)) return false;
    if (held->isVector || !held->pixels()) return refuse(*held);
    return lock(*held, *description);
}

void unlockPictureDescription(REALpictureStruct* picture) {
    Picture* const held = pictureFrom(1, picture);
    if (!held) return;
    if (held->locks == 0)
        runtime().reportMisuse("argument 1: the description is not locked");
    else
        --held->locks;
}

void pictureClearCache(REALpictureStruct* picture) {
    if (Picture* const held = pictureFrom(1, picture)) held->changed();
}

REALgraphicsStruct* getPictureGraphics(REALpictureStruct* picture) {
    if (!pictureFrom(1, picture)) return nullptr;
    return static_cast<REALgraphicsStruct*>(newGraphics(ObjectRef::retain(picture)).release());
}

REALpictureStruct* getPictureMask(REALpictureStruct* picture, std::uint8_t create) {
    if (!pictureFrom(1, picture)) return nullptr;
    return static_cast<REALpictureStruct*>(
        maskOf(ObjectRef::retain(picture), create != 0).release());
}

CGImageRef copyPictureCGImage(REALpictureStruct* picture) {
    Picture* const held = pictureFrom(1, picture);
    return held ? CGImageRetain(held->image()) : nullptr;
}

} // namespace host::exports
