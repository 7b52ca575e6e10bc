#include "plugin/bridge/data.h"
#include "plugin/bridge/geometry.h"
#include "plugin/bridge/strings.h"
#include "plugin/bridge/urls.h"
#include "plugin/classes/handle.h"
#include "plugin/classes/nsimage/members.h"
#include "plugin/entry/exceptions.h"
#include "plugin/entry/frames.h"
#include "plugin/entry/instances.h"
#include "plugin/picture/new_image.h"

namespace nsimage {

namespace {

/// Gives a new image, which may be nil, to an object without one.
bool adopt(REALobjectStruct* object, NSImage* image) {
    image_of(object) = image;
    if (image) register_instance(image, object);
    return image != nil;
}

/// Lets go of the object's image, whatever comes after, and takes what `makeImage` returns with one
/// retain. Nil leaves the object without an image and gives false.
template <typename MakeImage>
bool initialise(REALobjectStruct* object, MakeImage makeImage) {
    NSImageDestructor(object);
    return FullFrame([&] { return adopt(object, makeImage()); });
}

} // namespace

void NSImageConstructor(REALobjectStruct*) { CocoaInit(); }

void NSImageDestructor(REALobjectStruct* object) {
    NSImage*& image = image_of(object);
    FullFrame([&] {
        if (!image) return;
        unregister_instance(image);
        [image release];
    });
    image = nil;
}

void construct_empty(REALobjectStruct* object) {
    FullFrame([&] {
        if (image_of(object))
            RaiseException("UnsupportedOperationException",
                           "Constructor called too often. Object is already initialized.");
        else
            adopt(object, [[NSImage alloc] init]);
    });
}

void construct_with_data(REALobjectStruct* object, REALmemoryBlockStruct* data) {
    initWithData(object, data);
}

void construct_with_size(REALobjectStruct* object, double width, double height) {
    initWithSize(object, width, height);
}

void construct_with_file(REALobjectStruct* object, REALfolderItemStruct* file) {
    initWithContentsOfFile(object, file);
}

void construct_with_picture(REALobjectStruct* object, REALpictureStruct* picture,
                            REALpictureStruct* mask) {
    initWithPicture(object, picture, mask);
}

bool initWithContentsOfFile(REALobjectStruct* object, REALfolderItemStruct* file) {
    return initialise(object, [&]() -> NSImage* {
        NSURL* const url = NewNSURLfile(file);
        return url ? [[NSImage alloc] initWithContentsOfURL:url] : nil;
    });
}

bool initWithContentsOfURL(REALobjectStruct* object, REALstringStruct* string) {
    return initialise(object, [&]() -> NSImage* {
        NSURL* const url = NewNSURL(string);
        return url ? [[NSImage alloc] initWithContentsOfURL:url] : nil;
    });
}

bool initWithData(REALobjectStruct* object, REALmemoryBlockStruct* block) {
    return initialise(object, [&]() -> NSImage* {
        NSData* const data = NewNSData(block);
        return data ? [[NSImage alloc] initWithData:data] : nil;
    });
}

bool initWithDataIgnoringOrientation(REALobjectStruct* object, REALmemoryBlockStruct* block) {
    return initialise(object, [&]() -> NSImage* {
        NSData* const data = NewNSData(block);
        return data ? [[NSImage alloc] initWithDataIgnoringOrientation:data] : nil;
    });
}

bool initWithSize(REALobjectStruct* object, double width, double height) {
    return initialise(object, [&]() -> NSImage* {
        return [[NSImage alloc] initWithSize:narrowed_size(width, height)];
    });
}

bool initWithPasteboard(REALobjectStruct* object) {
    return initialise(object, [&]() -> NSImage* {
        return [[NSImage alloc] initWithPasteboard:[NSPasteboard generalPasteboard]];
    });
}

bool initWithIconRef(REALobjectStruct* object, REALword icon) {
    return initialise(object, [&]() -> NSImage* {
        return [[NSImage alloc] initWithIconRef:reinterpret_cast<IconRef>(icon)];
    });
}

bool initWithPicture(REALobjectStruct* object, REALpictureStruct* picture,
                     REALpictureStruct* mask) {
    return initialise(object, [&] { return [NewNSImage(picture, mask) retain]; });
}

} // namespace nsimage
