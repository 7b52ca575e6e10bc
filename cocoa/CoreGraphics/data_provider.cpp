#include "cocoa/CoreGraphics/data_provider.h"

#include <CoreFoundation/CFData.h>
#include <CoreFoundation/CFURL.h>

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <sys/stat.h>

namespace cocoa::cg {
namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
struct FreeMemory {
    void operator()(void* memory) const { std::free(memory); }
};

void freeBytes(void*, const void* data, std::size_t) { std::free(const_cast<void*>(data)); }

CGDataProviderRef makeProvider(void* info, const void* data, std::size_t size,
                               DataProvider::Release release) {
    auto body = std::make_unique<DataProvider>(info, data, size, release);
    return (CGDataProviderRef)makeObject(Kind::DataProvider, std::move(body));
}

} // namespace
} // namespace cocoa::cg

using namespace cocoa::cg;

CGDataProviderRef CGDataProviderCreateWithData(void* info, const void* data, size_t size,
                                               CGDataProviderReleaseDataCallback releaseData) {
    if (data == nullptr && size != 0) return nullptr;
    return makeProvider(info, data, size, releaseData);
}

CGDataProviderRef CGDataProviderCreateWithCFData(CFDataRef data) {
    if (data == nullptr) return nullptr;
    return makeProvider(const_cast<void*>(retainObject(data)), CFDataGetBytePtr(data),
                        static_cast<std::size_t>(CFDataGetLength(data)), releaseOwner);
}

CGDataProviderRef CGDataProviderCreateWithURL(CFURLRef url) {
    char path[PATH_MAX];
    if (url == nullptr ||
        !CFURLGetFileSystemRepresentation(url, true, reinterpret_cast<UInt8*>(path), sizeof path)) {
        return nullptr;
    }
    return CGDataProviderCreateWithFilename(path);
}

CGDataProviderRef CGDataProviderCreateWithFilename(const char* filename) {
    if (filename == nullptr) return nullptr;
    const std::unique_ptr<std::FILE, CloseFile> file(std::fopen(filename, "rb"));
    struct stat status = {};
    if (!file || fstat(fileno(file.get()), &status) != 0 || !S_ISREG(status.st_mode)) {
        return nullptr;
    }
    if (static_cast<std::uint64_t>(status.st_size) > SIZE_MAX - 1) return nullptr;
    const auto size = static_cast<std::size_t>(status.st_size);
    // One byte more, so that an empty file has memory too.
    std::unique_ptr<void, FreeMemory> bytes(std::malloc(size + 1));
    if (!bytes || std::fread(bytes.get(), 1, size, file.get()) != size) return nullptr;
    return makeProvider(nullptr, bytes.release(), size, freeBytes);
}

CGDataProviderRef CGDataProviderRetain(CGDataProviderRef provider) {
    retainObject(provider);
    return provider;
}

void CGDataProviderRelease(CGDataProviderRef provider) { releaseObject(provider); }

CFDataRef CGDataProviderCopyData(CGDataProviderRef provider) {
    if (provider == nullptr) return nullptr;
    const auto bytes = bodyOf(provider)->bytes();
    return CFDataCreate(kCFAllocatorDefault, bytes.data(), static_cast<CFIndex>(bytes.size()));
}
