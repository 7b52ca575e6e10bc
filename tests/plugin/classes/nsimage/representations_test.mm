#include "plugin/classes/support/images.h"

namespace {

constexpr const char* tooSmall = "OutOfBoundsException: Parameter index to method %s is too small. "
                                 "Range is 0 to %d, but value is %d.";
constexpr const char* tooBig = "OutOfBoundsException: Parameter index to method %s is too big. "
                               "Range is 0 to %d, but value is %d.";

std::string message(const char* format, const char* method, int last, int value) {
    char text[200];
    std::snprintf(text, sizeof text, format, method, last, value);
    return text;
}

class Representations : public testing::Test {
protected:
    std::vector<host::ObjectRef> of(const host::ObjectRef& image) {
        std::vector<host::ObjectRef> found;
        for (const host::Value& element : host.elements(host.call(image, "representations")))
            found.push_back(element.objectRef());
        return found;
    }
    static std::string class_of(const host::ObjectRef& object) {
        return host::classOf(object.get())->name();
    }

    Host host;
    const host::ObjectRef pages =
        new_image(host, {plain_page(50, 7), plain_page(30, 40), plain_page(41, 9)});
};

TEST_F(Representations, TellTheirPixelsByIndex) {
    EXPECT_EQ(host.call<int>(pages, "RepresentationWidth", 0), 50);
    EXPECT_EQ(host.call<int>(pages, "RepresentationWidth", 2), 41);
    EXPECT_EQ(host.call<int>(pages, "RepresentationHeight", 0), 7);
    EXPECT_EQ(host.call<int>(pages, "RepresentationHeight", 1), 40);
}

TEST_F(Representations, RefuseAnIndexOutOfBounds) {
    for (const char* method : {"RepresentationWidth", "RepresentationHeight"}) {
        EXPECT_EQ(host.call<int>(pages, method, -1), 0);
        EXPECT_EQ(host.raised(), message(tooSmall, method, 2, -1));
        EXPECT_EQ(host.call<int>(pages, method, 3), 0);
        EXPECT_EQ(host.raised(), message(tooBig, method, 2, 3));
    }
}

TEST_F(Representations, RefuseEveryIndexWhereThereAreNone) {
    const host::ObjectRef empty = host.createBy("NSImageZNT", "Constructor");
    EXPECT_EQ(host.call<int>(empty, "RepresentationWidth", 0), 0);
    EXPECT_EQ(host.raised(), message(tooBig, "RepresentationWidth", -1, 0));
}

TEST_F(Representations, AreZeroPixelsWithoutAnImageAtAnyIndex) {
    const host::ObjectRef none = host.instance("NSImageZNT");
    EXPECT_EQ(host.call<int>(none, "RepresentationWidth", 99), 0);
    EXPECT_EQ(host.call<int>(none, "RepresentationHeight", -1), 0);
    EXPECT_EQ(host.raised(), "");
}

TEST_F(Representations, AreListedInTheirOrderAsTheirMostSpecificClass) {
    const auto listed = of(pages);
    ASSERT_EQ(listed.size(), 3u);
    const int widths[] = {50, 30, 41};
    for (std::size_t i = 0; i < listed.size(); ++i) {
        EXPECT_EQ(class_of(listed[i]), "NSBitmapImageRepZNT");
        EXPECT_EQ(host.get<int>(listed[i], "pixelsWide"), widths[i]);
        EXPECT_EQ(host.handle(listed[i]),
                  [[image_in(host, pages) representations] objectAtIndex:i]);
        EXPECT_EQ(host.references(listed[i]), 1) << "the array is gone";
    }
}

TEST_F(Representations, AreWrappedAnewInEveryList) {
    EXPECT_NE(of(pages).at(0).get(), of(pages).at(0).get());
    EXPECT_EQ(host.instances("NSBitmapImageRepZNT"), 0u);
}

TEST_F(Representations, OfAnImageWithoutAnyAndOfNoImageAreAnEmptyArray) {
    for (const auto& image :
         {host.createBy("NSImageZNT", "Constructor"), host.instance("NSImageZNT")}) {
        const host::Value list = host.call(image, "representations");
        EXPECT_FALSE(list.isNil());
        EXPECT_TRUE(host.elements(list).empty());
    }
}

TEST_F(Representations, AreAddedAndRemoved) {
    const auto added = of(pages).at(1);
    const host::ObjectRef image = host.createBy("NSImageZNT", "Constructor");
    host.call(image, "addRepresentation", added);
    EXPECT_EQ(host.get<int>(image, "RepresentationsCount"), 1);
    EXPECT_EQ(host.call<int>(image, "RepresentationWidth", 0), 30);
    host.call(image, "removeRepresentation", added);
    EXPECT_EQ(host.get<int>(image, "RepresentationsCount"), 0);
}

TEST_F(Representations, AreNotChangedByNil) {
    host.call(pages, "removeRepresentation", nullptr);
    EXPECT_EQ(host.raised(), "");
    EXPECT_EQ(host.get<int>(pages, "RepresentationsCount"), 3);
    const host::ObjectRef none = host.instance("NSImageZNT");
    host.call(none, "addRepresentation", of(pages).at(0));
    EXPECT_EQ(host.get<int>(none, "RepresentationsCount"), 0);
}

TEST(RepresentationsWithout, TheArraysAreNil) {
    Host host{{.without = {"RuntimeArrayCreateSingleDimBoundedArray"}}};
    const auto image = new_image(host, {four_colors()});
    EXPECT_TRUE(host.call(image, "representations").isNil());
    EXPECT_TRUE(host.call(image, "representations").isNil());
    EXPECT_EQ(host.lookups("RuntimeArrayCreateSingleDimBoundedArray"), 2);
}

TEST(RepresentationsWithout, TheInsertProcedureAreAnEmptyArray) {
    Host host{{.without = {"RuntimeArrayDirectGetInsertProc"}}};
    const auto image = new_image(host, {four_colors(), four_colors()});
    EXPECT_TRUE(host.elements(host.call(image, "representations")).empty());
    EXPECT_EQ(host.instances("NSBitmapImageRepZNT"), 0u);
}

} // namespace
