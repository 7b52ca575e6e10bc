#include "plugin/classes/support/sweep.h"

#include <filesystem>
#include <fstream>

namespace {

std::string told(Host& host, const host::Value& value) {
    if (value.isNothing()) return "-";
    if (host::arrayOf(value)) return host.elements(value).empty() ? "an empty array" : "an array";
    if (value.kind() == host::Kind::String) return "\"" + value.utf8() + "\"";
    if (value.kind() == host::Kind::Object)
        return value.isNil() ? "nil" : host::classOf(value.object())->name();
    return value.utf8();
}

NSImage* new_cocoa_image() {
    NSAutoreleasePool* const pool = [[NSAutoreleasePool alloc] init];
    const std::string bytes = plain_tiff(4, 3);
    NSImage* const image = [[NSImage alloc] initWithData:[NSData dataWithBytes:bytes.data()
                                                                        length:bytes.size()]];
    [[[image representations] objectAtIndex:0]
        setProperty:NSImageEXIFData
          withValue:[NSDictionary dictionaryWithObject:@"value" forKey:@"key"]];
    [pool release];
    return image;
}

CGImageRef new_cg_image() {
    CGColorSpaceRef const space = CGColorSpaceCreateDeviceRGB();
    CGContextRef const context =
        CGBitmapContextCreate(nullptr, 4, 3, 8, 16, space, kCGImageAlphaNoneSkipLast);
    CGImageRef const image = CGBitmapContextCreateImage(context);
    CGContextRelease(context);
    CGColorSpaceRelease(space);
    return image;
}

} // namespace

Sweep::Sweep(Host& host)
    : host_(host)
    , file_(std::filesystem::temp_directory_path() /
            ("sweep-" + std::to_string(getpid()) + ".tif")) {
    std::ofstream(file_, std::ios::binary) << plain_tiff(4, 3);
}

Sweep::~Sweep() { std::filesystem::remove(file_); }

host::Value Sweep::keep(const std::string& name, const host::Value& value) {
    std::string& answer = answers_[name] = told(host_, value);
    if (const std::string raised = host_.raised(); !raised.empty()) answer += " ! " + raised;
    return value;
}

void Sweep::get(const host::ObjectRef& object, const std::string& property) {
    keep(property, host_.get(object, property));
}

void Sweep::set_and_get(const host::ObjectRef& object, const char* property,
                        const host::Value& value) {
    host_.set(object, property, value);
    get(object, property);
}

Answers Sweep::run() {
    answers_.clear();
    NSImage* const image = new_cocoa_image();
    image_ = host_.instance("NSImageZNT");
    host_.set(image_, "Handle", reinterpret_cast<REALword>(image));
    bitmap_ = host_.instance("NSBitmapImageRepZNT");
    host_.set(bitmap_, "Handle",
              reinterpret_cast<REALword>([[[image representations] objectAtIndex:0] retain]));

    ask_constructors();
    ask_factories();
    ask_type_lists();
    ask_results();
    ask_representations();
    ask_properties();
    image_ = bitmap_ = nullptr;
    return answers_;
}

void Sweep::ask_constructors() {
    const host::ObjectRef data = host_.memoryBlock(plain_tiff(4, 3));
    const host::ObjectRef file = host_.folderItem(file_);
    const host::ObjectRef object = host_.instance("NSImageZNT");
    call(object, "initWithSize", 9.0, 9.0);
    call(object, "Constructor");
    call(object, "initWithContentsOfURL(file as folderitem) as boolean", file);
    call(object, "initWithContentsOfURL(url as string) as boolean", "file://" + file_);
    call(object, "initWithDataIgnoringOrientation", data);
    call(object, "initWithPasteboard");
    call(object, "initWithIconRef", REALword{0});
    call(object, "initWithData", data);
    call(object, "Constructor(data as memoryblock)", data);
    keep("width after Constructor(data)", host_.get(object, "width"));
    call(object, "Constructor(file as folderitem)", file);
    keep("width after Constructor(file)", host_.get(object, "width"));
    call(object, "Constructor(width as double, height as double)", 9.0, 9.0);
    keep("width after Constructor(size)", host_.get(object, "width"));
}

