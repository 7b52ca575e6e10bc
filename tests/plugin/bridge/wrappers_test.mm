#include "plugin/probe/probe_host.h"

#include <gmock/gmock.h>

#include <Cocoa/Cocoa.h>
#include <objc/runtime.h>

/// A representation that no host class is named after.
@interface PlainRepresentation : NSImageRep
@end
@implementation PlainRepresentation
@end

namespace {

std::vector<std::string> classesAskedFor;

REALobjectStruct* make_no_instance(const char* className) {
    classesAskedFor.emplace_back(className);
    return nullptr;
}

class Wrappers {
public:
    explicit Wrappers(HostOptions options)
        : host(with_probe(std::move(options))) {}

    host::ObjectRef typed(std::string_view kind, id object) {
        return host.shared<host::ObjectRef>("WrapperProbe", "WrapTyped", kind, address(object));
    }
    host::ObjectRef generic(id object, std::string_view required) {
        return host.shared<host::ObjectRef>("WrapperProbe", "WrapObject", address(object),
                                            required);
    }
    static REALword address(id object) { return reinterpret_cast<REALword>(object); }
    static std::string class_of(const host::ObjectRef& object) {
        return object ? host::classOf(object.get())->name() : "(none)";
    }

    Host host;
};

class TypedWrappers : public testing::Test {
protected:
    ~TypedWrappers() override { [image release]; }

    NSImage* const image = [[NSImage alloc] initWithSize:NSMakeSize(3, 2)];
};

TEST_F(TypedWrappers, AreTheSameHostObjectWhileItLives) {
    Wrappers probe({});
    const host::ObjectRef first = probe.typed("Image", image);
    ASSERT_TRUE(first);
    EXPECT_EQ(probe.host.references(first), 1);
    EXPECT_EQ(Host::wrapper(image), first.get());

    const host::ObjectRef second = probe.typed("Image", image);
    EXPECT_EQ(second, first);
    EXPECT_EQ(probe.host.references(first), 2);
    EXPECT_EQ(Host::retainCount(image), 2) << "one retain by the one wrapper";
}

TEST_F(TypedWrappers, AreMadeAnewWhenTheFirstIsGone) {
    Wrappers probe({});
    {
        const host::ObjectRef first = probe.typed("Image", image);
        EXPECT_EQ(probe.host.instances("NSImageZNT"), 1u);
    }
    EXPECT_EQ(probe.host.instances("NSImageZNT"), 0u);
    EXPECT_EQ(Host::wrapper(image), nullptr);
    EXPECT_EQ(Host::retainCount(image), 1);
    EXPECT_TRUE(probe.typed("Image", image));
}

TEST_F(TypedWrappers, AreDistinctWithoutTheBasePart) {
    Wrappers probe({.withoutBase = true});
    host::ObjectRef first = probe.typed("Image", image);
    const host::ObjectRef second = probe.typed("Image", image);
    ASSERT_TRUE(first);
    ASSERT_TRUE(second);
    EXPECT_NE(first.get(), second.get());
    EXPECT_EQ(probe.host.handle(first), image);
    EXPECT_EQ(probe.host.handle(second), image);
    EXPECT_EQ(Host::retainCount(image), 3);
    first = nullptr;
    EXPECT_EQ(Host::retainCount(image), 2);
}

TEST_F(TypedWrappers, AreOfTheMakersOwnClass) {
    Wrappers probe({.withoutBase = true});
    EXPECT_EQ(probe.class_of(probe.typed("Image", image)), "NSImageZNT");
    EXPECT_EQ(probe.class_of(probe.typed("PDF", image)), "NSPDFImageRepZNT");
    EXPECT_EQ(probe.class_of(probe.typed("Bitmap", image)), "NSBitmapImageRepZNT");
}

TEST_F(TypedWrappers, OfNilAreNull) {
    Wrappers probe({.withoutBase = true});
    for (const char* kind : {"Image", "PDF", "Bitmap"})
        EXPECT_FALSE(probe.typed(kind, nil)) << kind;
}

TEST_F(TypedWrappers, AreNullWhereTheHostMakesNoInstances) {
    Wrappers probe({.without = {"PluginNewInstance"}, .withoutBase = true});
    EXPECT_FALSE(probe.typed("Image", image));
    EXPECT_FALSE(probe.typed("Image", image));
    EXPECT_EQ(probe.host.lookups("PluginNewInstance"), 2);
    EXPECT_EQ(Host::retainCount(image), 1);
}

TEST_F(TypedWrappers, AreReturnedWithoutAnotherReferenceWhereTheHostLocksNothing) {
    Wrappers probe({.without = {"REALLockObject"}});
    const host::ObjectRef first = probe.typed("Image", image);
    host::ObjectRef second = probe.typed("Image", image);
    EXPECT_EQ(second, first);
    // The host took over a reference that nobody added.
    second.release();
    EXPECT_EQ(probe.host.references(first), 1);
}

CFMutableDictionaryRef lateDictionary(id, SEL) {
    static const CFMutableDictionaryRef dictionary =
        CFDictionaryCreateMutable(nullptr, 0, nullptr, nullptr);
    return dictionary;
}

TEST_F(TypedWrappers, AreSharedAsSoonAsTheDictionaryIsThere) {
    Wrappers probe({.withoutBase = true});
    EXPECT_NE(probe.typed("Image", image).get(), probe.typed("Image", image).get());
    class_addMethod(object_getClass([NSException class]), @selector(GetInstancesDictionaryZNT),
                    (IMP)lateDictionary, "^v@:");
    const host::ObjectRef first = probe.typed("Image", image);
    EXPECT_EQ(probe.typed("Image", image), first);
}

class GenericWrappers : public testing::Test {
protected:
    ~GenericWrappers() override { [representation release]; }

