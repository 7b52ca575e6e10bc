#include "cocoa/AppKit/bitmap_exif.h"

#include "cocoa/codecs/exif_fields.h"

namespace cocoa::appkit {
namespace {

using codecs::ExifField;

NSString* toString(std::string_view text, NSStringEncoding encoding) {
    return [[[NSString alloc] initWithBytes:text.data() length:text.size()
                                   encoding:encoding] autorelease];
}

NSNumber* toNumber(const ExifField& field, double number) {
    if (field.kind == ExifField::Kind::Fractions) return [NSNumber numberWithDouble:number];
    return [NSNumber numberWithLongLong:static_cast<long long>(number)];
}

/// Nil for text in no encoding that is known.
id valueOf(const ExifField& field) {
    if (field.kind == ExifField::Kind::Text) {
        NSString* text = toString(field.text, NSUTF8StringEncoding);
        return text ? text : toString(field.text, NSISOLatin1StringEncoding);
    }
    if (!field.list) return toNumber(field, field.numbers.front());
    NSMutableArray* numbers = [NSMutableArray array];
    for (const double number : field.numbers)
        [numbers addObject:toNumber(field, number)];
    return numbers;
}

} // namespace

NSDictionary* exifDictionary(codecs::Bytes block) {
    NSMutableDictionary* dictionary = [NSMutableDictionary dictionary];
    for (const ExifField& field : codecs::exif_fields(block)) {
        id value = valueOf(field);
        if (value) [dictionary setObject:value forKey:toString(field.name, NSASCIIStringEncoding)];
    }
    return [dictionary count] ? dictionary : nil;
}

} // namespace cocoa::appkit
