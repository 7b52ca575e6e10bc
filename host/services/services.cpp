#include "host/services/services.h"

#include "host/objects/runtime.h"
#include "host/services/exports.h"

#include <algorithm>
#include <array>
#include <map>
#include <string>

namespace host {

namespace {

/// What the host knows of one service.
struct Service {
    const char* name;
    void* address = nullptr; ///< what the resolver answers
    void* replacement = nullptr;
    int failures = 0; ///< calls that are still to fail
    int calls = 0;
    bool withdrawn = false;
};

template <const auto& descriptor>
Service serviceOf{descriptor.name};

/// Whether the service may do its work now.
bool enter(Service& service) {
    Runtime& runtime = Runtime::current();
    if (!runtime.onHostThread()) {
        runtime.reportMisuse(std::string(service.name) + " was called on another thread");
        return false;
    }
    ++service.calls;
    if (service.failures == 0) return true;
    --service.failures;
    return false;
}

/// What a plug-in calls: the host's function, behind the controls.
template <const auto& descriptor, auto* function>
struct Export;

template <const auto& descriptor, typename Result, typename... Arguments,
          Result (*function)(Arguments...)>
struct Export<descriptor, function> {
    using Function = Result(Arguments...);
    static_assert(
        std::is_same_v<Function, typename std::remove_cvref_t<decltype(descriptor)>::Function>,
        "the host's function has another signature than the service");