    Wrappers probe{{.withoutBase = true}};
    PlainRepresentation* const representation = [[PlainRepresentation alloc] init];
};

TEST_F(GenericWrappers, AreOfTheMostDerivedClassThatTheHostKnows) {
    NSBitmapImageRep* const bitmap =
        [[NSBitmapImageRep alloc] initWithBitmapDataPlanes:NULL
                                                pixelsWide:2
                                                pixelsHigh:1
                                             bitsPerSample:8
                                           samplesPerPixel:3
                                                  hasAlpha:NO
                                                  isPlanar:NO
                                            colorSpaceName:NSCalibratedRGBColorSpace
                                               bytesPerRow:0
                                              bitsPerPixel:0];
    ASSERT_NE(bitmap, nil);
    EXPECT_EQ(probe.class_of(probe.generic(bitmap, "NSImageRep")), "NSBitmapImageRepZNT");
    EXPECT_EQ(probe.class_of(probe.generic(representation, "NSImageRep")), "NSImageRepZNT")
        << "the nearest ancestor that has a host class";
    EXPECT_EQ(Host::retainCount(bitmap), 1) << "the wrapper is gone, with its retain";
    [bitmap release];
}

TEST_F(GenericWrappers, HoldOneRetain) {
    const host::ObjectRef wrapper = probe.generic(representation, "NSImageRep");
    EXPECT_EQ(probe.host.handle(wrapper), representation);
    EXPECT_EQ(Host::retainCount(representation), 2);
    EXPECT_EQ(probe.host.references(wrapper), 1);
}

TEST_F(GenericWrappers, AreNullForNilAndWithoutARequiredClass) {
    EXPECT_FALSE(probe.generic(nil, "NSImageRep"));
    EXPECT_FALSE(probe.generic(representation, "NoSuchClass"));
}

TEST_F(GenericWrappers, AreAskedForFromTheClassToTheRoot) {
    probe.host.replace(REALservices::NewInstance, make_no_instance);
    EXPECT_FALSE(probe.generic(representation, "NSImageRep"));
    EXPECT_THAT(classesAskedFor,
                testing::ElementsAre("PlainRepresentationZNT", "NSImageRepZNT", "NSObjectZNT"));
}

TEST_F(GenericWrappers, AreNotAskedForByANameOf200CharactersOrMore) {
    const auto make = [](std::size_t length) {
        const std::string name(length, 'N');
        Class const made = objc_allocateClassPair([PlainRepresentation class], name.c_str(), 0);
        objc_registerClassPair(made);
        return [[[made alloc] init] autorelease];
    };
    NSAutoreleasePool* const pool = [[NSAutoreleasePool alloc] init];
    probe.host.replace(REALservices::NewInstance, make_no_instance);
    probe.generic(make(199), "NSImageRep");
    EXPECT_EQ(classesAskedFor.at(0), std::string(199, 'N') + "ZNT");
    classesAskedFor.clear();
    probe.generic(make(200), "NSImageRep");
    EXPECT_EQ(classesAskedFor.at(0), "PlainRepresentationZNT");
    [pool release];
}

host::ObjectRef instanceLeft;

REALobjectStruct* make_and_remember(const char* className) {
    host::ObjectRef made = host::Runtime::current().newInstance(className);
    if (made) instanceLeft = made;
    return made.release();
}

/// As designed: the test of the class comes after the instance was made, and the instance stays.
TEST_F(GenericWrappers, LeaveAnInstanceMadeForAnObjectOfTheWrongClassToTheHost) {
    probe.host.replace(REALservices::NewInstance, make_and_remember);
    EXPECT_FALSE(probe.generic(representation, "NSString"));
    ASSERT_TRUE(instanceLeft);
    EXPECT_EQ(probe.host.handle(instanceLeft), nullptr);
    EXPECT_EQ(probe.host.references(instanceLeft), 2);
    probe.host.runtime().registry().release(instanceLeft.get());
    instanceLeft = nullptr;
    EXPECT_EQ(Host::retainCount(representation), 1);
}

TEST(GenericWrappersWithBase, AreNewAtEveryCallAndNotRegistered) {
    Wrappers probe({});
    PlainRepresentation* const representation = [[PlainRepresentation alloc] init];
    const host::ObjectRef first = probe.generic(representation, "NSImageRep");
    const host::ObjectRef second = probe.generic(representation, "NSImageRep");
    EXPECT_NE(first.get(), second.get());
    EXPECT_EQ(Host::wrapper(representation), nullptr);
    EXPECT_EQ(Host::retainCount(representation), 3);
    [representation release];
}

} // namespace
