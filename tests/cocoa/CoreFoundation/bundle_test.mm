#import <Foundation/Foundation.h>

#include <Carbon/Carbon.h>

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

/// The bundle of a folder in the frameworks' folder; null when there is none.
CFBundleRef bundleNamed(NSString* name) {
    NSString* const path = [@FRAMEWORKS_FOLDER stringByAppendingPathComponent:name];
    return CFBundleCreate(nullptr, (CFURLRef)[NSURL fileURLWithPath:path]);
}

struct Bundles : testing::Test {
    ~Bundles() override {
        if (bundle) CFRelease(bundle);
        [pool release];
    }
    NSAutoreleasePool* const pool = [[NSAutoreleasePool alloc] init];
    CFBundleRef const bundle = bundleNamed(@"ApplicationServices.framework");
};

TEST_F(Bundles, AreThoseOfFolders) {
    ASSERT_NE(bundle, nullptr);
    EXPECT_EQ(CFGetTypeID(bundle), CFBundleGetTypeID());
    CFURLRef const url = CFBundleCopyBundleURL(bundle);
    EXPECT_STREQ([[(NSURL*)url path] UTF8String],
                 FRAMEWORKS_FOLDER "/ApplicationServices.framework");
    CFRelease(url);
}

TEST_F(Bundles, AreNullForWhatIsNoFolder) {
    EXPECT_EQ(bundleNamed(@"NoSuch.framework"), nullptr);
    EXPECT_EQ(bundleNamed(@"ApplicationServices.framework/ApplicationServices"), nullptr);
    EXPECT_EQ(CFBundleCreate(nullptr, nullptr), nullptr);
    EXPECT_EQ(CFBundleCreate(nullptr, (CFURLRef)[NSURL URLWithString:@"http://example.org/a"]),
              nullptr);
}

TEST_F(Bundles, GiveTheFunctionsOfTheirExecutable) {
    ASSERT_TRUE(CFBundleLoadExecutable(bundle));
    auto* const unlock = reinterpret_cast<void (*)(void*)>(
        CFBundleGetFunctionPointerForName(bundle, CFSTR("UnlockPixels")));
    ASSERT_NE(unlock, nullptr);
    int argument = 0;
    unlock(&argument);
    EXPECT_EQ(
        *static_cast<void**>(CFBundleGetFunctionPointerForName(bundle, CFSTR("unlockedLast"))),
        &argument);
    EXPECT_EQ(CFBundleGetFunctionPointerForName(bundle, CFSTR("LockPixels")), nullptr);
}

TEST_F(Bundles, LoadTheirExecutableWhenAFunctionIsAskedFor) {
    EXPECT_NE(CFBundleGetFunctionPointerForName(bundle, CFSTR("UnlockPixels")), nullptr);
}

TEST_F(Bundles, WithoutAnExecutableGiveNothing) {
    CFBundleRef const folder = CFBundleCreate(nullptr, (CFURLRef)[NSURL fileURLWithPath:@"/usr"]);
    ASSERT_NE(folder, nullptr);
    EXPECT_FALSE(CFBundleLoadExecutable(folder));
    EXPECT_EQ(CFBundleGetFunctionPointerForName(folder, CFSTR("UnlockPixels")), nullptr);
    CFRelease(folder);
    EXPECT_FALSE(CFBundleLoadExecutable(nullptr));
    EXPECT_EQ(CFBundleGetFunctionPointerForName(bundle, nullptr), nullptr);
}

TEST_F(Bundles, DescribeThemselvesByTheirPath) {
    NSString* const text = [(NSString*)CFCopyDescription(bundle) autorelease];
    EXPECT_TRUE([text hasSuffix:@"ApplicationServices.framework"]) << [text UTF8String];
}

struct SystemFolders : testing::Test {
    ~SystemFolders() override { unsetenv("COCOA_FRAMEWORKS_FOLDER"); }
    FSRef found = {};
};

TEST_F(SystemFolders, AreFoundByTheirKind) {
    setenv("COCOA_FRAMEWORKS_FOLDER", FRAMEWORKS_FOLDER, 1);
    ASSERT_EQ(FSFindFolder(kSystemDomain, kFrameworksFolderType, true, &found), noErr);
    UInt8 path[4096];
    ASSERT_EQ(FSRefMakePath(&found, path, sizeof path), noErr);
    EXPECT_STREQ(reinterpret_cast<char*>(path), FRAMEWORKS_FOLDER);
}

TEST_F(SystemFolders, ThatAreNotThereAreNotFound) {
    setenv("COCOA_FRAMEWORKS_FOLDER", FRAMEWORKS_FOLDER "/none", 1);
    EXPECT_EQ(FSFindFolder(kSystemDomain, kFrameworksFolderType, true, &found), fnfErr);
    setenv("COCOA_FRAMEWORKS_FOLDER",
           FRAMEWORKS_FOLDER "/ApplicationServices.framework/ApplicationServices", 1);
    EXPECT_EQ(FSFindFolder(kSystemDomain, kFrameworksFolderType, false, &found), fnfErr);
}

TEST_F(SystemFolders, OfUnknownKindsAreNotFound) {
    EXPECT_EQ(FSFindFolder(0, kFrameworksFolderType, false, &found), fnfErr);
    EXPECT_EQ(FSFindFolder(kSystemDomain, 'temp', false, &found), fnfErr);
    EXPECT_EQ(FSFindFolder(kSystemDomain, kFrameworksFolderType, false, nullptr), paramErr);
}

} // namespace
