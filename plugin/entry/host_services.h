#pragma once

/// The host's services under the names of its SDK. Each is a callable of one service's signature;
/// see sdk/services.h for the signatures and sdk/host_service.h for what a missing service does.

#include "sdk/host_service.h"
#include "sdk/registration.h"

#include <type_traits>

/// The callable of one service of the list, for example HostService<REALservices::LockObject>.
template <const auto& descriptor>
class HostService
    : public REALhostService<typename std::remove_cvref_t<decltype(descriptor)>::Function> {
public:
    constexpr HostService()
        : REALhostService<typename std::remove_cvref_t<decltype(descriptor)>::Function>(
              descriptor) {}
};

// Strings
inline constinit HostService<REALservices::BuildString> REALBuildString;
inline constinit HostService<REALservices::LockString> REALLockString;
inline constinit HostService<REALservices::UnlockString> REALUnlockString;
inline constinit HostService<REALservices::GetStringEncoding> REALGetStringEncoding;
inline constinit HostService<REALservices::SetStringEncoding> REALSetStringEncoding;
inline constinit HostService<REALservices::ConvertString> REALConvertString;
inline constinit HostService<REALservices::DisposeStringData> REALDisposeStringData;
/// One service in two slots: hosts from 2012.0 on are asked through the first one before.
inline constinit HostService<REALservices::GetStringCFString> REALCopyStringCFString;
inline constinit HostService<REALservices::GetStringCFString> REALGetStringCFString;

/// Copies a string's bytes into `data`, converted to `encoding`, or as they are for
/// REALtextEncodingNone. Returns whether `data` was filled; its buffer, which ends with four zero
/// bytes, then belongs to the caller (see StringData in references.h).
///
/// Without the host's service the copy is made here. For bytes as they are, the buffer then has
/// room for as many bytes as the length field of `data` says on entry, or for the string if that is
/// longer. A null string gives false.
bool REALGetStringData(REALstringStruct* string, std::uint32_t encoding, REALstringData* data);

// Objects and classes
inline constinit HostService<REALservices::LockObject> REALLockObject;
inline constinit HostService<REALservices::UnlockObject> REALUnlockObject;
inline constinit HostService<REALservices::NewInstance> REALnewInstance;
inline constinit HostService<REALservices::GetClassRef> REALGetClassRef;
inline constinit HostService<REALservices::ObjectIsA> REALObjectIsA;
inline constinit HostService<REALservices::RaiseException> REALRaiseException;

// Members by name
inline constinit HostService<REALservices::LoadGlobalMethod> REALLoadFrameworkMethod;
inline constinit HostService<REALservices::LoadObjectMethod> REALLoadObjectMethod;
inline constinit HostService<REALservices::GetPropValueInt32> REALGetPropValueInt32;
inline constinit HostService<REALservices::GetPropValueInt64> REALGetPropValueInt64;
inline constinit HostService<REALservices::GetPropValueUInt8> REALGetPropValueUInt8;
inline constinit HostService<REALservices::GetPropValueSingle> REALGetPropValueSingle;
inline constinit HostService<REALservices::GetPropValueDouble> REALGetPropValueDouble;
inline constinit HostService<REALservices::GetPropValueString> REALGetPropValueString;
inline constinit HostService<REALservices::GetPropValueObject> REALGetPropValueObject;
inline constinit HostService<REALservices::SetPropValueInt32> REALSetPropValueInt32;
inline constinit HostService<REALservices::SetPropValueString> REALSetPropValueString;

// Variants
inline constinit HostService<REALservices::StringToVariant> REALNewVariantString;
inline constinit HostService<REALservices::Int32ToVariant> REALNewVariantInteger;
inline constinit HostService<REALservices::UInt32ToVariant> REALNewVariantUInt32;
inline constinit HostService<REALservices::Int64ToVariant> REALNewVariantInt64;
inline constinit HostService<REALservices::UInt64ToVariant> REALNewVariantUInt64;
inline constinit HostService<REALservices::SingleToVariant> REALNewVariantSingle;
inline constinit HostService<REALservices::DoubleToVariant> REALNewVariantDouble;
inline constinit HostService<REALservices::BooleanToVariant> REALNewVariantBoolean;
inline constinit HostService<REALservices::VariantToInt32> REALVariantToInt32;
inline constinit HostService<REALservices::VariantToInt64> REALVariantToInt64;
inline constinit HostService<REALservices::VariantToSingle> REALVariantToSingle;
inline constinit HostService<REALservices::VariantToDouble> REALVariantToDouble;
inline constinit HostService<REALservices::VariantToString> REALVariantToString;