void Sweep::ask_factories() {
    const std::string bytes = plain_tiff(4, 3);
    shared("imageWithData(data as string) as NSImageZNT", host_.text(bytes));
    shared("imageWithData(data as memoryblock) as NSImageZNT", host_.memoryBlock(bytes));
    shared("imageWithContentsOfFile", host_.folderItem(file_));
    shared("imageWithContentsOfPath", file_);
    shared("imageWithContentsOfURL", "file://" + file_);
    shared("imageWithDataMT(data as string) as NSImageZNT", host_.text(bytes));
    shared("imageWithDataMT(data as memoryblock) as NSImageZNT", host_.memoryBlock(bytes));
    shared("imageWithContentsOfFileMT", host_.folderItem(file_));
    shared("imageWithContentsOfPathMT", file_);
    shared("imageWithContentsOfURLMT", "file://" + file_);
    const host::ObjectRef cgImage = host_.instance("CGImageZNT");
    *static_cast<CGImageRef*>(REALfirstClassData(cgImage.get())) = new_cg_image();
    shared("imageWithCGImage", cgImage);
    shared("canInitWithPasteboard");
    shared("NSImageNameInfo");
    keep("imageWithContentsOfPath of nothing",
         host_.shared("NSImageZNT", "imageWithContentsOfPath", ""));
}

void Sweep::ask_type_lists() {
    for (const char* list :
         {"imageUnfilteredFileTypes", "imageUnfilteredPasteboardTypes", "imageFileTypes",
          "imagePasteboardTypes", "imageTypes", "imageUnfilteredTypes"})
        shared(list);
}

void Sweep::ask_results() {
    call(image_, "imageByScalingToSize(width as double, height as double) as NSImageZNT", 4.0, 3.0);
    call(image_,
         "imageByScalingToSize(width as double, height as double, fraction as double) as "
         "NSImageZNT",
         8.0, 2.0, 1.0);
    call(image_,
         "imageByScalingToSize(width as double, height as double, fraction as double, flip as "
         "boolean, proportionally as boolean) as NSImageZNT",
         8.0, 2.0, 1.0, true, false);
    call(image_, "imageByFadingToFraction", 0.5);
    for (const std::string thread : {"", "MT"}) {
        for (const char* method : {"GIFRepresentation", "BMPRepresentation", "PNGRepresentation",
                                   "JPEGRepresentation", "TIFFRepresentation"})
            call(image_, method + thread);
        call(image_, "JPEGRepresentationWithCompressionFactor" + thread, 0.5);
        call(image_, "TIFFRepresentationUsingCompression" + thread, 1, 0.0);
    }
}

void Sweep::ask_representations() {
    keep("canInitWithData",
         host_.shared("NSImageRepZNT", "canInitWithData", host_.memoryBlock(plain_tiff(4, 3))));
    call(image_, "RepresentationWidth", 99);
    call(image_, "RepresentationHeight", 0);
    call(image_, "representations");
    for (const char* property :
         {"bitsPerSample", "pixelsWide", "pixelsHigh", "hasAlpha", "isOpaque", "bitsPerPixel",
          "samplesPerPixel", "isPlanar", "numberOfPlanes", "bitmapFormat"})
        get(bitmap_, property);
    set_and_get(bitmap_, "colorSpaceName", "NSDeviceRGBColorSpace");
    host_.get(bitmap_, "bytesPerRow");
    host_.get(bitmap_, "bytesPerPlane");
    host_.call(bitmap_, "Constructor");
    host_.set(bitmap_, "size", nullptr);
    host_.call(bitmap_, "setSize", 4.0, 3.0);
    keep("size of the bitmap", host_.get(bitmap_, "size"));
    keep("width of the bitmap", host_.get(bitmap_, "width"));
    keep("height of the bitmap", host_.get(bitmap_, "height"));
    host_.call(image_, "removeRepresentation", bitmap_);
    get(image_, "RepresentationsCount");
    host_.call(image_, "addRepresentation", bitmap_);
    get(image_, "isValid");
}

void Sweep::ask_properties() {
    for (const char* flag :
         {"isTemplate", "cacheDepthMatchesImageDepth", "usesEPSOnResolutionMismatch",
          "prefersColorMatch", "isCachedSeparately", "isDataRetained",
          "matchesOnMultipleResolution", "scalesWhenResized", "isFlipped"})
        set_and_get(image_, flag, true);
    set_and_get(image_, "cacheMode", REALword{3});
    set_and_get(image_, "accessibilityDescription", "a tree");
    for (const char* property :
         {"MinimumPixelWidth", "MinimumPixelHeight", "MaximumPixelWidth", "MaximumPixelHeight"})
        get(image_, property);
    get(image_, "backgroundColor");
    host_.set(image_, "backgroundColor", nullptr);
    call(image_, "setName", "tree");
    get(image_, "Name");
    get(image_, "EXIFData");
    shared("imageNamed", "tree");
    host_.call(image_, "setName", "");
    host_.set(image_, "size", nullptr);
    host_.call(image_, "setSize", 8.0, 6.0);
    for (const char* property : {"size", "width", "height"})
        get(image_, property);
    host_.call(image_, "cancelIncrementalLoad");
    host_.call(image_, "recache");
}
