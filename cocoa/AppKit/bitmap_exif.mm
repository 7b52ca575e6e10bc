#include "cocoa/AppKit/bitmap_exif.h"

#include "cocoa/codecs/exif_fields.h"
#include "cocoa/codecs/exif_tags.h"

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

bool isNumber(id value) { return [value isKindOfClass:[NSNumber class]]; }

/// The field of a property; false when it is of no kind that fields have.
bool readProperty(id value, ExifField& field) {
    if ([value isKindOfClass:[NSString class]]) {
        field.kind = ExifField::Kind::Text;
        field.text = [value UTF8String] ? [value UTF8String] : "";
        return true;
    }
    if (isNumber(value)) {
        field.numbers.push_back([value doubleValue]);
        return true;
    }
    if (![value isKindOfClass:[NSArray class]]) return false;
    for (NSUInteger index = 0; index < [value count]; ++index) {
        if (!isNumber([value objectAtIndex:index])) return false;
        field.numbers.push_back([[value objectAtIndex:index] doubleValue]);
    }
    return true;
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

std::vector<std::uint8_t> exifBlock(NSDictionary* dictionary) {
    std::vector<ExifField> fields;
    for (const codecs::ExifTagInfo& info : codecs::exif_tags()) {
        ExifField field;
        field.name = info.name;
        id value = [dictionary objectForKey:toString(info.name, NSASCIIStringEncoding)];
        if (value && readProperty(value, field)) fields.push_back(std::move(field));
    }
    return codecs::exif_block(fields);
}

} // namespace cocoa::appkit
