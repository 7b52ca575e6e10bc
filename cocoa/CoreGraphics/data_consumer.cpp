#include "cocoa/CoreGraphics/object.h"

#include <CoreGraphics/CGDataConsumer.h>

#include <memory>

namespace cocoa::cg {
namespace {

class DataConsumer final : public Body {
public:
    DataConsumer(void* info, const CGDataConsumerCallbacks& callbacks)
        : info(info)
        , callbacks(callbacks) {}
    ~DataConsumer() override {
        if (callbacks.releaseConsumer != nullptr) callbacks.releaseConsumer(info);
    }

private:
    void* const info;
    const CGDataConsumerCallbacks callbacks;
};

std::size_t appendBytes(void* data, const void* bytes, std::size_t count) {
    CFDataAppendBytes(static_cast<CFMutableDataRef>(data), static_cast<const UInt8*>(bytes),
                      static_cast<CFIndex>(count));
    return count;
}

void releaseData(void* data) { releaseObject(data); }

} // namespace
} // namespace cocoa::cg

using namespace cocoa::cg;

CGDataConsumerRef CGDataConsumerCreate(void* info, const CGDataConsumerCallbacks* callbacks) {
    if (callbacks == nullptr || callbacks->putBytes == nullptr) return nullptr;
    return (CGDataConsumerRef)makeObject(Kind::DataConsumer,
                                         std::make_unique<DataConsumer>(info, *callbacks));
}

CGDataConsumerRef CGDataConsumerCreateWithCFData(CFMutableDataRef data) {
    if (data == nullptr) return nullptr;
    const CGDataConsumerCallbacks callbacks = {appendBytes, releaseData};
    return CGDataConsumerCreate(const_cast<void*>(retainObject(data)), &callbacks);
}

CGDataConsumerRef CGDataConsumerRetain(CGDataConsumerRef consumer) {
    retainObject(consumer);
    return consumer;
}

void CGDataConsumerRelease(CGDataConsumerRef consumer) { releaseObject(consumer); }
