#include "plugin/bridge/bridge.h"

#include <gmock/gmock.h>

#include <cstring>

using testing::ElementsAreArray;

namespace {

std::vector<std::string> asked;

REALclassRef know_no_class(const char* className) {
    asked.emplace_back(className);
    return nullptr;
}
void* load_nothing(REALobjectStruct*, const char* declaration) {
    asked.emplace_back(declaration);
    return nullptr;
}

TEST(ObjectsInCocoa, AreTestedForTheirClassInAFixedOrder) {
    Bridge bridge({.withoutBase = true});
    bridge.add_class("Stranger");
    const host::ObjectRef stranger = bridge.host.instance("Stranger");
    bridge.host.replace(REALservices::GetClassRef, know_no_class);
    bridge.host.replace(REALservices::LoadObjectMethod, load_nothing);
    EXPECT_FALSE(bridge.object_of(stranger));
    EXPECT_THAT(asked, ElementsAreArray({"MemoryBlock",
                                         "TrueItem(Index as integer) as Folderitem",
                                         "Dictionary",
                                         "NSPathComponentCellZNT",
                                         "NSPathCellZNT",
                                         "NSPathControlZNT",
                                         "NSObjectZNT",
                                         "NSPipeZNT",
                                         "NSTaskZNT",
                                         "NSFileHandleZNT",
                                         "NSClipViewZNT",
                                         "NSAnimationZNT",
                                         "NSCoderZNT",
                                         "NSTimeZoneZNT",
                                         "NSDateComponentsZNT",
                                         "NSAnimationContextZNT",
                                         "NSTimerZNT",
                                         "NSBoxZNT",
                                         "NSComboBoxZNT",
                                         "NSImageViewZNT",
                                         "NSPopUpButtonZNT",
                                         "NSTextFieldZNT",
                                         "NSSearchFieldCellZNT",
                                         "NSSecureTextFieldZNT",
                                         "NSSecureTextFieldCellZNT",
                                         "NSApplicationZNT",
                                         "NSSearchFieldZNT",
                                         "NSTabViewZNT",
                                         "NSTabViewItemZNT",
                                         "NSStepperZNT",
                                         "NSURLRequestZNT",
                                         "NSURLDownloadZNT",
                                         "NSURLConnectionZNT",
                                         "NSFontPanelZNT",
                                         "NSFontManagerZNT",
                                         "NSImageZNT",
                                         "NSImageRepZNT",
                                         "NSAffineTransformZNT",
                                         "NSFontZNT",
                                         "NSToolbarItemZNT",
                                         "NSToolbarZNT",
                                         "NSScreenZNT",
                                         "NSCharacterSetZNT",
                                         "NSTextStorageZNT",
                                         "NSColorZNT",
                                         "NSAttributedStringZNT",
                                         "NSAssertionHandlerZNT",
                                         "NSMenuZNT",
                                         "NSFontDescriptorZNT",
                                         "NSMenuItemZNT",
                                         "NSErrorZNT",
                                         "NSViewControllerZNT",
                                         "NSWindowControllerZNT",
                                         "NSHTTPCookieZNT",
                                         "NSHTTPCookieStorageZNT",
                                         "NSPasteboardZNT",
                                         "NSBundleZNT",
                                         "NSEnumeratorZNT",
                                         "NSDirectoryEnumeratorZNT",
                                         "NSRunningApplicationZNT",
                                         "NSURLCacheZNT",
                                         "NSCellZNT",
                                         "NSFileManagerZNT",
                                         "NSSoundZNT",
                                         "NSBezierPathZNT",
                                         "NSCursorZNT",
                                         "NSEventZNT",
                                         "NSIndexSetZNT",
                                         "NSCalendarZNT",
                                         "NSViewZNT",
                                         "NSWindowZNT",
                                         "NSColorListZNT",
                                         "NSColorSpaceZNT",
                                         "NSTableColumnZNT",
                                         "NSUndoManagerZNT",
                                         "NSScrollerZNT",
                                         "NSResponderZNT",
                                         "NSTextFieldCellZNT",
                                         "NSTextZNT",
                                         "NSTableHeaderViewZNT",
                                         "NSOperationZNT",
                                         "NSNotificationZNT",
                                         "NSNotificationCenterZNT",
                                         "NSDistributedNotificationCenterZNT",
                                         "QuartzFilterZNT",
                                         "NSUserDefaultsZNT",
                                         "NSDockTileZNT",
                                         "NSLocaleZNT",
                                         "NSAppleEventDescriptorZNT",
                                         "NSAppleScriptZNT",
                                         "NSTableViewZNT",
                                         "NSLayoutManagerZNT",
                                         "NSTextContainerZNT",
                                         "NSTextViewZNT",
                                         "NSTextTabZNT",
                                         "NSParagraphStyleZNT",
                                         "NSDraggingImageComponentZNT",
                                         "NSPasteboardItemZNT",
                                         "NSRunLoopZNT",
                                         "NSMetadataQueryZNT",
                                         "NSMetadataItemZNT",
                                         "NSPredicateZNT",
                                         "NSCompoundPredicateZNT",
                                         "NSSortDescriptorZNT",
                                         "NSMetadataQueryResultGroupZNT",
                                         "NSComparisonPredicateZNT",
                                         "NSExpressionZNT",
                                         "WebUIDelegateZNT",
                                         "WebResourceLoadDelegateZNT",
                                         "WebFrameLoadDelegateZNT",
                                         "WebDownloadDelegateZNT",
                                         "DRBurnZNT",
                                         "PDFAnnotationZNT",
                                         "PDFActionZNT",
                                         "NSSizeZNT",
                                         "NSRectZNT",
                                         "NSRangeZNT",
                                         "NSPointZNT",
                                         "QTKitTimeZNT",
                                         "QTKitTimeRangeZNT",
                                         "CMTimeMappingZNT",
                                         "CMTimeRangeZNT",
                                         "CMTimeZNT",
                                         "WebPolicyDelegateZNT",
                                         "CFObjectZNT",
                                         "CGColorZNT",
                                         "CGFontZNT",
                                         "CGImageZNT",
                                         "CGColorSpaceZNT",
                                         "CGPathZNT",
                                         "CGContextZNT",
                                         "CGLayerZNT"}));
}

TEST(ObjectsInCocoa, CostOneLookupAndOneTestForEachClassUpToTheFirstThatFits) {
    Bridge bridge;
    const host::ObjectRef size = bridge.host.create("NSSizeZNT", 10.0, 20.0);
    // Two classes of the host's own, 111 classes of wrappers, and this one.
    const int tests = 2 + 111 + 1;
    bridge.object_of(nullptr); // the frame looks up classes of its own, once
    const int lookupsBefore = bridge.host.calls("pluginObjectType");
    bridge.object_of(size);
    EXPECT_EQ(bridge.host.calls("pluginObjectType") - lookupsBefore, tests);
    EXPECT_LE(bridge.host.calls("RuntimeObjectIsa"), tests);
}

TEST(ObjectsInCocoa, ThatAreOfTwoOfTheClassesAreDecidedByTheFirst) {
    Bridge bridge({.withoutBase = true});
    bridge.add_class("NSRectZNT", 4);
    bridge.add_class("NSSizeZNT", 0, "NSRectZNT"); // tested before its superclass
    bridge.add_class("NSPointZNT", 0, "NSSizeZNT");
    bridge.add_class("NSMenuZNT", 0, "NSPointZNT"); // a wrapper, tested before all of them

    const auto filled = [&](const char* className) {
        host::ObjectRef object = bridge.host.instance(className);
        const float numbers[] = {1, 2, 3, 4};
        std::memcpy(REALfirstClassData(object.get()), numbers, sizeof numbers);
        return object;
    };
    const auto type = [&](const host::ObjectRef& object) -> std::string {
        return [bridge.object_of(object).get() objCType];
    };
    EXPECT_EQ(type(filled("NSRectZNT")), @encode(NSRect));
    EXPECT_EQ(type(filled("NSSizeZNT")), @encode(NSSize));
    EXPECT_EQ(type(filled("NSPointZNT")), @encode(NSSize)) << "its superclass is tested first";

    NSObject* const object = [[NSObject alloc] init];
    const host::ObjectRef menu = bridge.host.instance("NSMenuZNT");
    Bridge::first_word(menu.get()) = object;
    EXPECT_EQ(bridge.object_of(menu).get(), object);
    [object release];
}

TEST(ObjectsInCocoa, AreDataWhenTheyAreMemoryBlocks) {
    Bridge bridge;
    const Held held = bridge.object_of(bridge.host.memoryBlock("\1\2\3"));
    ASSERT_TRUE(held.is_kind_of([NSData class]));
    EXPECT_EQ(std::memcmp([held.get() bytes], "\1\2\3", 3), 0);
    EXPECT_FALSE(bridge.object_of(bridge.host.memoryBlock("")));
}

TEST(ObjectsInCocoa, AreFileURLsWhenTheyAreFolderItems) {
    Bridge bridge;
    const Held held = bridge.object_of(bridge.host.folderItem("/usr"));
    ASSERT_TRUE(held.is_kind_of([NSURL class])) << held.class_name();
    EXPECT_EQ(std::string([[held.get() path] UTF8String]), "/usr");
}

TEST(ObjectsInCocoa, AreDictionariesWhenTheyAreDictionaries) {
    Bridge bridge;
    const host::ObjectRef dictionary = bridge.host.create("Dictionary");
    bridge.host.assign(dictionary, "Value", "one", 1);
    const Held held = bridge.object_of(dictionary);
    ASSERT_TRUE(held.is_kind_of([NSDictionary class]));
    EXPECT_EQ([[held.get() objectForKey:@"one"] intValue], 1);
}

TEST(ObjectsInCocoa, AreTheirOwnWhenTheyAreWrappers) {
    Bridge bridge;
    const host::ObjectRef image = bridge.host.create("NSImageZNT", 3.0, 2.0);
    const auto wrapped = static_cast<NSImage*>(bridge.host.handle(image));
    {
        const Held held = bridge.object_of(image);
        EXPECT_EQ(held.get(), wrapped);
        EXPECT_EQ(Host::retainCount(wrapped), 2) << "none but the one that the test asked for";
    }
    EXPECT_EQ(Host::retainCount(wrapped), 1);
    EXPECT_EQ(bridge.host.references(image), 1);
}

TEST(ObjectsInCocoa, AreNilWhenTheyAreWrappersOfNothing) {
    Bridge bridge;
    EXPECT_FALSE(bridge.object_of(bridge.host.instance("NSImageZNT")));
}

TEST(ObjectsInCocoa, AreTheirOwnWhenTheyAreWrappersOfCoreFoundationObjects) {
    Bridge bridge;
    const host::ObjectRef uuid = bridge.host.shared<host::ObjectRef>("CFUUIDZNT", "Create");
    EXPECT_EQ(bridge.object_of(uuid).get(), bridge.host.handle(uuid));
    const host::ObjectRef color =
        bridge.host.shared<host::ObjectRef>("CGColorZNT", "CreateGenericRGB", 1.0, 0.0, 0.0, 1.0);
    EXPECT_EQ(bridge.object_of(color).get(), bridge.host.handle(color));
}

TEST(ObjectsInCocoa, AreValuesWhenTheyAreGeometry) {
    Bridge bridge;
    const auto value = [&](const char* className, auto... numbers) {
        return Held([bridge.object_of(bridge.host.create(className, numbers...)).get() retain]);
    };
    EXPECT_TRUE(NSEqualSizes([value("NSSizeZNT", 10.0, 20.0).get() sizeValue], NSMakeSize(10, 20)));
    EXPECT_TRUE(
        NSEqualPoints([value("NSPointZNT", 1.5, -2.0).get() pointValue], NSMakePoint(1.5, -2)));
    EXPECT_TRUE(NSEqualRects([value("NSRectZNT", 1.0, 2.0, 3.0, 4.0).get() rectValue],
                             NSMakeRect(1, 2, 3, 4)));
    EXPECT_TRUE(NSEqualRanges([value("NSRangeZNT", 4000000000U, 7U).get() rangeValue],
                              NSMakeRange(4000000000U, 7)));
}

TEST(ObjectsInCocoa, AreValuesWhenTheyAreTimes) {
    Bridge bridge;
    const auto type = [&](const char* className) -> std::string {
        return [bridge.object_of(bridge.host.instance(className)).get() objCType];
    };
    EXPECT_EQ(type("QTKitTimeZNT"), "{?=qll}");
    EXPECT_EQ(type("QTKitTimeRangeZNT"), "{?={?=qll}{?=qll}}");
    EXPECT_EQ(type("CMTimeZNT"), "{?=qiIq}");
    EXPECT_EQ(type("CMTimeRangeZNT"), "{?={?=qiIq}{?=qiIq}}");
    EXPECT_EQ(type("CMTimeMappingZNT"), "{?={?={?=qiIq}{?=qiIq}}{?={?=qiIq}{?=qiIq}}}");
}

TEST(ObjectsInCocoa, AreNilWhenTheyAreTimesThatNobodyMakesValuesOf) {
    Bridge bridge({.withoutBase = true});
    for (const char* className :
         {"QTKitTimeZNT", "QTKitTimeRangeZNT", "CMTimeMappingZNT", "CMTimeRangeZNT", "CMTimeZNT"}) {
        bridge.add_class(className, 40);
        EXPECT_FALSE(bridge.object_of(bridge.host.instance(className))) << className;
    }
}

TEST(ObjectsInCocoa, OfOtherClassesAreDressedByTheBasePart) {
    Bridge bridge;
    bridge.add_class("Stranger");
    const host::ObjectRef stranger = bridge.host.instance("Stranger");
    {
        const Held held = bridge.object_of(stranger);
        EXPECT_EQ(held.class_name(), "ZNTREALobjectWrapper");
        EXPECT_EQ(bridge.host.references(stranger), 2);
        EXPECT_EQ(bridge.value_of(held.get()).object(), stranger.get());
    }
    EXPECT_EQ(bridge.host.references(stranger), 1);
}

TEST(ObjectsInCocoa, OfOtherClassesAreNilWithoutTheBasePart) {
    Bridge bridge({.withoutBase = true});
    bridge.add_class("Stranger");
    EXPECT_FALSE(bridge.object_of(bridge.host.instance("Stranger")));
}

class ObjectsInCocoaWithout : public testing::TestWithParam<const char*> {};
INSTANTIATE_TEST_SUITE_P(Service, ObjectsInCocoaWithout,
                         testing::Values("pluginObjectType", "RuntimeObjectIsa"),
                         [](const auto& test) { return std::string(test.param); });

TEST_P(ObjectsInCocoaWithout, AreOfNoClassButFolderItems) {
    Bridge bridge({.without = {GetParam()}, .withoutBase = true});
    EXPECT_FALSE(bridge.object_of(bridge.host.memoryBlock("abc")));
    EXPECT_FALSE(bridge.object_of(bridge.host.create("Dictionary")));
    EXPECT_TRUE(bridge.object_of(bridge.host.folderItem("/usr")));
}

TEST(ObjectsInCocoa, AreNoFolderItemsWhereTheHostLoadsNoMethods) {
    Bridge bridge({.without = {"REALLoadObjectMethod"}, .withoutBase = true});
    EXPECT_FALSE(bridge.object_of(bridge.host.folderItem("/usr")));
}

} // namespace
