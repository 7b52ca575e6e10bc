#pragma once

/// Host wrappers of Cocoa objects. A wrapper keeps one retained Cocoa object in the first word of
/// its class data. Results carry one host reference for the caller; null for a nil object, or when
/// the host cannot make the wrapper.

#include "sdk/types.h"

#include <Cocoa/Cocoa.h>

@class NSPDFImageRep;

/// One Cocoa object has one wrapper: while a wrapper is alive and the base part is there, the same
/// one is returned again.
REALobjectStruct* NewNSImageZNT(NSImage* image);
REALobjectStruct* NewNSPDFImageRepZNT(NSPDFImageRep* representation);
REALobjectStruct* NewNSBitmapImageRepZNT(NSBitmapImageRep* representation);
REALobjectStruct* NewNSColorZNT(NSColor* color);
/// The same for objects of any class.
REALobjectStruct* NewSharedWrapper(id object, const char* hostClass);

/// A new wrapper at every call, of the most derived host class named after the object's class or
/// one of its ancestors; null as well when the object is not of the required class.
REALobjectStruct* NewNSObjectZNT(NSObject* object, Class required);

/// The Cocoa object in a wrapper; nil for null.
template <typename Object>
Object* wrapped_object(REALobjectStruct* wrapper) {
    return wrapper ? *static_cast<Object**>(REALfirstClassData(wrapper)) : nil;
}
