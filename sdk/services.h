#pragma once

/// Every service that a host offers to plug-ins, with its C signature.
///
/// This list is the only place where a signature is written: a plug-in calls a service through a
/// HostService of its descriptor, the host exports one function per descriptor, and neither
/// compiles against another type.
///
/// Byte flags are `std::uint8_t`, 1 for true. Object and string results carry one reference for the
/// caller unless said otherwise; arguments are borrowed.

#include "sdk/records.h"
#include "sdk/types.h"

#include <CoreFoundation/CoreFoundation.h>

struct FSRef;
struct FSSpec;
struct HFSUniStr255;
typedef struct CGImage* CGImageRef;

/// The name of a host service and the type of its function.
template <typename Function>
struct REALservice;

template <typename Result, typename... Arguments>
struct REALservice<Result(Arguments...)> {
    using Function = Result(Arguments...);
    const char* name;
};

/// Maps the name of a service to its address; null when the host does not offer it.
using REALresolver = void* (*)(const char* name);

/// What a plug-in exports.
using REALpluginEntry = void (*)(REALresolver resolver);
inline constexpr const char* REALpluginEntryName = "REALPluginMain";

// SERVICE(identifier, name, result, (parameters))
// clang-format off
#define REAL_HOST_SERVICES(SERVICE)                                                                                                     \
    /* Registration */                                                                                                                  \
    SERVICE(RegisterPluginVersion, "RegisterPluginVersion", void, (std::int32_t controlVersion))                                        \
    SERVICE(GetRBVersion, "REALGetRBVersion", double, ())                                                                               \
    SERVICE(RegisterClass, "PluginRegisterClass", void, (REALclassDefinition * definition))                                             \
    /* Strings */                                                                                                                       \
    SERVICE(BuildString, "REALBuildString", REALstringStruct*, (const char* bytes, std::int32_t count))                                 \
    SERVICE(LockString, "REALLockString", void, (REALstringStruct * string))                                                            \
    SERVICE(UnlockString, "REALUnlockString", void, (REALstringStruct * string))                                                        \
    SERVICE(GetStringEncoding, "REALGetStringEncoding", std::uint32_t, (REALstringStruct * string))                                     \
    SERVICE(SetStringEncoding, "REALSetStringEncoding", void, (REALstringStruct * string, std::uint32_t encoding))                      \
    SERVICE(ConvertString, "REALConvertString", REALstringStruct*, (REALstringStruct * string, std::uint32_t encoding))                 \
    SERVICE(GetStringCFString, "REALGetStringCFString", CFStringRef, (REALstringStruct * string, std::uint8_t flag))                    \
    SERVICE(GetStringData, "PluginGetStringData", std::uint8_t, (REALstringStruct * string, std::uint32_t encoding, REALstringData* data)) \
    SERVICE(DisposeStringData, "PluginDisposeStringData", void, (REALstringData * data))                                                \
    SERVICE(StringGetCString, "StringGetCString", const char*, (REALstringStruct * string))                                             \
    /* Objects and classes */                                                                                                           \
    SERVICE(LockObject, "REALLockObject", void, (REALobjectStruct * object))                                                            \
    SERVICE(UnlockObject, "REALUnlockObject", void, (REALobjectStruct * object))                                                        \
    SERVICE(NewInstance, "PluginNewInstance", REALobjectStruct*, (const char* className))                                               \
    SERVICE(GetClassRef, "pluginObjectType", REALclassRef, (const char* className))                                                     \
    SERVICE(ObjectIsA, "RuntimeObjectIsa", std::uint8_t, (REALobjectStruct * object, REALclassRef classRef))                            \
    SERVICE(RaiseException, "RuntimeRaiseException", void, (REALobjectStruct * exception))                                              \
    /* Members by name. The loaders take a declaration and return a function of its C shape, which     */                               \
    /* takes the object first when it is a method; the property readers say whether there is such a one. */                             \
    SERVICE(LoadGlobalMethod, "REALLoadGlobalMethod", void*, (void* reserved, const char* declaration))                                 \
    SERVICE(LoadObjectMethod, "REALLoadObjectMethod", void*, (REALobjectStruct * object, const char* declaration))                      \
    SERVICE(GetPropValueInt32, "REALGetPropValueInt", std::uint8_t, (REALobjectStruct * object, const char* name, std::int32_t* value)) \
    SERVICE(GetPropValueInt64, "REALGetPropValueInt64", std::uint8_t, (REALobjectStruct * object, const char* name, std::int64_t* value)) \
    SERVICE(GetPropValueUInt8, "REALGetPropValueBool", std::uint8_t, (REALobjectStruct * object, const char* name, std::uint8_t* value)) \
    SERVICE(GetPropValueSingle, "REALGetPropValueSingle", std::uint8_t, (REALobjectStruct * object, const char* name, float* value))    \
    SERVICE(GetPropValueDouble, "REALGetPropValueDouble", std::uint8_t, (REALobjectStruct * object, const char* name, double* value))   \
    SERVICE(GetPropValueString, "REALGetPropValueString", std::uint8_t, (REALobjectStruct * object, const char* name, REALstringStruct** value)) \
    SERVICE(GetPropValueObject, "REALGetPropValueObject", std::uint8_t, (REALobjectStruct * object, const char* name, REALobjectStruct** value)) \
    SERVICE(SetPropValueInt32, "REALSetPropValueInt", std::uint8_t, (REALobjectStruct * object, const char* name, std::int32_t value))  \
    SERVICE(SetPropValueString, "REALSetPropValueString", std::uint8_t, (REALobjectStruct * object, const char* name, REALstringStruct* value)) \
    /* Variants */                                                                                                                      \
    SERVICE(StringToVariant, "StringToVariant", REALobjectStruct*, (REALstringStruct * value))                                          \
    SERVICE(Int32ToVariant, "Int32ToVariant", REALobjectStruct*, (std::int32_t value))                                                  \
    SERVICE(UInt32ToVariant, "UInt32ToVariant", REALobjectStruct*, (std::uint32_t value))                                               \
    SERVICE(Int64ToVariant, "Int64ToVariant", REALobjectStruct*, (std::int64_t value))                                                  \
    SERVICE(UInt64ToVariant, "UInt64ToVariant", REALobjectStruct*, (std::uint64_t value))                                               \
    SERVICE(SingleToVariant, "SingleToVariant", REALobjectStruct*, (float value))                                                       \
    SERVICE(DoubleToVariant, "DoubleToVariant", REALobjectStruct*, (double value))                                                      \
    SERVICE(BooleanToVariant, "BooleanToVariant", REALobjectStruct*, (std::uint8_t value))                                              \
    /* A Variant as a value of the type, converted as an assignment converts it; neutral when it holds nothing of the kind. */          \
    SERVICE(VariantToInt32, "VariantToInt32", std::int32_t, (REALobjectStruct * value))                                                 \
    SERVICE(VariantToInt64, "VariantToInt64", std::int64_t, (REALobjectStruct * value))                                                 \
    SERVICE(VariantToSingle, "VariantToSingle", float, (REALobjectStruct * value))                                                      \
    SERVICE(VariantToDouble, "VariantToDouble", double, (REALobjectStruct * value))                                                     \
    SERVICE(VariantToString, "VariantToString", REALstringStruct*, (REALobjectStruct * value))                                          \
    /* Arrays. The two procedure services return functions of the element type's shape. */                                              \
    SERVICE(ArrayUBound, "RuntimeUBound", std::int32_t, (REALarrayStruct * array))                                                      \
    SERVICE(ArrayInsertProc, "RuntimeArrayDirectGetInsertProc", void*, (REALarrayStruct * array))                                       \
    SERVICE(ArrayGetProc, "RuntimeArrayDirectGetGetProc", void*, (REALarrayStruct * array))                                             \
    SERVICE(CreateArray, "RuntimeArrayCreateSingleDimBoundedArray", REALarrayStruct*, (std::int32_t elementType, std::int32_t upperBound)) \
    /* Memory blocks */                                                                                                                 \
    SERVICE(NewMemoryBlock, "newMemoryBlock", REALmemoryBlockStruct*, (std::int32_t size))                                              \
    SERVICE(MemoryBlockGetPtr, "memoryBlockGetPtr", void*, (REALmemoryBlockStruct * block))                                             \
    SERVICE(MemoryBlockGetSize, "memoryBlockGetSize", std::int32_t, (REALmemoryBlockStruct * block))                                    \
    /* Folder items. With a name, FSRefFromFolderItem answers the parent and the leaf of an item that does not exist yet. */            \
    SERVICE(FSRefFromFolderItem, "REALFSRefFromFolderItem", std::uint8_t, (REALfolderItemStruct * item, FSRef* ref, HFSUniStr255* name)) \
    SERVICE(FSSpecFromFolderItem, "REALFSSpecFromFolderItem", std::uint8_t, (REALfolderItemStruct * item, FSSpec* spec))                \
    SERVICE(FolderItemFromParentFSRef, "REALFolderItemFromParentFSRef", REALfolderItemStruct*, (const FSRef* parent, const HFSUniStr255* name)) \
    SERVICE(FolderItemFromFSSpec, "FolderItemFromFSSpec", REALfolderItemStruct*, (const FSSpec* spec))                                  \
    /* Pictures. The lock services say whether they locked; the older one lets the host choose the type. */                             \
    SERVICE(NewPicture, "newPicture", REALpictureStruct*, (std::int32_t width, std::int32_t height, std::int32_t depth))                \
    SERVICE(BuildPictureFromBuffer, "REALBuildPictureFromBuffer", REALpictureStruct*, (std::int32_t width, std::int32_t height, std::uint32_t type, void* buffer, std::int32_t rowBytes)) \
    SERVICE(LockPictureDescriptionOlder, "lockPictureDescription", std::uint8_t, (REALpictureStruct * picture, REALpictureDescription* description)) \
    SERVICE(LockPictureDescription, "REALLockPictureDescription", std::uint8_t, (REALpictureStruct * picture, REALpictureDescription* description, std::uint32_t type)) \
    SERVICE(UnlockPictureDescription, "unlockPictureDescription", void, (REALpictureStruct * picture))                                  \
    SERVICE(PictureClearCache, "REALPictureClearCache", void, (REALpictureStruct * picture))                                            \
    SERVICE(GetPictureGraphics, "pluginPictureGraphicsGetter", REALgraphicsStruct*, (REALpictureStruct * picture))                      \
    SERVICE(GetPictureMask, "REALGetPictureMask", REALpictureStruct*, (REALpictureStruct * picture, std::uint8_t create))               \
    SERVICE(CopyPictureCGImage, "REALCopyPictureCGImage", CGImageRef, (REALpictureStruct * picture))                                    \
    /* The application */                                                                                                               \
    SERVICE(YieldToRB, "REALYieldToRB", void, ())                                                                                       \
    SERVICE(InDebugMode, "REALInDebugMode", std::uint8_t, ())                                                                           \
    SERVICE(MessageBox, "RuntimeMsgBox", void, (REALstringStruct * message))
// clang-format on

namespace REALservices {

#define REAL_DECLARE_SERVICE(identifier, name, result, parameters)                                 \
    inline constexpr REALservice<result parameters> identifier{name};
REAL_HOST_SERVICES(REAL_DECLARE_SERVICE)
#undef REAL_DECLARE_SERVICE

} // namespace REALservices
