#include "plugin/entry/host_services.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

/// A host that offers nothing and remembers what it is asked for.
namespace {

std::map<std::string, int> lookups;

void* resolve_nothing(const char* name) {
    ++lookups[name];
    return nullptr;
}

class HostServices : public testing::Test {
protected:
    HostServices() { gResolver = resolve_nothing; }
    ~HostServices() override { gResolver = nullptr; }
};

/// Calls a wrapper twice with neutral arguments: it has to ask for its service each time and to
/// answer the neutral value.
template <typename Result, typename... Arguments>
void expect_service(REALhostService<Result(Arguments...)>& wrapper, const char* service) {
    for (int i = 1; i <= 2; ++i) {
        if constexpr (std::is_void_v<Result>)
            wrapper(Arguments()...);
        else
            EXPECT_EQ(wrapper(Arguments()...), Result()) << service;
        EXPECT_EQ(lookups[service], i) << service;
    }
    lookups.clear();
}

TEST_F(HostServices, OfStringsAreFoundByTheirNames) {
    expect_service(REALBuildString, "REALBuildString");
    expect_service(REALLockString, "REALLockString");
    expect_service(REALUnlockString, "REALUnlockString");
    expect_service(REALGetStringEncoding, "REALGetStringEncoding");
    expect_service(REALSetStringEncoding, "REALSetStringEncoding");
    expect_service(REALConvertString, "REALConvertString");
    expect_service(REALDisposeStringData, "PluginDisposeStringData");
    expect_service(REALCopyStringCFString, "REALGetStringCFString");
    expect_service(REALGetStringCFString, "REALGetStringCFString");
}

TEST_F(HostServices, OfObjectsAreFoundByTheirNames) {
    expect_service(REALLockObject, "REALLockObject");
    expect_service(REALUnlockObject, "REALUnlockObject");
    expect_service(REALnewInstance, "PluginNewInstance");
    expect_service(REALGetClassRef, "pluginObjectType");
    expect_service(REALObjectIsA, "RuntimeObjectIsa");
    expect_service(REALRaiseException, "RuntimeRaiseException");
}

TEST_F(HostServices, OfMembersAreFoundByTheirNames) {
    expect_service(REALLoadFrameworkMethod, "REALLoadGlobalMethod");
    expect_service(REALLoadObjectMethod, "REALLoadObjectMethod");
    expect_service(REALGetPropValueInt32, "REALGetPropValueInt");
    expect_service(REALGetPropValueString, "REALGetPropValueString");
    expect_service(REALGetPropValueDouble, "REALGetPropValueDouble");
    expect_service(REALGetPropValueObject, "REALGetPropValueObject");
    expect_service(REALGetPropValueInt64, "REALGetPropValueInt64");
    expect_service(REALGetPropValueUInt8, "REALGetPropValueBool");
    expect_service(REALGetPropValueSingle, "REALGetPropValueSingle");
    expect_service(REALSetPropValueInt32, "REALSetPropValueInt");
    expect_service(REALSetPropValueString, "REALSetPropValueString");
}

TEST_F(HostServices, OfVariantsAreFoundByTheirNames) {
    expect_service(REALNewVariantString, "StringToVariant");
    expect_service(REALNewVariantInteger, "Int32ToVariant");
    expect_service(REALNewVariantDouble, "DoubleToVariant");
    expect_service(REALNewVariantBoolean, "BooleanToVariant");
    expect_service(REALNewVariantUInt32, "UInt32ToVariant");
    expect_service(REALNewVariantInt64, "Int64ToVariant");
    expect_service(REALNewVariantUInt64, "UInt64ToVariant");
    expect_service(REALNewVariantSingle, "SingleToVariant");
}

TEST_F(HostServices, OfArraysAndMemoryBlocksAreFoundByTheirNames) {
    expect_service(REALCreateArray, "RuntimeArrayCreateSingleDimBoundedArray");
    expect_service(REALGetArrayUBound, "RuntimeUBound");
    expect_service(REALGetArrayInsertProc, "RuntimeArrayDirectGetInsertProc");
    expect_service(REALGetArrayGetProc, "RuntimeArrayDirectGetGetProc");
    expect_service(REALNewMemoryBlockOriginal, "newMemoryBlock");
    expect_service(REALMemoryBlockGetPtr, "memoryBlockGetPtr");
    expect_service(REALMemoryBlockGetSize, "memoryBlockGetSize");
}

TEST_F(HostServices, OfFolderItemsAreFoundByTheirNames) {
    expect_service(REALFSRefFromFolderItem, "REALFSRefFromFolderItem");
    expect_service(REALFSSpecFromFolderItem, "REALFSSpecFromFolderItem");
    expect_service(REALFolderItemFromParentFSRef, "REALFolderItemFromParentFSRef");
    expect_service(REALFolderItemFromFSSpec, "FolderItemFromFSSpec");
}

TEST_F(HostServices, OfPicturesAreFoundByTheirNames) {
    expect_service(REALNewPicture, "newPicture");
    expect_service(REALBuildPictureFromBuffer, "REALBuildPictureFromBuffer");
    expect_service(REALUnlockPictureDescription, "unlockPictureDescription");
    expect_service(REALPictureClearCache, "REALPictureClearCache");
    expect_service(REALGetPictureGraphics, "pluginPictureGraphicsGetter");
    expect_service(REALGetPictureMask, "REALGetPictureMask");
    expect_service(REALCopyPictureCGImage, "REALCopyPictureCGImage");
}

TEST_F(HostServices, ThatLockAPictureAreTwoOfTheirOwn) {
    EXPECT_EQ(REALLockPictureDescription(nullptr, nullptr), 0);
    EXPECT_EQ(lookups["lockPictureDescription"], 1);
    EXPECT_EQ(lookups["REALLockPictureDescription"], 0);
    EXPECT_EQ(REALLockPictureDescription(nullptr, nullptr, 8), 0);
    EXPECT_EQ(lookups["lockPictureDescription"], 1);
    EXPECT_EQ(lookups["REALLockPictureDescription"], 1);
}

TEST_F(HostServices, OfTheApplicationAreFoundByTheirNames) {
    expect_service(REALYieldToRB, "REALYieldToRB");
    expect_service(REALInDebugMode, "REALInDebugMode");
    expect_service(REALMessageBox, "RuntimeMsgBox");
}

} // namespace
