#include "plugin/bridge/sizes.h"

#include "plugin/entry/host_services.h"

namespace {

struct SizeData {
    float width;
    float height;
};

} // namespace

REALobjectStruct* NewNSSizeZNT(NSSize size) {
    REALobjectStruct* const hostSize = REALnewInstance("NSSizeZNT");
    if (!hostSize) return nullptr;
    *static_cast<SizeData*>(REALfirstClassData(hostSize)) = {static_cast<float>(size.width),
                                                             static_cast<float>(size.height)};
    return hostSize;
}

NSSize size_of(REALobjectStruct* hostSize) {
    if (!hostSize) return NSZeroSize;
    const auto* const data = static_cast<const SizeData*>(REALfirstClassData(hostSize));
    return NSMakeSize(data->width, data->height);
}
