#include "plugin/bridge/host_objects.h"

#include "plugin/bridge/data.h"
#include "plugin/bridge/dictionaries.h"
#include "plugin/bridge/geometry.h"
#include "plugin/bridge/times.h"
#include "plugin/bridge/urls.h"
#include "plugin/bridge/wrappers.h"
#include "plugin/entry/base_part.h"
#include "plugin/entry/host_services.h"

namespace {

/// A host class that is tested for by name, and what becomes of its instances.
struct HostClass {
    const char* name;
    NSObject* (*convert)(REALobjectStruct* object);
};

/// The Cocoa or Core Foundation object of a wrapper, borrowed.
NSObject* stored_object(REALobjectStruct* wrapper) { return wrapped_object<NSObject>(wrapper); }

/// Tested in this order: host classes may be subclasses of each other, and the first that fits
/// decides.
constexpr HostClass wrapperClasses[] = {
    {"NSPathComponentCellZNT", stored_object},
    {"NSPathCellZNT", stored_object},
    {"NSPathControlZNT", stored_object},
    {"NSObjectZNT", stored_object},
    {"NSPipeZNT", stored_object},
    {"NSTaskZNT", stored_object},
    {"NSFileHandleZNT", stored_object},
    {"NSClipViewZNT", stored_object},
    {"NSAnimationZNT", stored_object},
    {"NSCoderZNT", stored_object},
    {"NSTimeZoneZNT", stored_object},
    {"NSDateComponentsZNT", stored_object},
    {"NSAnimationContextZNT", stored_object},
    {"NSTimerZNT", stored_object},
    {"NSBoxZNT", stored_object},
    {"NSComboBoxZNT", stored_object},
    {"NSImageViewZNT", stored_object},
    {"NSPopUpButtonZNT", stored_object},
    {"NSTextFieldZNT", stored_object},
    {"NSSearchFieldCellZNT", stored_object},
    {"NSSecureTextFieldZNT", stored_object},
    {"NSSecureTextFieldCellZNT", stored_object},
    {"NSApplicationZNT", stored_object},
    {"NSSearchFieldZNT", stored_object},
    {"NSTabViewZNT", stored_object},
    {"NSTabViewItemZNT", stored_object},
    {"NSStepperZNT", stored_object},
    {"NSURLRequestZNT", stored_object},
    {"NSURLDownloadZNT", stored_object},
    {"NSURLConnectionZNT", stored_object},
    {"NSFontPanelZNT", stored_object},
    {"NSFontManagerZNT", stored_object},
    {"NSImageZNT", stored_object},
    {"NSImageRepZNT", stored_object},
    {"NSAffineTransformZNT", stored_object},
    {"NSFontZNT", stored_object},
    {"NSToolbarItemZNT", stored_object},
    {"NSToolbarZNT", stored_object},
    {"NSScreenZNT", stored_object},
    {"NSCharacterSetZNT", stored_object},
    {"NSTextStorageZNT", stored_object},
    {"NSColorZNT", stored_object},
    {"NSAttributedStringZNT", stored_object},
    {"NSAssertionHandlerZNT", stored_object},
    {"NSMenuZNT", stored_object},
    {"NSFontDescriptorZNT", stored_object},
    {"NSMenuItemZNT", stored_object},
    {"NSErrorZNT", stored_object},
    {"NSViewControllerZNT", stored_object},
    {"NSWindowControllerZNT", stored_object},
    {"NSHTTPCookieZNT", stored_object},
    {"NSHTTPCookieStorageZNT", stored_object},
    {"NSPasteboardZNT", stored_object},
    {"NSBundleZNT", stored_object},
    {"NSEnumeratorZNT", stored_object},
    {"NSDirectoryEnumeratorZNT", stored_object},
    {"NSRunningApplicationZNT", stored_object},
    {"NSURLCacheZNT", stored_object},
    {"NSCellZNT", stored_object},
    {"NSFileManagerZNT", stored_object},
    {"NSSoundZNT", stored_object},
    {"NSBezierPathZNT", stored_object},
    {"NSCursorZNT", stored_object},
    {"NSEventZNT", stored_object},
    {"NSIndexSetZNT", stored_object},
    {"NSCalendarZNT", stored_object},
    {"NSViewZNT", stored_object},
    {"NSWindowZNT", stored_object},
    {"NSColorListZNT", stored_object},
    {"NSColorSpaceZNT", stored_object},
    {"NSTableColumnZNT", stored_object},
    {"NSUndoManagerZNT", stored_object},
    {"NSScrollerZNT", stored_object},
    {"NSResponderZNT", stored_object},
    {"NSTextFieldCellZNT", stored_object},
    {"NSTextZNT", stored_object},
    {"NSTableHeaderViewZNT", stored_object},
    {"NSOperationZNT", stored_object},
    {"NSNotificationZNT", stored_object},
    {"NSNotificationCenterZNT", stored_object},
    {"NSDistributedNotificationCenterZNT", stored_object},
    {"QuartzFilterZNT", stored_object},
    {"NSUserDefaultsZNT", stored_object},
    {"NSDockTileZNT", stored_object},
    {"NSLocaleZNT", stored_object},
    {"NSAppleEventDescriptorZNT", stored_object},
    {"NSAppleScriptZNT", stored_object},
    {"NSTableViewZNT", stored_object},
    {"NSLayoutManagerZNT", stored_object},
    {"NSTextContainerZNT", stored_object},
    {"NSTextViewZNT", stored_object},
    {"NSTextTabZNT", stored_object},
    {"NSParagraphStyleZNT", stored_object},
    {"NSDraggingImageComponentZNT", stored_object},
    {"NSPasteboardItemZNT", stored_object},
    {"NSRunLoopZNT", stored_object},
    {"NSMetadataQueryZNT", stored_object},
    {"NSMetadataItemZNT", stored_object},
    {"NSPredicateZNT", stored_object},
    {"NSCompoundPredicateZNT", stored_object},
    {"NSSortDescriptorZNT", stored_object},
    {"NSMetadataQueryResultGroupZNT", stored_object},
    {"NSComparisonPredicateZNT", stored_object},
    {"NSExpressionZNT", stored_object},
    {"WebUIDelegateZNT", stored_object},
    {"WebResourceLoadDelegateZNT", stored_object},
    {"WebFrameLoadDelegateZNT", stored_object},
    {"WebDownloadDelegateZNT", stored_object},
    {"DRBurnZNT", stored_object},
    {"PDFAnnotationZNT", stored_object},
    {"PDFActionZNT", stored_object},

    {"NSSizeZNT",
     [](REALobjectStruct* size) -> NSObject* { return [NSValue valueWithSize:size_of(size)]; }},
    {"NSRectZNT",
     [](REALobjectStruct* rect) -> NSObject* { return [NSValue valueWithRect:rect_of(rect)]; }},
    {"NSRangeZNT",
     [](REALobjectStruct* range) -> NSObject* { return [NSValue valueWithRange:range_of(range)]; }},
    {"NSPointZNT",
     [](REALobjectStruct* point) -> NSObject* { return [NSValue valueWithPoint:point_of(point)]; }},
    {"QTKitTimeZNT", [](REALobjectStruct* time) -> NSObject* { return NSValueOfQTTime(time); }},
    {"QTKitTimeRangeZNT",
     [](REALobjectStruct* range) -> NSObject* { return NSValueOfQTTimeRange(range); }},
    {"CMTimeMappingZNT",
     [](REALobjectStruct* mapping) -> NSObject* { return NSValueOfCMTimeMapping(mapping); }},
    {"CMTimeRangeZNT",
     [](REALobjectStruct* range) -> NSObject* { return NSValueOfCMTimeRange(range); }},
    {"CMTimeZNT", [](REALobjectStruct* time) -> NSObject* { return NSValueOfCMTime(time); }},

    {"WebPolicyDelegateZNT", stored_object},

    {"CFObjectZNT", stored_object},
    {"CGColorZNT", stored_object},
    {"CGFontZNT", stored_object},
    {"CGImageZNT", stored_object},
    {"CGColorSpaceZNT", stored_object},
    {"CGPathZNT", stored_object},
    {"CGContextZNT", stored_object},
    {"CGLayerZNT", stored_object},
};

bool belongs(REALobjectStruct* object, const char* className) {
    REALclassRef const reference = REALGetClassRef(className);
    return reference && REALObjectIsA(object, reference);
}

/// Folder items are told by a method that no other object has.
bool is_folder_item(REALobjectStruct* object) {
    return REALLoadObjectMethod(object, "TrueItem(Index as integer) as Folderitem") != nullptr;
}

} // namespace

NSObject* NSObjectOfHostObject(REALobjectStruct* object) {
    if (belongs(object, "MemoryBlock"))
        return NewNSData(static_cast<REALmemoryBlockStruct*>(object));
    if (is_folder_item(object)) return NewNSURLfile(static_cast<REALfolderItemStruct*>(object));
    if (belongs(object, "Dictionary"))
        return NewNSDictionary(static_cast<REALdictionaryStruct*>(object));
    for (const HostClass& hostClass : wrapperClasses)
        if (belongs(object, hostClass.name)) return hostClass.convert(object);
    return [object_wrapper_class() wrap:object];
}
