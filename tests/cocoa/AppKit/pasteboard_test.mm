/// Pasteboards, and the images on them.

#include "files.h"

@interface AppKitTestOwner : NSObject {
    int _requests;
    int _losses;
}
- (int)requests;
- (int)losses;
@end

@implementation AppKitTestOwner
- (void)pasteboard:(NSPasteboard*)sender provideDataForType:(NSString*)type {
    ++_requests;
    [sender setString:@"promised" forType:type];
}
- (void)pasteboardChangedOwner:(NSPasteboard*)sender {
    ++_losses;
}
- (int)requests {
    return _requests;
}
- (int)losses {
    return _losses;
}
@end

namespace appkit_test {
namespace {

using testing::ElementsAre;

class Pasteboard : public AppKitTest {
protected:
    Pasteboard() { [board() clearContents]; }
    static NSPasteboard* board() { return [NSPasteboard generalPasteboard]; }
};

TEST_F(Pasteboard, KeepsDataOfDeclaredTypes) {
    const NSInteger before = [board() changeCount];
    NSArray* types = [NSArray arrayWithObjects:NSPasteboardTypePNG, NSStringPboardType, nil];
    EXPECT_EQ(before + 1, [board() declareTypes:types owner:nil]);
    NSData* data = toData(fourColorPNG());
    EXPECT_TRUE([board() setData:data forType:NSPasteboardTypePNG]);
    EXPECT_TRUE([board() setString:@"text" forType:NSStringPboardType]);
    EXPECT_FALSE([board() setData:data forType:NSTIFFPboardType]);
    EXPECT_TRUE([data isEqual:[board() dataForType:NSPasteboardTypePNG]]);
    EXPECT_EQUAL_STRINGS(@"text", [board() stringForType:NSPasteboardTypeString]);
    EXPECT_TRUE([types isEqual:[board() types]]);
    EXPECT_EQ(nil, [board() dataForType:nil]);
    EXPECT_EQ(nil, [board() dataForType:NSTIFFPboardType]);
}

TEST_F(Pasteboard, IsEmptiedByADeclaration) {
    [board() declareTypes:[NSArray arrayWithObject:NSTIFFPboardType] owner:nil];
    [board() setData:[NSData data] forType:NSTIFFPboardType];
    [board() declareTypes:[NSArray arrayWithObject:NSTIFFPboardType] owner:nil];
    EXPECT_EQ(nil, [board() dataForType:NSTIFFPboardType]);
    const NSInteger before = [board() changeCount];
    EXPECT_EQ(before + 1, [board() clearContents]);
    EXPECT_EQ(0U, [[board() types] count]);
}

TEST_F(Pasteboard, AsksItsOwnerForWhatWasPromised) {
    AppKitTestOwner* owner = [[[AppKitTestOwner alloc] init] autorelease];
    [board() declareTypes:[NSArray arrayWithObject:NSStringPboardType] owner:owner];
    EXPECT_EQ(0, [owner requests]);
    EXPECT_EQUAL_STRINGS(@"promised", [board() stringForType:NSStringPboardType]);
    EXPECT_EQUAL_STRINGS(@"promised", [board() stringForType:NSStringPboardType]);
    EXPECT_EQ(1, [owner requests]);
    [board() clearContents];
    EXPECT_EQ(1, [owner losses]);
}

TEST_F(Pasteboard, FindsTheFirstTypeThatIsThere) {
    [board() declareTypes:[NSArray arrayWithObject:@"public.tiff"] owner:nil];
    NSArray* wanted = [NSArray arrayWithObjects:@"public.png", NSTIFFPboardType, nil];
    EXPECT_EQUAL_STRINGS(NSTIFFPboardType, [board() availableTypeFromArray:wanted]);
    EXPECT_EQ(nil, [board() availableTypeFromArray:nil]);
}

TEST_F(Pasteboard, HoldsPropertyLists) {
    [board() declareTypes:[NSArray arrayWithObject:NSFilenamesPboardType] owner:nil];
    NSArray* names = [NSArray arrayWithObject:@"/tmp/a"];
    EXPECT_TRUE([board() setPropertyList:names forType:NSFilenamesPboardType]);
    EXPECT_TRUE([names isEqual:[board() propertyListForType:NSFilenamesPboardType]]);
}

TEST_F(Pasteboard, IsOneForEachName) {
    EXPECT_EQ(board(), [NSPasteboard generalPasteboard]);
    EXPECT_EQ(board(), [NSPasteboard pasteboardWithName:[board() name]]);
    EXPECT_NE(board(), [NSPasteboard pasteboardWithUniqueName]);
}

TEST_F(Pasteboard, GivesImages) {
    EXPECT_FALSE([NSImage canInitWithPasteboard:board()]);
    EXPECT_EQ(nil, [[NSImage alloc] initWithPasteboard:board()]);
    [board() declareTypes:[NSArray arrayWithObject:NSTIFFPboardType] owner:nil];
    [board() setData:[fourColors() TIFFRepresentation] forType:NSTIFFPboardType];
    EXPECT_TRUE([NSImage canInitWithPasteboard:board()]);
    EXPECT_TRUE([NSImageRep canInitWithPasteboard:board()]);
    NSImage* image = [[[NSImage alloc] initWithPasteboard:board()] autorelease];
    EXPECT_THAT(pixelsOf(bitmapOf(image)), ElementsAre(red, green, blue, white));
    EXPECT_EQ(2, [[NSImageRep imageRepWithPasteboard:board()] pixelsWide]);
}

TEST_F(Pasteboard, GivesImagesOfFiles) {
    codecs_test::TemporaryFolder folder;
    NSString* path =
        [NSString stringWithUTF8String:folder.write("four.png", fourColorPNG()).c_str()];
    [board() declareTypes:[NSArray arrayWithObject:NSFilenamesPboardType] owner:nil];
    [board() setPropertyList:[NSArray arrayWithObject:path] forType:NSFilenamesPboardType];
    EXPECT_TRUE([NSImage canInitWithPasteboard:board()]);
    EXPECT_NE(nil, [[[NSImage alloc] initWithPasteboard:board()] autorelease]);
    [board() setPropertyList:[NSArray arrayWithObject:@"/tmp/a.txt"] forType:NSFilenamesPboardType];
    EXPECT_FALSE([NSImage canInitWithPasteboard:board()]);
}

NSArray* arrayOf(id object) { return [NSArray arrayWithObject:object]; }

TEST_F(Pasteboard, KnowsTypesByBothTheirNames) {
    struct Alias {
        NSString* classic;
        NSString* identifier;
    };
    const Alias aliases[] = {{NSTIFFPboardType, NSPasteboardTypeTIFF},
                             {NSPDFPboardType, NSPasteboardTypePDF},
                             {NSStringPboardType, NSPasteboardTypeString},
                             {@"Apple PNG pasteboard type", NSPasteboardTypePNG}};
    NSData* data = toData({1, 2, 3});
    for (const Alias& alias : aliases) {
        [board() declareTypes:arrayOf(alias.classic) owner:nil];
        EXPECT_TRUE([board() setData:data forType:alias.identifier]);
        EXPECT_TRUE([data isEqual:[board() dataForType:alias.classic]]);
        [board() declareTypes:arrayOf(alias.identifier) owner:nil];
        EXPECT_TRUE([board() setData:data forType:alias.classic]);
        EXPECT_TRUE([data isEqual:[board() dataForType:alias.identifier]]);
    }
}

TEST_F(Pasteboard, HoldsSeveralTypesAtOnce) {
    NSArray* types = [NSArray arrayWithObjects:NSPasteboardTypePDF, NSPasteboardTypePNG, nil];
    [board() declareTypes:types owner:nil];
    [board() setData:toData({1}) forType:NSPasteboardTypePDF];
    [board() setData:toData(fourColorPNG()) forType:NSPasteboardTypePNG];
    EXPECT_TRUE([toData({1}) isEqual:[board() dataForType:NSPDFPboardType]]);
    EXPECT_TRUE([types isEqual:[board() types]]);
    EXPECT_EQ(2, [[NSImageRep imageRepWithPasteboard:board()] pixelsWide]);
}

TEST_F(Pasteboard, TakesImagesAsTIFF) {
    const NSInteger count = [board() clearContents];
    EXPECT_TRUE([board() writeObjects:arrayOf(makeImage(fourColors()))]);
    EXPECT_EQ(count, [board() changeCount]);
    EXPECT_EQUAL_STRINGS(NSTIFFPboardType,
                         [board() availableTypeFromArray:arrayOf(NSTIFFPboardType)]);
    EXPECT_TRUE([NSImage canInitWithPasteboard:board()]);
    NSImage* image = [[[NSImage alloc] initWithPasteboard:board()] autorelease];
    EXPECT_THAT(pixelsOf(bitmapOf(image)), ElementsAre(red, green, blue, white));
}

TEST_F(Pasteboard, GivesBackTheObjectsThatWereWritten) {
    NSURL* url = [NSURL URLWithString:@"http://example.com/a"];
    NSArray* objects = [NSArray arrayWithObjects:@"text", url, makeImage(fourColors()), nil];
    EXPECT_TRUE([board() writeObjects:objects]);
    EXPECT_EQ(3U, [[board() pasteboardItems] count]);
    EXPECT_EQUAL_STRINGS(@"text", [board() stringForType:NSStringPboardType]);
    NSArray* classes = [NSArray arrayWithObjects:[NSImage class], [NSURL class], nil];
    EXPECT_TRUE([board() canReadObjectForClasses:classes options:nil]);
    EXPECT_FALSE([board() canReadObjectForClasses:arrayOf([NSObject class]) options:nil]);
    NSArray* read = [board() readObjectsForClasses:classes options:nil];
    ASSERT_EQ(2U, [read count]);
    EXPECT_TRUE([url isEqual:[read objectAtIndex:0]]);
    EXPECT_THAT(pixelsOf(bitmapOf([read objectAtIndex:1])), ElementsAre(red, green, blue, white));
    [board() clearContents];
    EXPECT_EQ(0U, [[board() pasteboardItems] count]);
}

TEST_F(Pasteboard, TakesNoneOfTheObjectsWhenOneCannotBeWritten) {
    NSArray* objects =
        [NSArray arrayWithObjects:@"text", [[[NSObject alloc] init] autorelease], nil];
    EXPECT_FALSE([board() writeObjects:objects]);
    EXPECT_FALSE([board() writeObjects:arrayOf([[[NSImage alloc] init] autorelease])]);
    EXPECT_EQ(0U, [[board() types] count]);
}

TEST_F(Pasteboard, GivesTheNamesOfFilesThatWereWrittenAsURLs) {
    codecs_test::TemporaryFolder folder;
    NSString* path =
        [NSString stringWithUTF8String:folder.write("four colors.png", fourColorPNG()).c_str()];
    NSArray* urls = [NSArray
        arrayWithObjects:[NSURL fileURLWithPath:path], [NSURL fileURLWithPath:@"/tmp/b"], nil];
    EXPECT_TRUE([board() writeObjects:urls]);
    NSArray* names = [board() propertyListForType:NSFilenamesPboardType];
    EXPECT_TRUE(([[NSArray arrayWithObjects:path, @"/tmp/b", nil] isEqual:names]));
    EXPECT_TRUE([NSImage canInitWithPasteboard:board()]);
    NSImage* image = [[[NSImage alloc] initWithPasteboard:board()] autorelease];
    EXPECT_THAT(pixelsOf(bitmapOf(image)), ElementsAre(red, green, blue, white));
    EXPECT_EQ(1U, [[board() readObjectsForClasses:arrayOf([NSImage class]) options:nil] count]);
}

TEST_F(Pasteboard, TakesItemsOfSeveralTypes) {
    NSPasteboardItem* item = [[[NSPasteboardItem alloc] init] autorelease];
    EXPECT_TRUE([item setString:@"text" forType:NSPasteboardTypeString]);
    EXPECT_TRUE([item setPropertyList:arrayOf(@"value") forType:@"my.list"]);
    EXPECT_FALSE([item setData:nil forType:@"my.data"]);
    EXPECT_TRUE([board() writeObjects:arrayOf(item)]);
    EXPECT_TRUE([arrayOf(@"value") isEqual:[board() propertyListForType:@"my.list"]]);
    EXPECT_EQUAL_STRINGS(@"text", [board() stringForType:NSStringPboardType]);
    EXPECT_TRUE([[item types] isEqual:[board() types]]);
}

TEST_F(Pasteboard, OfBrokenDataGivesNoImage) {
    [board() declareTypes:arrayOf(NSTIFFPboardType) owner:nil];
    EXPECT_EQ(nil, [[NSImage alloc] initWithPasteboard:board()]);
    [board() setData:toData({1, 2, 3}) forType:NSTIFFPboardType];
    EXPECT_EQ(nil, [[NSImage alloc] initWithPasteboard:board()]);
    EXPECT_EQ(0U, [[board() readObjectsForClasses:arrayOf([NSImage class]) options:nil] count]);
    [board() declareTypes:arrayOf(NSFilenamesPboardType) owner:nil];
    for (NSData* data :
         {toData({1, 2, 3}), toData({}), [@"\"text\"" dataUsingEncoding:NSUTF8StringEncoding]}) {
        [board() setData:data forType:NSFilenamesPboardType];
        EXPECT_FALSE([NSImage canInitWithPasteboard:board()]);
        EXPECT_EQ(nil, [[NSImage alloc] initWithPasteboard:board()]);
    }
}

} // namespace
} // namespace appkit_test
