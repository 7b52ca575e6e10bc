' A catalogue of the system's named images.
'
'   rbhost run examples/icons.bas [FOLDER]
'
' Leaves a picture of each and a sheet of them, index.html, in FOLDER (default: out/icons). The
' images come from the icon theme of the system; without one there are none.

Const IconSize = 64

Dim folder As FolderItem
If UBound(Arguments) >= 0 Then
  folder = GetFolderItem(Arguments(0))
Else
  folder = GetFolderItem("out").Child("icons")
End If
If Not folder.Parent.Exists Then folder.Parent.CreateAsFolder
If Not folder.Exists Then folder.CreateAsFolder

Dim sheet As String
Dim found As Integer
Dim missing() As String

ShowIcon "NSImageNameQuickLookTemplate", NSImageZNT.NSImageNameQuickLookTemplate
ShowIcon "NSImageNameBluetoothTemplate", NSImageZNT.NSImageNameBluetoothTemplate
ShowIcon "NSImageNameIChatTheaterTemplate", NSImageZNT.NSImageNameIChatTheaterTemplate
ShowIcon "NSImageNameSlideshowTemplate", NSImageZNT.NSImageNameSlideshowTemplate
ShowIcon "NSImageNameActionTemplate", NSImageZNT.NSImageNameActionTemplate
ShowIcon "NSImageNameSmartBadgeTemplate", NSImageZNT.NSImageNameSmartBadgeTemplate
ShowIcon "NSImageNameIconViewTemplate", NSImageZNT.NSImageNameIconViewTemplate
ShowIcon "NSImageNameListViewTemplate", NSImageZNT.NSImageNameListViewTemplate
ShowIcon "NSImageNameColumnViewTemplate", NSImageZNT.NSImageNameColumnViewTemplate
ShowIcon "NSImageNameFlowViewTemplate", NSImageZNT.NSImageNameFlowViewTemplate
ShowIcon "NSImageNamePathTemplate", NSImageZNT.NSImageNamePathTemplate
ShowIcon "NSImageNameInvalidDataFreestandingTemplate", NSImageZNT.NSImageNameInvalidDataFreestandingTemplate
ShowIcon "NSImageNameLockLockedTemplate", NSImageZNT.NSImageNameLockLockedTemplate
ShowIcon "NSImageNameLockUnlockedTemplate", NSImageZNT.NSImageNameLockUnlockedTemplate
ShowIcon "NSImageNameGoRightTemplate", NSImageZNT.NSImageNameGoRightTemplate
ShowIcon "NSImageNameGoLeftTemplate", NSImageZNT.NSImageNameGoLeftTemplate
ShowIcon "NSImageNameRightFacingTriangleTemplate", NSImageZNT.NSImageNameRightFacingTriangleTemplate
ShowIcon "NSImageNameLeftFacingTriangleTemplate", NSImageZNT.NSImageNameLeftFacingTriangleTemplate
ShowIcon "NSImageNameAddTemplate", NSImageZNT.NSImageNameAddTemplate
ShowIcon "NSImageNameRemoveTemplate", NSImageZNT.NSImageNameRemoveTemplate
ShowIcon "NSImageNameRevealFreestandingTemplate", NSImageZNT.NSImageNameRevealFreestandingTemplate
ShowIcon "NSImageNameFollowLinkFreestandingTemplate", NSImageZNT.NSImageNameFollowLinkFreestandingTemplate
ShowIcon "NSImageNameEnterFullScreenTemplate", NSImageZNT.NSImageNameEnterFullScreenTemplate
ShowIcon "NSImageNameExitFullScreenTemplate", NSImageZNT.NSImageNameExitFullScreenTemplate
ShowIcon "NSImageNameStopProgressTemplate", NSImageZNT.NSImageNameStopProgressTemplate
ShowIcon "NSImageNameStopProgressFreestandingTemplate", NSImageZNT.NSImageNameStopProgressFreestandingTemplate
ShowIcon "NSImageNameRefreshTemplate", NSImageZNT.NSImageNameRefreshTemplate
ShowIcon "NSImageNameRefreshFreestandingTemplate", NSImageZNT.NSImageNameRefreshFreestandingTemplate
ShowIcon "NSImageNameBonjour", NSImageZNT.NSImageNameBonjour
ShowIcon "NSImageNameComputer", NSImageZNT.NSImageNameComputer
ShowIcon "NSImageNameFolderBurnable", NSImageZNT.NSImageNameFolderBurnable
ShowIcon "NSImageNameFolderSmart", NSImageZNT.NSImageNameFolderSmart
ShowIcon "NSImageNameFolder", NSImageZNT.NSImageNameFolder
ShowIcon "NSImageNameNetwork", NSImageZNT.NSImageNameNetwork
ShowIcon "NSImageNameDotMac", NSImageZNT.NSImageNameDotMac
ShowIcon "NSImageNameMobileMe", NSImageZNT.NSImageNameMobileMe
ShowIcon "NSImageNameMultipleDocuments", NSImageZNT.NSImageNameMultipleDocuments
ShowIcon "NSImageNameUserAccounts", NSImageZNT.NSImageNameUserAccounts
ShowIcon "NSImageNamePreferencesGeneral", NSImageZNT.NSImageNamePreferencesGeneral
ShowIcon "NSImageNameAdvanced", NSImageZNT.NSImageNameAdvanced
ShowIcon "NSImageNameInfo", NSImageZNT.NSImageNameInfo
ShowIcon "NSImageNameFontPanel", NSImageZNT.NSImageNameFontPanel
ShowIcon "NSImageNameColorPanel", NSImageZNT.NSImageNameColorPanel
ShowIcon "NSImageNameUser", NSImageZNT.NSImageNameUser
ShowIcon "NSImageNameUserGroup", NSImageZNT.NSImageNameUserGroup
ShowIcon "NSImageNameEveryone", NSImageZNT.NSImageNameEveryone
ShowIcon "NSImageNameUserGuest", NSImageZNT.NSImageNameUserGuest
ShowIcon "NSImageNameMenuOnStateTemplate", NSImageZNT.NSImageNameMenuOnStateTemplate
ShowIcon "NSImageNameMenuMixedStateTemplate", NSImageZNT.NSImageNameMenuMixedStateTemplate
ShowIcon "NSImageNameApplicationIcon", NSImageZNT.NSImageNameApplicationIcon
ShowIcon "NSImageNameTrashEmpty", NSImageZNT.NSImageNameTrashEmpty
ShowIcon "NSImageNameTrashFull", NSImageZNT.NSImageNameTrashFull
ShowIcon "NSImageNameHomeTemplate", NSImageZNT.NSImageNameHomeTemplate
ShowIcon "NSImageNameBookmarksTemplate", NSImageZNT.NSImageNameBookmarksTemplate
ShowIcon "NSImageNameCaution", NSImageZNT.NSImageNameCaution
ShowIcon "NSImageNameStatusAvailable", NSImageZNT.NSImageNameStatusAvailable
ShowIcon "NSImageNameStatusPartiallyAvailable", NSImageZNT.NSImageNameStatusPartiallyAvailable
ShowIcon "NSImageNameStatusUnavailable", NSImageZNT.NSImageNameStatusUnavailable
ShowIcon "NSImageNameStatusNone", NSImageZNT.NSImageNameStatusNone
ShowIcon "NSImageNameShareTemplate", NSImageZNT.NSImageNameShareTemplate