    static Result call(Arguments... arguments) {
        Service& service = serviceOf<descriptor>;
        if (!enter(service)) return Result();
        const Activity activity(service.name);
        Function* const current =
            service.replacement ? reinterpret_cast<Function*>(service.replacement) : function;
        return current(arguments...);
    }
};

template <const auto& descriptor, auto* function>
Service* offered() {
    serviceOf<descriptor>.address = reinterpret_cast<void*>(&Export<descriptor, function>::call);
    return &serviceOf<descriptor>;
}

const std::vector<Service*>& table() {
    using namespace REALservices;
    static const std::vector<Service*> services{
        offered<RegisterPluginVersion, exports::registerPluginVersion>(),
        offered<GetRBVersion, exports::getRBVersion>(),
        offered<RegisterClass, exports::registerClass>(),
        offered<BuildString, exports::buildString>(),
        offered<LockString, exports::lockString>(),
        offered<UnlockString, exports::unlockString>(),
        offered<GetStringEncoding, exports::getStringEncoding>(),
        offered<SetStringEncoding, exports::setStringEncoding>(),
        offered<ConvertString, exports::convertString>(),
        offered<GetStringCFString, exports::getStringCFString>(),
        offered<GetStringData, exports::getStringData>(),
        offered<DisposeStringData, exports::disposeStringData>(),
        offered<StringGetCString, exports::stringGetCString>(),
        offered<LockObject, exports::lockObject>(),
        offered<UnlockObject, exports::unlockObject>(),
        offered<NewInstance, exports::newInstance>(),
        offered<GetClassRef, exports::getClassRef>(),
        offered<ObjectIsA, exports::objectIsA>(),
        offered<RaiseException, exports::raiseException>(),
        offered<LoadGlobalMethod, exports::loadGlobalMethod>(),
        offered<LoadObjectMethod, exports::loadObjectMethod>(),
        offered<GetPropValueInt32, exports::getInt32>(),
        offered<GetPropValueInt64, exports::getInt64>(),
        offered<GetPropValueUInt8, exports::getBoolean>(),
        offered<GetPropValueSingle, exports::getSingle>(),
        offered<GetPropValueDouble, exports::getDouble>(),
        offered<GetPropValueString, exports::getString>(),
        offered<GetPropValueObject, exports::getObject>(),
        offered<SetPropValueInt32, exports::setInt32>(),
        offered<SetPropValueString, exports::setString>(),
        offered<StringToVariant, exports::stringToVariant>(),
        offered<Int32ToVariant, exports::int32ToVariant>(),
        offered<UInt32ToVariant, exports::uint32ToVariant>(),
        offered<Int64ToVariant, exports::int64ToVariant>(),
        offered<UInt64ToVariant, exports::uint64ToVariant>(),
        offered<SingleToVariant, exports::singleToVariant>(),
        offered<DoubleToVariant, exports::doubleToVariant>(),
        offered<BooleanToVariant, exports::booleanToVariant>(),
        offered<VariantToInt32, exports::variantToInt32>(),
        offered<VariantToInt64, exports::variantToInt64>(),
        offered<VariantToSingle, exports::variantToSingle>(),
        offered<VariantToDouble, exports::variantToDouble>(),
        offered<VariantToString, exports::variantToString>(),
        offered<ArrayUBound, exports::arrayUBound>(),
        offered<ArrayInsertProc, exports::arrayInsertProc>(),
        offered<ArrayGetProc, exports::arrayGetProc>(),
        offered<CreateArray, exports::createArray>(),
        offered<NewMemoryBlock, exports::newMemoryBlock>(),
        offered<MemoryBlockGetPtr, exports::memoryBlockGetPtr>(),
        offered<MemoryBlockGetSize, exports::memoryBlockGetSize>(),
        offered<FSRefFromFolderItem, exports::fsRefFromFolderItem>(),
        offered<FSSpecFromFolderItem, exports::fsSpecFromFolderItem>(),
        offered<FolderItemFromParentFSRef, exports::folderItemFromParentFSRef>(),
        offered<FolderItemFromFSSpec, exports::folderItemFromFSSpec>(),
        offered<NewPicture, exports::newPicture>(),
        offered<LockPictureDescriptionOlder, exports::lockPictureDescriptionOlder>(),
        offered<LockPictureDescription, exports::lockPictureDescription>(),
        offered<UnlockPictureDescription, exports::unlockPictureDescription>(),
        offered<PictureClearCache, exports::pictureClearCache>(),
        offered<GetPictureGraphics, exports::getPictureGraphics>(),
        offered<GetPictureMask, exports::getPictureMask>(),
        offered<CopyPictureCGImage, exports::copyPictureCGImage>(),
        offered<YieldToRB, exports::yieldToRB>(),
        offered<InDebugMode, exports::inDebugMode>(),
        offered<MessageBox, exports::messageBox>(),
    };
    return services;
}

/// Pictures are made otherwise in this host.
constexpr std::array laterServices{
    REALservices::BuildPictureFromBuffer.name,
};

/// Services that older hosts did not have, with the first version that did.
struct Introduction {
    const char* name;
    double version;
};
constexpr std::array introductions{
    Introduction{REALservices::GetStringCFString.name, 2009.0},
    Introduction{REALservices::GetStringData.name, 2012.0},
    Introduction{REALservices::DisposeStringData.name, 2012.0},
};

bool exists(const Service& service, double version) {
    const auto found =
        std::ranges::find(introductions, std::string_view(service.name),
                          [](const Introduction& entry) { return std::string_view(entry.name); });
    return found == introductions.end() || version >= found->version;
}

Service* find(std::string_view name) {
    const auto found = std::ranges::find(
        table(), name, [](const Service* service) { return std::string_view(service->name); });
    return found == table().end() ? nullptr : *found;
}

std::map<std::string, int, std::less<>>& lookupCounts() {
    static std::map<std::string, int, std::less<>> counts;
    return counts;
}

} // namespace

void* Services::resolve(const char* name) {
    if (!name) {
        Runtime::current().reportMisuse("the resolver was asked for a service without a name");
        return nullptr;
    }
    if (!Runtime::current().onHostThread()) {
        Runtime::current().reportMisuse(std::string(name) + " was looked up on another thread");
        return nullptr;
    }
    ++lookupCounts()[name];
    return isOffered(name) ? find(name)->address : nullptr;
}

std::vector<std::string_view> Services::offered(double version) {
    std::vector<std::string_view> names;
    for (const Service* service : table())
        if (exists(*service, version)) names.emplace_back(service->name);
    return names;
}

std::vector<std::string_view> Services::later() {
    return {laterServices.begin(), laterServices.end()};
}

int Services::lookups(std::string_view name) {
    const auto found = lookupCounts().find(name);
    return found == lookupCounts().end() ? 0 : found->second;
}

int Services::calls(std::string_view name) {
    const Service* const service = find(name);
    return service ? service->calls : 0;
}

bool Services::isOffered(std::string_view name) {
    const Service* const service = find(name);
    return service && !service->withdrawn && exists(*service, Runtime::current().options().version);
}

bool Services::offer(std::string_view name, bool offered) {
    Service* const service = find(name);
    if (service) service->withdrawn = !offered;
    return service != nullptr;
}

void Services::fail(std::string_view name, int times) {
    if (Service* const service = find(name)) service->failures = times;
}

void Services::replaceFunction(std::string_view name, void* replacement) {
    if (Service* const service = find(name)) service->replacement = replacement;
}

void Services::reset() {
    lookupCounts().clear();
    for (Service* service : table())
        *service = Service{service->name, service->address};
}

} // namespace host
