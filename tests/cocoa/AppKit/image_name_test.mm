/// The names of images.

#include "support.h"

namespace appkit_test {
namespace {

class NameOfImage : public AppKitTest {};

NSImage* emptyImage() { return [[[NSImage alloc] init] autorelease]; }

TEST_F(NameOfImage, IsFoundByItsName) {
    NSImage* image = emptyImage();
    EXPECT_EQ(nil, [NSImage imageNamed:@"four"]);
    EXPECT_TRUE([image setName:@"four"]);
    EXPECT_EQ(image, [NSImage imageNamed:@"four"]);
    EXPECT_EQUAL_STRINGS(@"four", [image name]);
    EXPECT_TRUE([image setName:@"other"]);
    EXPECT_EQ(nil, [NSImage imageNamed:@"four"]);
    EXPECT_TRUE([image setName:nil]);
    EXPECT_EQ(nil, [NSImage imageNamed:@"other"]);
    EXPECT_EQ(nil, [image name]);
    EXPECT_EQ(nil, [NSImage imageNamed:nil]);
}

TEST_F(NameOfImage, CannotTakeAnothersName) {
    NSImage* first = emptyImage();
    NSImage* second = emptyImage();
    EXPECT_TRUE([first setName:@"taken"]);
    EXPECT_TRUE([first setName:@"taken"]);
    EXPECT_TRUE([second setName:@"mine"]);
    EXPECT_FALSE([second setName:@"taken"]);
    EXPECT_EQUAL_STRINGS(@"mine", [second name]);
    EXPECT_EQ(first, [NSImage imageNamed:@"taken"]);
}

TEST_F(NameOfImage, LosesItsNameWhenItGoes) {
    NSImage* image = [[NSImage alloc] init];
    [image setName:@"short-lived"];
    EXPECT_EQ(1U, [image retainCount]);
    [image release];
    EXPECT_EQ(nil, [NSImage imageNamed:@"short-lived"]);
}

TEST_F(NameOfImage, LeavesItsNameToOthersWhenItGoes) {
    NSImage* first = [[NSImage alloc] init];
    NSImage* second = emptyImage();
    [first setName:@"heirloom"];
    EXPECT_FALSE([second setName:@"heirloom"]);
    [first release];
    EXPECT_TRUE([second setName:@"heirloom"]);
    EXPECT_EQ(second, [NSImage imageNamed:@"heirloom"]);
    EXPECT_TRUE([second setName:@"other"]);
    EXPECT_TRUE([emptyImage() setName:@"heirloom"]);
}

TEST_F(NameOfImage, HasACopyThatTakesANameOfItsOwn) {
    NSImage* image = emptyImage();
    [image setName:@"first"];
    NSImage* copy = [image copy];
    EXPECT_FALSE([copy setName:@"first"]);
    EXPECT_TRUE([copy setName:@"second"]);
    EXPECT_EQUAL_STRINGS(@"first", [image name]);
    [copy release];
    EXPECT_EQ(nil, [NSImage imageNamed:@"second"]);
    EXPECT_EQ(image, [NSImage imageNamed:@"first"]);
}

TEST_F(NameOfImage, TakesAnyStringForAName) {
    NSString* const nul = [NSString stringWithCharacters:(const unichar[]){'a', 0, 'b'} length:3];
    for (NSString* name : {@"", @"\u00e4\u6f22 x", @"../a/b", nul}) {
        NSImage* image = emptyImage();
        EXPECT_TRUE([image setName:name]);
        EXPECT_EQ(image, [NSImage imageNamed:name]);
        EXPECT_TRUE([name isEqual:[image name]]);
    }
    EXPECT_EQ(nil, [NSImage imageNamed:@"a"]);
}

TEST_F(NameOfImage, DoesNotChangeItsNameWithTheStringItCameFrom) {
    NSImage* image = emptyImage();
    NSMutableString* name = [NSMutableString stringWithString:@"before"];
    [image setName:name];
    [image setAccessibilityDescription:name];
    [name setString:@"after"];
    EXPECT_EQUAL_STRINGS(@"before", [image name]);
    EXPECT_EQUAL_STRINGS(@"before", [image accessibilityDescription]);
    EXPECT_EQ(image, [NSImage imageNamed:@"before"]);
}

} // namespace
} // namespace appkit_test
