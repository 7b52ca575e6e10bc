#pragma once

/// The functions behind the services, one for each that the host offers. Their signatures are
/// checked against the interface's list where the table is made.

#include "sdk/services.h"

namespace host::exports {

// Registration
void registerPluginVersion(std::int32_t controlVersion);
double getRBVersion();
void registerClass(REALclassDefinition* definition);

// Strings
REALstringStruct* buildString(const char* bytes, std::int32_t count);
void lockString(REALstringStruct* string);
void unlockString(REALstringStruct* string);
std::uint32_t getStringEncoding(REALstringStruct* string);
void setStringEncoding(REALstringStruct* string, std::uint32_t encoding);
REALstringStruct* convertString(REALstringStruct* string, std::uint32_t encoding);
CFStringRef getStringCFString(REALstringStruct* string, std::uint8_t flag);
std::uint8_t getStringData(REALstringStruct* string, std::uint32_t encoding, REALstringData* data);
void disposeStringData(REALstringData* data);
const char* stringGetCString(REALstringStruct* string);

// Objects and classes
void lockObject(REALobjectStruct* object);
void unlockObject(REALobjectStruct* object);
REALobjectStruct* newInstance(const char* className);
REALclassRef getClassRef(const char* className);
std::uint8_t objectIsA(REALobjectStruct* object, REALclassRef classRef);
void raiseException(REALobjectStruct* exception);

// Members by name
void* loadGlobalMethod(void* reserved, const char* declaration);
void* loadObjectMethod(REALobjectStruct* object, const char* declaration);
std::uint8_t getInt32(REALobjectStruct* object, const char* name, std::int32_t* value);
std::uint8_t getInt64(REALobjectStruct* object, const char* name, std::int64_t* value);
std::uint8_t getBoolean(REALobjectStruct* object, const char* name, std::uint8_t* value);
std::uint8_t getSingle(REALobjectStruct* object, const char* name, float* value);
std::uint8_t getDouble(REALobjectStruct* object, const char* name, double* value);
std::uint8_t getString(REALobjectStruct* object, const char* name, REALstringStruct** value);
std::uint8_t getObject(REALobjectStruct* object, const char* name, REALobjectStruct** value);
std::uint8_t setInt32(REALobjectStruct* object, const char* name, std::int32_t value);
std::uint8_t setString(REALobjectStruct* object, const char* name, REALstringStruct* value);

// Variants
REALobjectStruct* stringToVariant(REALstringStruct* value);
REALobjectStruct* int32ToVariant(std::int32_t value);
REALobjectStruct* uint32ToVariant(std::uint32_t value);
REALobjectStruct* int64ToVariant(std::int64_t value);
REALobjectStruct* uint64ToVariant(std::uint64_t value);
REALobjectStruct* singleToVariant(float value);
REALobjectStruct* doubleToVariant(double value);
REALobjectStruct* booleanToVariant(std::uint8_t value);
std::int32_t variantToInt32(REALobjectStruct* value);
std::int64_t variantToInt64(REALobjectStruct* value);
float variantToSingle(REALobjectStruct* value);
double variantToDouble(REALobjectStruct* value);
REALstringStruct* variantToString(REALobjectStruct* value);

// Arrays
std::int32_t arrayUBound(REALarrayStruct* array);
void* arrayInsertProc(REALarrayStruct* array);
void* arrayGetProc(REALarrayStruct* array);
REALarrayStruct* createArray(std::int32_t elementType, std::int32_t upperBound);

// MemoryBlocks
REALmemoryBlockStruct* newMemoryBlock(std::int32_t size);
void* memoryBlockGetPtr(REALmemoryBlockStruct* block);
std::int32_t memoryBlockGetSize(REALmemoryBlockStruct* block);

// Folder items
std::uint8_t fsRefFromFolderItem(REALfolderItemStruct* item, FSRef* ref, HFSUniStr255* name);
std::uint8_t fsSpecFromFolderItem(REALfolderItemStruct* item, FSSpec* spec);
REALfolderItemStruct* folderItemFromParentFSRef(const FSRef* parent, const HFSUniStr255* name);
REALfolderItemStruct* folderItemFromFSSpec(const FSSpec* spec);

// Pictures
REALpictureStruct* newPicture(std::int32_t width, std::int32_t height, std::int32_t depth);
std::uint8_t lockPictureDescriptionOlder(REALpictureStruct* picture,
                                         REALpictureDescription* description);
std::uint8_t lockPictureDescription(REALpictureStruct* picture, REALpictureDescription* description,
                                    std::uint32_t type);
void unlockPictureDescription(REALpictureStruct* picture);
void pictureClearCache(REALpictureStruct* picture);
REALgraphicsStruct* getPictureGraphics(REALpictureStruct* picture);
REALpictureStruct* getPictureMask(REALpictureStruct* picture, std::uint8_t create);
CGImageRef copyPictureCGImage(REALpictureStruct* picture);

// The application
void yieldToRB();
std::uint8_t inDebugMode();
void messageBox(REALstringStruct* message);

} // namespace host::exports