// Arrays
inline constinit HostService<REALservices::CreateArray> REALCreateArray;
inline constinit HostService<REALservices::ArrayUBound> REALGetArrayUBound;
inline constinit HostService<REALservices::ArrayInsertProc> REALGetArrayInsertProc;
inline constinit HostService<REALservices::ArrayGetProc> REALGetArrayGetProc;

/// Inserts an element; the array takes a reference of its own. Nothing happens when the host does
/// not tell how.
inline void REALInsertArrayValueString(REALarrayStruct* array, std::int32_t index,
                                       REALstringStruct* element) {
    if (auto* const insert = reinterpret_cast<REALarrayInsertString>(REALGetArrayInsertProc(array)))
        insert(array, index, element);
}
inline void REALInsertArrayValueObject(REALarrayStruct* array, std::int32_t index,
                                       REALobjectStruct* element) {
    if (auto* const insert = reinterpret_cast<REALarrayInsertObject>(REALGetArrayInsertProc(array)))
        insert(array, index, element);
}

/// The function that reads the elements of an array; null when the host does not tell. Hosts up to
/// version 2013.9 may have put it into the array itself.
template <typename Element>
REALarrayGet<Element> REALGetArrayGetter(REALarrayStruct* array) {
    constexpr double lastVersionWithCarriedGetters = 2013.9;
    void* const carried =
        rbversion <= lastVersionWithCarriedGetters ? array->elementGetter : nullptr;
    return reinterpret_cast<REALarrayGet<Element>>(carried ? carried : REALGetArrayGetProc(array));
}

// Memory blocks
inline constinit HostService<REALservices::NewMemoryBlock> REALNewMemoryBlockOriginal;
inline constinit HostService<REALservices::MemoryBlockGetPtr> REALMemoryBlockGetPtr;
inline constinit HostService<REALservices::MemoryBlockGetSize> REALMemoryBlockGetSize;

// Folder items
inline constinit HostService<REALservices::FSRefFromFolderItem> REALFSRefFromFolderItem;
inline constinit HostService<REALservices::FSSpecFromFolderItem> REALFSSpecFromFolderItem;
inline constinit HostService<REALservices::FolderItemFromParentFSRef> REALFolderItemFromParentFSRef;
inline constinit HostService<REALservices::FolderItemFromFSSpec> REALFolderItemFromFSSpec;

// Pictures
inline constinit HostService<REALservices::NewPicture> REALNewPicture;
inline constinit HostService<REALservices::BuildPictureFromBuffer> REALBuildPictureFromBuffer;
inline constinit HostService<REALservices::UnlockPictureDescription> REALUnlockPictureDescription;
inline constinit HostService<REALservices::PictureClearCache> REALPictureClearCache;
inline constinit HostService<REALservices::GetPictureGraphics> REALGetPictureGraphics;
inline constinit HostService<REALservices::GetPictureMask> REALGetPictureMask;
inline constinit HostService<REALservices::CopyPictureCGImage> REALCopyPictureCGImage;

/// The older of the two leaves the type of the description to the host.
inline std::uint8_t REALLockPictureDescription(REALpictureStruct* picture,
                                               REALpictureDescription* description) {
    static constinit HostService<REALservices::LockPictureDescriptionOlder> lock;
    return lock(picture, description);
}
inline std::uint8_t REALLockPictureDescription(REALpictureStruct* picture,
                                               REALpictureDescription* description,
                                               std::uint32_t type) {
    static constinit HostService<REALservices::LockPictureDescription> lock;
    return lock(picture, description, type);
}

// The application
inline constinit HostService<REALservices::YieldToRB> REALYieldToRB;
inline constinit HostService<REALservices::InDebugMode> REALInDebugMode;
inline constinit HostService<REALservices::MessageBox> REALMessageBox;