WriteSheet
Print Str(found) + " of " + Str(found + UBound(missing) + 1) + " named images: open " + folder.Name + "/index.html"
If UBound(missing) >= 0 Then Print "not on this system: " + Join(missing, ", ")

Sub ShowIcon(constant As String, name As String)
  Dim image As NSImageZNT = NSImageZNT.imageNamed(name)
  If image Is Nil Then
    missing.Append name
    Return
  End If
  found = found + 1
  Dim file As FolderItem = folder.Child(name + ".png")
  file.WriteAll(image.imageByScalingToSize(IconSize, IconSize).PNGRepresentation)

  Dim kind As String
  If image.isTemplate Then kind = ", template"
  sheet = sheet + "<figure><img src=""" + file.Name + """ alt=""""><figcaption>" + constant + "<br><small>" + name _
    + ", " + Sizes(image) + kind + "</small></figcaption></figure>" + Chr(10)
End Sub

' A named image has a representation for each size that the theme draws it in.
Function Sizes(image As NSImageZNT) As String
  Dim list() As String
  For i As Integer = 0 To image.RepresentationsCount - 1
    list.Append Str(image.RepresentationWidth(i))
  Next
  Return Join(list, " ") + " px"
End Function

Sub WriteSheet()
  Dim page As MemoryBlock = "<!DOCTYPE html><html lang=""en""><meta charset=""utf-8""><title>Named images</title><style>" _
    + "body{font:13px sans-serif;margin:24px;background:#f6f6f6}figure{display:inline-block;width:230px;margin:10px;text-align:center}" _
    + "img{width:64px;height:64px}figcaption{padding:6px 0;color:#333;overflow-wrap:break-word}</style><h1>Named images</h1>" _
    + Chr(10) + sheet + "</html>" + Chr(10)
  folder.Child("index.html").WriteAll(page)
End Sub
