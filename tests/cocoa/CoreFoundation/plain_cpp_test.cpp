#include <Carbon/Files.h>
#include <CoreFoundation/CoreFoundation.h>

#include "sdk/services.h"

#include <gtest/gtest.h>

extern "C" int lengthOfAConstantInC(void);

namespace {

TEST(Headers, ServePlainC) { EXPECT_EQ(lengthOfAConstantInC(), 4); }

TEST(Headers, ServePlainCPlusPlus) {
    EXPECT_EQ(CFStringGetLength(CFSTR("five!")), 5);
    EXPECT_EQ(CFSTR("five!"), CFSTR("five!"));
}

// The 32-bit layouts that programs on a Mac are compiled with.
TEST(Headers, KeepTheLayoutsOfTheirRecords) {
    EXPECT_EQ(sizeof(FSRef), 80U);
    EXPECT_EQ(sizeof(FSSpec), 70U);
    EXPECT_EQ(offsetof(FSSpec, parID), 2U);
    EXPECT_EQ(offsetof(FSSpec, name), 6U);
    EXPECT_EQ(sizeof(HFSUniStr255), 512U);
    EXPECT_EQ(sizeof(FSCatalogInfo), 144U);
    EXPECT_EQ(offsetof(FSCatalogInfo, nodeID), 8U);
    EXPECT_EQ(offsetof(FSCatalogInfo, dataLogicalSize), 104U);
    EXPECT_EQ(sizeof(CFIndex), sizeof(void*));
}

} // namespace
