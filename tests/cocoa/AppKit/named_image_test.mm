/// The images of the system, from icon themes.

#include "icon_themes.h"

#include <dlfcn.h>
#include <sys/stat.h>
#include <thread>

namespace {
bool libraryOfDrawingsIsMissing = false;
}

/// Goes before the system's own, so that a library can be missing.
extern "C" __attribute__((visibility("default"))) void* dlopen(const char* file,
                                                               int mode) noexcept {
    using Open = void* (*)(const char*, int);
    static const auto open = reinterpret_cast<Open>(dlsym(RTLD_NEXT, "dlopen"));
    if (libraryOfDrawingsIsMissing && file && std::string_view(file).starts_with("librsvg"))
        return nullptr;
    return open(file, mode);
}

namespace appkit_test {
namespace {

using testing::ElementsAre;

class ImageNames : public AppKitTest {};

class NamedImage : public AppKitTest {
protected:
    IconThemes themes;
};

class InstalledTheme : public AppKitTest {};

struct Name {
    NSString* constant;
    NSString* value;
};

#define NAME(name)                                                                                 \
    { NSImageName##name, @"NS" #name }
const Name names[] = {
    NAME(QuickLookTemplate),
    NAME(BluetoothTemplate),
    NAME(IChatTheaterTemplate),
    NAME(SlideshowTemplate),
    NAME(ActionTemplate),
    NAME(SmartBadgeTemplate),
    NAME(IconViewTemplate),
    NAME(ListViewTemplate),
    NAME(ColumnViewTemplate),
    NAME(FlowViewTemplate),
    NAME(PathTemplate),
    NAME(InvalidDataFreestandingTemplate),
    NAME(LockLockedTemplate),
    NAME(LockUnlockedTemplate),
    NAME(GoRightTemplate),
    NAME(GoLeftTemplate),
    NAME(RightFacingTriangleTemplate),
    NAME(LeftFacingTriangleTemplate),
    NAME(AddTemplate),
    NAME(RemoveTemplate),
    NAME(RevealFreestandingTemplate),
    NAME(FollowLinkFreestandingTemplate),
    NAME(EnterFullScreenTemplate),
    NAME(ExitFullScreenTemplate),
    NAME(StopProgressTemplate),
    NAME(StopProgressFreestandingTemplate),
    NAME(RefreshTemplate),
    NAME(RefreshFreestandingTemplate),
    NAME(Bonjour),
    NAME(Computer),
    NAME(FolderBurnable),
    NAME(FolderSmart),
    NAME(Folder),
    NAME(Network),
    NAME(DotMac),
    NAME(MobileMe),
    NAME(MultipleDocuments),
    NAME(UserAccounts),
    NAME(PreferencesGeneral),
    NAME(Advanced),
    NAME(Info),
    NAME(FontPanel),
    NAME(ColorPanel),
    NAME(User),
    NAME(UserGroup),
    NAME(Everyone),
    NAME(UserGuest),
    NAME(MenuOnStateTemplate),
    NAME(MenuMixedStateTemplate),
    NAME(ApplicationIcon),
    NAME(TrashEmpty),
    NAME(TrashFull),
    NAME(HomeTemplate),
    NAME(BookmarksTemplate),
    NAME(Caution),
    NAME(StatusAvailable),
    NAME(StatusPartiallyAvailable),
    NAME(StatusUnavailable),
    NAME(StatusNone),
    NAME(ShareTemplate),
};
#undef NAME
static_assert(std::size(names) == 60);

std::vector<NSInteger> widthsOf(NSImage* image) {
    std::vector<NSInteger> widths;
    for (NSUInteger index = 0; index < [[image representations] count]; ++index)
        widths.push_back([[[image representations] objectAtIndex:index] pixelsWide]);
    return widths;
}

NSBitmapImageRep* representationOf(NSImage* image, NSUInteger index) {
    return [[image representations] objectAtIndex:index];
}

bool showsSomething(NSBitmapImageRep* bitmap) {
    const auto pixels = pixelsOf(bitmap);
    return std::any_of(pixels.begin(), pixels.end(),
                       [](const Pixel& pixel) { return pixel.alpha > 0; });
}

TEST_F(ImageNames, AreCocoas) {
    for (const Name& name : names)
        EXPECT_EQUAL_STRINGS(name.value, name.constant);
}

TEST_F(InstalledTheme, HasAnImageForEveryName) {
    for (const Name& name : names) {
        NSImage* image = [NSImage imageNamed:name.constant];
        ASSERT_NE(nil, image) << [name.value UTF8String];
        EXPECT_EQUAL_STRINGS(name.value, [image name]);
        EXPECT_EQ([name.value hasSuffix:@"Template"], [image isTemplate])
            << [name.value UTF8String];
        const auto widths = widthsOf(image);
        EXPECT_GE(widths.size(), 2U) << [name.value UTF8String];
        EXPECT_TRUE(std::is_sorted(widths.begin(), widths.end())) << [name.value UTF8String];
        for (NSUInteger index = 0; index < widths.size(); ++index)
            EXPECT_TRUE(showsSomething(representationOf(image, index))) << [name.value UTF8String];
    }
}

TEST_F(NamedImage, HasOneRepresentationForEachSize) {
    themes.write("Adwaita/index.theme", "[Icon Theme]\nDirectories=small,large,\n"
                                        "[large]\nSize=48\nType=Fixed\n[small]\nSize=16\n");
    themes.write("Adwaita/large/folder.png", plainPNG(48, 48, blue));
    themes.write("Adwaita/small/folder.png", plainPNG(16, 16, red));
    NSImage* image = [NSImage imageNamed:NSImageNameFolder];
    EXPECT_THAT(widthsOf(image), ElementsAre(16, 48));
    EXPECT_EQ(red, pixelAt(representationOf(image, 0), 0, 0));
    EXPECT_EQ(blue, pixelAt(representationOf(image, 1), 0, 0));
    EXPECT_TRUE(NSEqualSizes(NSMakeSize(32, 32), [image size]));
    EXPECT_FALSE([image isTemplate]);
    EXPECT_EQUAL_STRINGS(@"NSFolder", [image name]);
}

TEST_F(NamedImage, IsTheSameObjectEveryTime) {
    themes.writeFixed("Adwaita", "16", 16);
    themes.write("Adwaita/16/user-trash.png", plainPNG(16, 16, red));
    NSImage* first = nil;
    {
        NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
        first = [NSImage imageNamed:NSImageNameTrashEmpty];
        [pool drain];
    }
    ASSERT_NE(nil, first);
    EXPECT_EQ(first, [NSImage imageNamed:NSImageNameTrashEmpty]);
    NSImage* other = [[[NSImage alloc] init] autorelease];
    EXPECT_FALSE([other setName:NSImageNameTrashEmpty]);
}

TEST_F(NamedImage, IsTheSameObjectOnEveryThread) {
    themes.writeScalable("Adwaita", 16, 256);
    themes.write("Adwaita/scalable/folder.svg", halfSVG("blue"));
    std::vector<NSImage*> found(8);
    std::vector<std::thread> threads;
    for (NSImage*& image : found)
        threads.emplace_back([&image] {
            NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
            image = [NSImage imageNamed:NSImageNameFolder];
            [pool drain];
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_NE(nil, found.front());
    EXPECT_THAT(found, testing::Each(found.front()));
}

TEST_F(NamedImage, GivesWayToTheProgramsOwn) {
    themes.writeFixed("Adwaita", "16", 16);
    themes.write("Adwaita/16/computer.png", plainPNG(16, 16, red));
    NSImage* own = makeImage(fourColors());
    EXPECT_TRUE([own setName:NSImageNameComputer]);
    EXPECT_EQ(own, [NSImage imageNamed:NSImageNameComputer]);
    EXPECT_TRUE([own setName:nil]);
    NSImage* systems = [NSImage imageNamed:NSImageNameComputer];
    EXPECT_THAT(widthsOf(systems), ElementsAre(16));
    EXPECT_TRUE([systems setName:nil]);
    EXPECT_TRUE([own setName:NSImageNameComputer]);
    EXPECT_EQ(own, [NSImage imageNamed:NSImageNameComputer]);
}

TEST_F(NamedImage, IsDrawnInEverySizeThatItsDrawingIsMeantFor) {
    themes.writeScalable("Adwaita", 16, 48);
    themes.write("Adwaita/scalable/folder.svg", halfSVG("#ff0000"));
    NSImage* image = [NSImage imageNamed:NSImageNameFolder];
    ASSERT_THAT(widthsOf(image), ElementsAre(16, 24, 32, 48));
    for (NSUInteger index = 0; index < 4; ++index) {
        NSBitmapImageRep* bitmap = representationOf(image, index);
        const NSInteger side = [bitmap pixelsWide];
        EXPECT_EQ(side, [bitmap pixelsHigh]);
        EXPECT_EQ(red, pixelAt(bitmap, side / 2 - 1, side - 1));
        EXPECT_EQ(nothing, pixelAt(bitmap, side / 2, 0));
    }
}

TEST_F(NamedImage, PrefersPixelsToADrawing) {
    themes.write("Adwaita/index.theme",
                 "[Icon Theme]\nDirectories=scalable,16\n[scalable]\nSize=16\nType=Scalable\n"
                 "MinSize=16\nMaxSize=24\n[16]\nSize=16\nType=Fixed\n");
    themes.write("Adwaita/scalable/folder.svg", halfSVG("red"));
    themes.write("Adwaita/16/folder.png", plainPNG(16, 16, green));
    NSImage* image = [NSImage imageNamed:NSImageNameFolder];
    ASSERT_THAT(widthsOf(image), ElementsAre(16, 24));
    EXPECT_EQ(green, pixelAt(representationOf(image, 0), 0, 0));
    EXPECT_EQ(red, pixelAt(representationOf(image, 1), 0, 0));
}

TEST_F(NamedImage, OfATemplateIsBlackInItsAlpha) {
    themes.write("Adwaita/index.theme", "[Icon Theme]\nDirectories=scalable,8\n"
                                        "[scalable]\nSize=16\nType=Fixed\n[8]\nSize=8\n");
    themes.write("Adwaita/scalable/list-add-symbolic.svg", halfSVG("#8090a0"));
    themes.write("Adwaita/8/list-add-symbolic.png", plainPNG(8, 8, {250, 20, 30, 128}));
    NSImage* image = [NSImage imageNamed:NSImageNameAddTemplate];
    EXPECT_TRUE([image isTemplate]);
    EXPECT_TRUE(NSEqualSizes(NSMakeSize(16, 16), [image size]));
    ASSERT_THAT(widthsOf(image), ElementsAre(8, 16));
    EXPECT_EQ((Pixel{0, 0, 0, 128}), pixelAt(representationOf(image, 0), 0, 0));
    EXPECT_EQ(black, pixelAt(representationOf(image, 1), 0, 0));
    EXPECT_EQ(nothing, pixelAt(representationOf(image, 1), 15, 0));
}

TEST_F(NamedImage, ComesFromTheThemesThatAThemeInheritsFrom) {
    themes.write("Adwaita/index.theme", "[Icon Theme]\nInherits=hicolor,Uncle,Aunt\n");
    themes.write("Uncle/index.theme", "[Icon Theme]\nInherits=Adwaita,Uncle\n");
    themes.writeFixed("Aunt", "16", 16);
    themes.writeFixed("hicolor", "16", 16);
    themes.write("Aunt/16/folder.png", plainPNG(16, 16, green));
    themes.write("hicolor/16/folder.png", plainPNG(16, 16, red));
    themes.write("hicolor/16/computer.png", plainPNG(16, 16, blue));
    EXPECT_EQ(green, pixelAt(bitmapOf([NSImage imageNamed:NSImageNameFolder]), 0, 0));
    EXPECT_EQ(blue, pixelAt(bitmapOf([NSImage imageNamed:NSImageNameComputer]), 0, 0));
}

TEST_F(NamedImage, ComesFromTheThemeThatTheUserChose) {
    themes.writeFixed("Adwaita", "16", 16);
    themes.write("Adwaita/16/folder.png", plainPNG(16, 16, red));
    themes.writeFixed("Mine", "16", 16);
    themes.write("Mine/16/folder.png", plainPNG(16, 16, green));
    std::filesystem::create_directories(themes.home().path("config/gtk-3.0"));
    themes.home().write("config/gtk-3.0/settings.ini",
                        codecs_test::bytes_of("[Settings]\ngtk-icon-theme-name = Mine\n"));
    EXPECT_EQ(green, pixelAt(bitmapOf([NSImage imageNamed:NSImageNameFolder]), 0, 0));
}

TEST_F(NamedImage, ComesFromWhateverThemeIsThere) {
    themes.write("Alone/index.theme", "[Icon Theme]\nHidden=true\nDirectories=16\n[16]\nSize=16\n");
    themes.write("Alone/16/folder.png", plainPNG(16, 16, red));
    themes.writeFixed("Breeze", "16", 16);
    themes.write("Breeze/16/folder.png", plainPNG(16, 16, green));
    EXPECT_EQ(green, pixelAt(bitmapOf([NSImage imageNamed:NSImageNameFolder]), 0, 0));
}

TEST_F(NamedImage, ComesFromEveryFolderOfItsTheme) {
    themes.writeFixed("Adwaita", "16", 16);
    const std::string folder = themes.home().path("shared/icons/Adwaita/16");
    std::filesystem::create_directories(folder);
    themes.home().write("shared/icons/Adwaita/16/folder.png", plainPNG(16, 16, green));
    EXPECT_EQ(green, pixelAt(bitmapOf([NSImage imageNamed:NSImageNameFolder]), 0, 0));
}

TEST_F(NamedImage, IsNotThereWithoutATheme) {
    for (const Name& name : names)
        EXPECT_EQ(nil, [NSImage imageNamed:name.constant]) << [name.value UTF8String];
    EXPECT_EQ(nil, [NSImage imageNamed:@"NSNoSuchName"]);
    EXPECT_EQ(nil, [NSImage imageNamed:@"folder"]);
    EXPECT_EQ(nil, [NSImage imageNamed:@""]);
    EXPECT_EQ(nil, [NSImage imageNamed:nil]);
}

TEST_F(NamedImage, IsNotThereWithoutALibraryForItsDrawing) {
    libraryOfDrawingsIsMissing = true;
    themes.writeScalable("Adwaita", 16, 48);
    themes.write("Adwaita/scalable/folder.svg", halfSVG("red"));
    EXPECT_EQ(nil, [NSImage imageNamed:NSImageNameFolder]);
    themes.writeFixed("Adwaita", "16", 16);
    themes.write("Adwaita/16/folder.png", plainPNG(16, 16, green));
    EXPECT_NE(nil, [NSImage imageNamed:NSImageNameFolder]);
    libraryOfDrawingsIsMissing = false;
}

TEST_F(NamedImage, TakesNothingFromBrokenThemes) {
    const std::string_view indexes[] = {
        "",
        "[",
        "[Icon Theme",
        "[Icon Theme]",
        "[Icon Theme]\nDirectories=",
        "[Icon Theme]\nDirectories=,,,\nInherits=,,",
        "[Icon Theme]\nDirectories=16\n",
        "[Icon Theme]\nDirectories=16\n[16]\nSize=-1\n",
        "[Icon Theme]\nDirectories=16\n[16]\nSize=99999999999999999999\n",
        "[Icon Theme]\nDirectories=16\n[16]\nSize=0\n",
        "[Icon Theme]\nDirectories=/,..,../Other,/16,./../16\n[..]\nSize=16\n[../Other]\nSize=16\n",
        "[Icon Theme]\nDirectories=16\n[16]\nSize=16\nScale=2\n",
        "[Icon Theme]\nInherits=../Other,/,.,..\n",
        "=\n=x\n[]\n]\n[Icon Theme]\n=\nDirectories\n",
    };
    themes.write("Adwaita/16/folder.png", plainPNG(16, 16, red));
    themes.write("Other/folder.png", plainPNG(16, 16, red));
    for (const std::string_view index : indexes) {
        themes.write("Adwaita/index.theme", index);
        EXPECT_EQ(nil, [NSImage imageNamed:NSImageNameFolder]) << index;
    }
    std::string endless = "[Icon Theme]\nDirectories=";
    for (int number = 0; number < 100000; ++number)
        endless += std::to_string(number) + ",";
    themes.write("Adwaita/index.theme", endless);
    EXPECT_EQ(nil, [NSImage imageNamed:NSImageNameFolder]);
}

TEST_F(NamedImage, TakesNothingFromFilesThatAreNone) {
    themes.writeFixed("Adwaita", "16", 16);
    const std::string picture = themes.path("Adwaita/16/folder.png");
    std::filesystem::create_directories(picture);
    EXPECT_EQ(nil, [NSImage imageNamed:NSImageNameFolder]);
    std::filesystem::remove(picture);
    ASSERT_EQ(0, mkfifo(picture.c_str(), 0600)); // nobody ever writes into it
    EXPECT_EQ(nil, [NSImage imageNamed:NSImageNameFolder]);
    std::filesystem::remove(picture);
    std::filesystem::create_symlink(picture, picture);
    EXPECT_EQ(nil, [NSImage imageNamed:NSImageNameFolder]);
    std::filesystem::remove(picture);
    std::filesystem::create_symlink("/dev/zero", picture);
    EXPECT_EQ(nil, [NSImage imageNamed:NSImageNameFolder]);
    const std::string index = themes.path("Adwaita/index.theme");
    std::filesystem::remove(index);
    ASSERT_EQ(0, mkfifo(index.c_str(), 0600));
    EXPECT_EQ(nil, [NSImage imageNamed:NSImageNameFolder]);
}

TEST_F(NamedImage, TakesNothingFromBrokenPictures) {
    themes.writeFixed("Adwaita", "16", 16);
    ByteVector cut = plainPNG(16, 16, red);
    cut.resize(cut.size() / 2);
    for (const ByteVector& file :
         {ByteVector{}, ByteVector{1, 2, 3}, cut, plainPNG(1200, 2, red)}) {
        themes.write("Adwaita/16/folder.png", file);
        EXPECT_EQ(nil, [NSImage imageNamed:NSImageNameFolder]) << file.size();
    }
}

/// A drawing that refers to `depth` others, each of which refers ten times to the next.
std::string nestedSVG(int depth) {
    std::string drawing = "<svg xmlns='http://www.w3.org/2000/svg' width='16' height='16'><defs>"
                          "<g id='g0'/>";
    for (int level = 1; level <= depth; ++level) {
        drawing += "<g id='g" + std::to_string(level) + "'>";
        for (int copy = 0; copy < 10; ++copy)
            drawing += "<use href='#g" + std::to_string(level - 1) + "'/>";
        drawing += "</g>";
    }
    return drawing + "</defs><use href='#g" + std::to_string(depth) + "'/></svg>";
}

std::string manyEntities() {
    std::string drawing = "<!DOCTYPE svg [<!ENTITY e0 'many'>";
    for (int level = 1; level < 12; ++level) {
        drawing += "<!ENTITY e" + std::to_string(level) + " '";
        for (int copy = 0; copy < 10; ++copy)
            drawing += "&e" + std::to_string(level - 1) + ";";
        drawing += "'>";
    }
    return drawing + "]><svg xmlns='http://www.w3.org/2000/svg'><text>&e11;</text></svg>";
}

TEST_F(NamedImage, TakesNothingFromDrawingsThatWouldNeverEnd) {
    themes.writeScalable("Adwaita", 16, 256);
    for (const std::string& drawing : {nestedSVG(12), manyEntities(), std::string("<svg"),
                                       std::string("<html/>"), std::string(5 << 20, ' ')}) {
        themes.write("Adwaita/scalable/folder.svg", drawing);
        EXPECT_EQ(nil, [NSImage imageNamed:NSImageNameFolder]) << drawing.substr(0, 60);
    }
}

TEST_F(NamedImage, OfADrawingOfAnySizeHasTheSizesOfIcons) {
    themes.writeScalable("Adwaita", 16, 24);
    themes.write("Adwaita/scalable/folder.svg",
                 "<svg xmlns='http://www.w3.org/2000/svg' width='1e9' height='1e9' "
                 "viewBox='0 0 2 2'><rect width='1' height='2' fill='blue'/></svg>");
    NSImage* image = [NSImage imageNamed:NSImageNameFolder];
    EXPECT_THAT(widthsOf(image), ElementsAre(16, 24));
}

TEST_F(NamedImage, ShowsNothingFromOutsideItsDrawing) {
    themes.writeScalable("Adwaita", 16, 16);
    themes.write("Adwaita/scalable/secret.png", plainPNG(16, 16, red));
    themes.write("Adwaita/scalable/folder.svg",
                 "<svg xmlns='http://www.w3.org/2000/svg' width='16' height='16'><image width='16' "
                 "height='16' href='file://" +
                     themes.path("Adwaita/scalable/secret.png") + "'/></svg>");
    EXPECT_FALSE(showsSomething(bitmapOf([NSImage imageNamed:NSImageNameFolder])));
}

} // namespace
} // namespace appkit_test
