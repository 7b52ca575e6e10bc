#include "cocoa/AppKit/system_image_names.h"

#import <AppKit/NSImage.h>

#include <iterator>
#include <sstream>

NSString* const NSImageNameQuickLookTemplate = @"NSQuickLookTemplate";
NSString* const NSImageNameBluetoothTemplate = @"NSBluetoothTemplate";
NSString* const NSImageNameIChatTheaterTemplate = @"NSIChatTheaterTemplate";
NSString* const NSImageNameSlideshowTemplate = @"NSSlideshowTemplate";
NSString* const NSImageNameActionTemplate = @"NSActionTemplate";
NSString* const NSImageNameSmartBadgeTemplate = @"NSSmartBadgeTemplate";
NSString* const NSImageNameIconViewTemplate = @"NSIconViewTemplate";
NSString* const NSImageNameListViewTemplate = @"NSListViewTemplate";
NSString* const NSImageNameColumnViewTemplate = @"NSColumnViewTemplate";
NSString* const NSImageNameFlowViewTemplate = @"NSFlowViewTemplate";
NSString* const NSImageNamePathTemplate = @"NSPathTemplate";
NSString* const NSImageNameInvalidDataFreestandingTemplate = @"NSInvalidDataFreestandingTemplate";
NSString* const NSImageNameLockLockedTemplate = @"NSLockLockedTemplate";
NSString* const NSImageNameLockUnlockedTemplate = @"NSLockUnlockedTemplate";
NSString* const NSImageNameGoRightTemplate = @"NSGoRightTemplate";
NSString* const NSImageNameGoLeftTemplate = @"NSGoLeftTemplate";
NSString* const NSImageNameRightFacingTriangleTemplate = @"NSRightFacingTriangleTemplate";
NSString* const NSImageNameLeftFacingTriangleTemplate = @"NSLeftFacingTriangleTemplate";
NSString* const NSImageNameAddTemplate = @"NSAddTemplate";
NSString* const NSImageNameRemoveTemplate = @"NSRemoveTemplate";
NSString* const NSImageNameRevealFreestandingTemplate = @"NSRevealFreestandingTemplate";
NSString* const NSImageNameFollowLinkFreestandingTemplate = @"NSFollowLinkFreestandingTemplate";
NSString* const NSImageNameEnterFullScreenTemplate = @"NSEnterFullScreenTemplate";
NSString* const NSImageNameExitFullScreenTemplate = @"NSExitFullScreenTemplate";
NSString* const NSImageNameStopProgressTemplate = @"NSStopProgressTemplate";
NSString* const NSImageNameStopProgressFreestandingTemplate = @"NSStopProgressFreestandingTemplate";
NSString* const NSImageNameRefreshTemplate = @"NSRefreshTemplate";
NSString* const NSImageNameRefreshFreestandingTemplate = @"NSRefreshFreestandingTemplate";
NSString* const NSImageNameBonjour = @"NSBonjour";
NSString* const NSImageNameComputer = @"NSComputer";
NSString* const NSImageNameFolderBurnable = @"NSFolderBurnable";
NSString* const NSImageNameFolderSmart = @"NSFolderSmart";
NSString* const NSImageNameFolder = @"NSFolder";
NSString* const NSImageNameNetwork = @"NSNetwork";
NSString* const NSImageNameDotMac = @"NSDotMac";
NSString* const NSImageNameMobileMe = @"NSMobileMe";
NSString* const NSImageNameMultipleDocuments = @"NSMultipleDocuments";
NSString* const NSImageNameUserAccounts = @"NSUserAccounts";
NSString* const NSImageNamePreferencesGeneral = @"NSPreferencesGeneral";
NSString* const NSImageNameAdvanced = @"NSAdvanced";
NSString* const NSImageNameInfo = @"NSInfo";
NSString* const NSImageNameFontPanel = @"NSFontPanel";
NSString* const NSImageNameColorPanel = @"NSColorPanel";
NSString* const NSImageNameUser = @"NSUser";
NSString* const NSImageNameUserGroup = @"NSUserGroup";
NSString* const NSImageNameEveryone = @"NSEveryone";
NSString* const NSImageNameUserGuest = @"NSUserGuest";
NSString* const NSImageNameMenuOnStateTemplate = @"NSMenuOnStateTemplate";
NSString* const NSImageNameMenuMixedStateTemplate = @"NSMenuMixedStateTemplate";
NSString* const NSImageNameApplicationIcon = @"NSApplicationIcon";
NSString* const NSImageNameTrashEmpty = @"NSTrashEmpty";
NSString* const NSImageNameTrashFull = @"NSTrashFull";
NSString* const NSImageNameHomeTemplate = @"NSHomeTemplate";
NSString* const NSImageNameBookmarksTemplate = @"NSBookmarksTemplate";
NSString* const NSImageNameCaution = @"NSCaution";
NSString* const NSImageNameStatusAvailable = @"NSStatusAvailable";
NSString* const NSImageNameStatusPartiallyAvailable = @"NSStatusPartiallyAvailable";
NSString* const NSImageNameStatusUnavailable = @"NSStatusUnavailable";
NSString* const NSImageNameStatusNone = @"NSStatusNone";
NSString* const NSImageNameShareTemplate = @"NSShareTemplate";

