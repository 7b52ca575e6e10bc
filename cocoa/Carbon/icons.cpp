#include "cocoa/Carbon/icons.h"

#include "cocoa/Carbon/file_bytes.h"
#include "cocoa/Carbon/file_references.h"

#include <limits>
#include <map>
#include <mutex>
#include <unordered_map>
#include <utility>

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t largestIconFile = 64 * 1024 * 1024;

/// The file's bytes, as many as its header states; null for a file that is no icon file.
std::shared_ptr<const Bytes> readIconFile(const std::string& path) {
    constexpr std::size_t headerSize = 8;
    auto file = cocoa::readFile(path, largestIconFile);
    if (!file || file->size() < headerSize) return nullptr;
    Bytes& bytes = *file;
    const auto word = [&](std::size_t at) {
        return std::uint32_t{bytes[at]} << 24 | std::uint32_t{bytes[at + 1]} << 16 |
               std::uint32_t{bytes[at + 2]} << 8 | std::uint32_t{bytes[at + 3]};
    };
    const std::size_t size = word(4);
    if (word(0) != 'icns' || size < headerSize || size > bytes.size()) return nullptr;
    bytes.resize(size);
    return std::make_shared<const Bytes>(std::move(bytes));
}

/// All icons. Handles are numbers that are never given twice.
class IconRegistry {
public:
    static IconRegistry& shared() {
        static auto& registry = *new IconRegistry;
        return registry;
    }

    IconRef add(OSType creator, OSType type, std::shared_ptr<const Bytes> bytes) {
        const std::scoped_lock lock(mutex_);
        const std::uintptr_t handle = nextHandle_;
        nextHandle_ += 16;
        icons_.emplace(handle, Icon{std::move(bytes), 2});
        drop(std::exchange(registered_[{creator, type}], handle));
        return reinterpret_cast<IconRef>(handle);
    }

    bool unregister(OSType creator, OSType type) {
        const std::scoped_lock lock(mutex_);
        const auto found = registered_.find({creator, type});
        if (found == registered_.end()) return false;
        const std::uintptr_t handle = found->second;
        registered_.erase(found);
        drop(handle);
        return true;
    }

    IconRef acquireRegistered(OSType creator, OSType type) {
        const std::scoped_lock lock(mutex_);
        const auto found = registered_.find({creator, type});
        if (found == registered_.end()) return nullptr;
        const auto icon = icons_.find(found->second);
        if (icon == icons_.end()) return nullptr;
        ++icon->second.owners;
        return reinterpret_cast<IconRef>(found->second);
    }

    bool acquire(IconRef icon) {
        const std::scoped_lock lock(mutex_);
        const auto found = find(icon);
        if (found == icons_.end()) return false;
        ++found->second.owners;
        return true;
    }

    bool release(IconRef icon) {
        const std::scoped_lock lock(mutex_);
        return drop(reinterpret_cast<std::uintptr_t>(icon));
    }

    /// 0 when it is no icon.
    std::size_t owners(IconRef icon) {
        const std::scoped_lock lock(mutex_);
        const auto found = find(icon);
        return found == icons_.end() ? 0 : found->second.owners;
    }

    std::shared_ptr<const Bytes> bytes(IconRef icon) {
        const std::scoped_lock lock(mutex_);
        const auto found = find(icon);
        return found == icons_.end() ? nullptr : found->second.bytes;
    }

private:
    struct Icon {
        std::shared_ptr<const Bytes> bytes;
        std::size_t owners;
    };
    using Icons = std::unordered_map<std::uintptr_t, Icon>;

    Icons::iterator find(IconRef icon) {
        return icons_.find(reinterpret_cast<std::uintptr_t>(icon));
    }

    bool drop(std::uintptr_t handle) {
        const auto found = icons_.find(handle);
        if (found == icons_.end()) return false;
        if (--found->second.owners == 0) icons_.erase(found);
        return true;
    }

    std::mutex mutex_;
    std::uintptr_t nextHandle_ = 0x10000;
    Icons icons_;
    std::map<std::pair<OSType, OSType>, std::uintptr_t> registered_;
};

} // namespace

OSStatus RegisterIconRefFromFSRef(OSType creator, OSType iconType, const FSRef* iconFile,
                                  IconRef* icon) {
    if (!iconFile || !icon) return paramErr;
    const auto path = cocoa::pathOfReference(iconFile);
    if (!path) return errFSBadFSRef;
    auto bytes = readIconFile(*path);
    if (!bytes) return noSuchIconErr;
    *icon = IconRegistry::shared().add(creator, iconType, std::move(bytes));
    return noErr;
}

OSStatus UnregisterIconRef(OSType creator, OSType iconType) {
    return IconRegistry::shared().unregister(creator, iconType) ? noErr : noSuchIconErr;
}

OSErr GetIconRef(SInt16, OSType creator, OSType iconType, IconRef* icon) {
    if (!icon) return paramErr;
    *icon = IconRegistry::shared().acquireRegistered(creator, iconType);
    return *icon ? noErr : noSuchIconErr;
}

OSErr AcquireIconRef(IconRef icon) {
    return IconRegistry::shared().acquire(icon) ? noErr : invalidIconRefErr;
}

OSErr ReleaseIconRef(IconRef icon) {
    return IconRegistry::shared().release(icon) ? noErr : invalidIconRefErr;
}

OSErr GetIconRefOwners(IconRef icon, UInt16* owners) {
    if (!owners) return paramErr;
    const std::size_t count = IconRegistry::shared().owners(icon);
    *owners = static_cast<UInt16>(std::min<std::size_t>(count, std::numeric_limits<UInt16>::max()));
    return count ? noErr : invalidIconRefErr;
}

Boolean IsValidIconRef(IconRef icon) { return IconRegistry::shared().owners(icon) > 0; }

std::shared_ptr<const Bytes> cocoa::iconFileBytes(IconRef icon) {
    return IconRegistry::shared().bytes(icon);
}
