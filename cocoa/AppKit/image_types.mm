#include "cocoa/AppKit/image_types.h"

#import <AppKit/NSPasteboard.h>

#include "cocoa/codecs/codec.h"

#include <string_view>

namespace cocoa::appkit {
namespace {

/// The names that older systems gave to formats.
struct OldNames {
    std::string_view typeIdentifier;
    NSString* fileType;       ///< the HFS type, quoted
    NSString* pasteboardType; ///< nil for none
};

const OldNames oldNames[] = {
    {"public.tiff", @"'TIFF'", NSTIFFPboardType},
    {"public.jpeg", @"'JPEG'", nil},
    {"public.png", @"'PNGf'", @"Apple PNG pasteboard type"},
    {"com.compuserve.gif", @"'GIFf'", nil},
    {"com.microsoft.bmp", @"'BMPf'", nil},
};

const OldNames* oldNamesOf(const codecs::Codec& codec) {
    for (const OldNames& names : oldNames)
        if (names.typeIdentifier == codec.typeIdentifier) return &names;
    return nullptr;
}

NSString* toString(std::string_view text) {
    return [[[NSString alloc] initWithBytes:text.data()
                                     length:text.size()
                                   encoding:NSASCIIStringEncoding] autorelease];
}

} // namespace

NSArray* codecFileTypes() {
    NSMutableArray* types = [NSMutableArray array];
    for (const codecs::Codec* codec : codecs::all_codecs()) {
        [types addObjectsFromArray:[toString(codec->extensions) componentsSeparatedByString:@" "]];
        const OldNames* names = oldNamesOf(*codec);
        if (names) [types addObject:names->fileType];
    }
    return types;
}

NSArray* codecPasteboardTypes() {
    NSMutableArray* types = [NSMutableArray array];
    for (const codecs::Codec* codec : codecs::all_codecs()) {
        const OldNames* names = oldNamesOf(*codec);
        if (names && names->pasteboardType) [types addObject:names->pasteboardType];
        [types addObject:toString(codec->typeIdentifier)];
    }
    return types;
}

NSArray* codecTypeIdentifiers() {
    NSMutableArray* types = [NSMutableArray array];
    for (const codecs::Codec* codec : codecs::all_codecs())
        [types addObject:toString(codec->typeIdentifier)];
    return types;
}

} // namespace cocoa::appkit