namespace cocoa::appkit {
namespace {

struct SystemImage {
    NSString* name;
    const char* icons; ///< separated by blanks, the best first
};

// The icons are those that every freedesktop.org theme names alike, and those that the common
// themes have besides. Symbolic ones are of a single colour, as templates are.
const SystemImage systemImages[] = {
    {NSImageNameQuickLookTemplate, "view-reveal-symbolic view-reveal"},
    {NSImageNameBluetoothTemplate,
     "bluetooth-active-symbolic bluetooth-symbolic bluetooth bluetooth-active"},
    {NSImageNameIChatTheaterTemplate, "video-display-symbolic camera-web-symbolic video-display"},
    {NSImageNameSlideshowTemplate, "media-playback-start-symbolic media-playback-start"},
    {NSImageNameActionTemplate, "emblem-system-symbolic open-menu-symbolic emblem-system"},
    {NSImageNameSmartBadgeTemplate,
     "folder-saved-search-symbolic system-search-symbolic folder-saved-search"},
    {NSImageNameIconViewTemplate, "view-grid-symbolic view-app-grid-symbolic view-grid"},
    {NSImageNameListViewTemplate, "view-list-symbolic view-list"},
    {NSImageNameColumnViewTemplate, "view-dual-symbolic view-paged-symbolic view-dual"},
    {NSImageNameFlowViewTemplate, "view-continuous-symbolic view-continuous"},
    {NSImageNamePathTemplate, "view-list-bullet-symbolic folder-open-symbolic view-list-bullet"},
    {NSImageNameInvalidDataFreestandingTemplate, "dialog-warning-symbolic dialog-warning"},
    {NSImageNameLockLockedTemplate,
     "changes-prevent-symbolic system-lock-screen-symbolic changes-prevent"},
    {NSImageNameLockUnlockedTemplate, "changes-allow-symbolic changes-allow"},
    {NSImageNameGoRightTemplate, "go-next-symbolic go-next"},
    {NSImageNameGoLeftTemplate, "go-previous-symbolic go-previous"},
    {NSImageNameRightFacingTriangleTemplate,
     "pan-end-symbolic media-playback-start-symbolic pan-end"},
    {NSImageNameLeftFacingTriangleTemplate, "pan-start-symbolic go-previous-symbolic pan-start"},
    {NSImageNameAddTemplate, "list-add-symbolic list-add"},
    {NSImageNameRemoveTemplate, "list-remove-symbolic list-remove"},
    {NSImageNameRevealFreestandingTemplate,
     "system-search-symbolic edit-find-symbolic system-search"},
    {NSImageNameFollowLinkFreestandingTemplate, "go-jump-symbolic insert-link-symbolic go-jump"},
    {NSImageNameEnterFullScreenTemplate, "view-fullscreen-symbolic view-fullscreen"},
    {NSImageNameExitFullScreenTemplate, "view-restore-symbolic view-restore"},
    {NSImageNameStopProgressTemplate, "process-stop-symbolic window-close-symbolic process-stop"},
    {NSImageNameStopProgressFreestandingTemplate,
     "process-stop-symbolic window-close-symbolic process-stop"},
    {NSImageNameRefreshTemplate, "view-refresh-symbolic view-refresh"},
    {NSImageNameRefreshFreestandingTemplate, "view-refresh-symbolic view-refresh"},
    {NSImageNameBonjour, "network-workgroup network-wired"},
    {NSImageNameComputer, "computer"},
    {NSImageNameFolderBurnable, "media-optical-recordable media-optical folder"},
    {NSImageNameFolderSmart, "folder-saved-search folder"},
    {NSImageNameFolder, "folder"},
    {NSImageNameNetwork, "network-workgroup network-server"},
    {NSImageNameDotMac, "folder-remote network-server"},
    {NSImageNameMobileMe, "folder-remote network-server"},
    {NSImageNameMultipleDocuments, "edit-copy x-office-document"},
    {NSImageNameUserAccounts, "system-users"},
    {NSImageNamePreferencesGeneral, "preferences-system preferences-desktop"},
    {NSImageNameAdvanced, "preferences-other applications-system"},
    {NSImageNameInfo, "dialog-information help-about"},
    {NSImageNameFontPanel, "preferences-desktop-font"},
    {NSImageNameColorPanel, "preferences-color preferences-desktop-theme applications-graphics"},
    {NSImageNameUser, "avatar-default user-info"},
    {NSImageNameUserGroup, "system-users"},
    {NSImageNameEveryone, "system-users"},
    {NSImageNameUserGuest, "avatar-default user-info"},
    {NSImageNameMenuOnStateTemplate, "object-select-symbolic emblem-ok-symbolic object-select"},
    {NSImageNameMenuMixedStateTemplate, "list-remove-symbolic list-remove"},
    {NSImageNameApplicationIcon, "application-x-executable"},
    {NSImageNameTrashEmpty, "user-trash"},
    {NSImageNameTrashFull, "user-trash-full"},
    {NSImageNameHomeTemplate, "user-home-symbolic go-home-symbolic user-home"},
    {NSImageNameBookmarksTemplate, "user-bookmarks-symbolic user-bookmarks"},
    {NSImageNameCaution, "dialog-warning"},
    {NSImageNameStatusAvailable, "user-available"},
    {NSImageNameStatusPartiallyAvailable, "user-away user-idle"},
    {NSImageNameStatusUnavailable, "user-busy"},
    {NSImageNameStatusNone, "user-offline user-invisible"},
    {NSImageNameShareTemplate,
     "emblem-shared-symbolic send-to-symbolic document-send-symbolic emblem-shared"},
};

} // namespace

std::vector<std::string> iconNamesFor(NSString* imageName) {
    for (const SystemImage& image : systemImages) {
        if (![image.name isEqualToString:imageName]) continue;
        std::istringstream icons(image.icons);
        return {std::istream_iterator<std::string>(icons), {}};
    }
    return {};
}

} // namespace cocoa::appkit
