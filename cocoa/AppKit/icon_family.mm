#include "cocoa/AppKit/icon_family.h"

#include "cocoa/AppKit/bitmap_state.h"
#include "cocoa/Carbon/icons.h"

#include <cstdint>
#include <span>

namespace cocoa::appkit {
namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::size_t headerSize = 8; // type and length, of the file and of each member

std::uint32_t bigEndian(Bytes bytes) {
    return std::uint32_t{bytes[0]} << 24 | std::uint32_t{bytes[1]} << 16 |
           std::uint32_t{bytes[2]} << 8 | bytes[3];
}

/// The members' contents in the order of the file.
template <class Visit>
void forEachMember(Bytes file, Visit visit) {
    constexpr std::uint32_t signature = 'i' << 24 | 'c' << 16 | 'n' << 8 | 's';
    if (file.size() < headerSize || bigEndian(file) != signature) return;
    Bytes rest = file.subspan(headerSize);
    while (rest.size() > headerSize) {
        const std::size_t length = bigEndian(rest.subspan(4));
        if (length < headerSize || length > rest.size()) return;
        visit(rest.subspan(headerSize, length - headerSize));
        rest = rest.subspan(length);
    }
}

NSComparisonResult byWidth(id first, id second, void* context) {
    const NSInteger difference = [first pixelsWide] - [second pixelsWide];
    return difference < 0   ? NSOrderedAscending
           : difference > 0 ? NSOrderedDescending
                            : NSOrderedSame;
}

} // namespace

NSArray* iconRepresentations(IconRef icon) {
    const auto file = iconFileBytes(icon);
    if (!file) return nil;
    NSMutableArray* reps = [NSMutableArray array];
    forEachMember(*file, [reps](Bytes member) {
        NSData* data = [NSData dataWithBytesNoCopy:const_cast<std::uint8_t*>(member.data())
                                            length:member.size()
                                      freeWhenDone:NO];
        NSArray* pages = bitmapRepsOfData([NSBitmapImageRep class], data, false, true);
        if (pages) [reps addObjectsFromArray:pages];
    });
    [reps sortUsingFunction:byWidth context:nullptr];
    return [reps count] ? reps : nil;
}

} // namespace cocoa::appkit
