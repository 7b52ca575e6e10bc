#include "companion/base_host.h"

#include <cstring>

namespace {

using host::ObjectRef;

/// A wrapper made as other parts make one: the object is retained into the first word.
ObjectRef wrap(BaseHost& host, const char* className, id object) {
    ObjectRef wrapper = host.instance(className);
    field<id>(wrapper, 0) = [object retain];
    return wrapper;
}

TEST(Objects, TellTheirClassAndDescription) {
    BaseHost host;
    NSObject* const object = [NSArray arrayWithObject:@"text"];
    const long before = Host::retainCount(object);
    {
        const ObjectRef wrapper = wrap(host, "NSObjectZNT", object);
        EXPECT_EQ(host.get<std::string>(wrapper, "ClassName"),
                  [NSStringFromClass([object class]) UTF8String]);
        EXPECT_EQ(host.get<std::string>(wrapper, "Description"), [[object description] UTF8String]);
        EXPECT_EQ(host.handle(wrapper), object);
        EXPECT_EQ(Host::retainCount(object), before + 1);
    }
    EXPECT_EQ(Host::retainCount(object), before);
}

TEST(Objects, AreNeutralWhenEmpty) {
    BaseHost host;
    for (const char* const name : {"NSObjectZNT", "NSAttributedStringZNT", "NSCharacterSetZNT",
                                   "NSErrorZNT", "NSLocaleZNT", "NSTimeZoneZNT", "CFObjectZNT",
                                   "CFErrorZNT", "CFUUIDZNT", "CGColorZNT", "CGColorSpaceZNT"}) {
        const ObjectRef empty = host.instance(name);
        EXPECT_EQ(host.get<REALword>(empty, "Handle"), 0) << name;
        EXPECT_EQ(host.get<std::string>(empty, "Description"), "") << name;
    }
}

TEST(Objects, KeepOneWrapper) {
    BaseHost host;
    const auto first = host.shared<ObjectRef>("NSTimeZoneZNT", "timeZoneWithName", "Europe/Berlin");
    const auto second =
        host.shared<ObjectRef>("NSTimeZoneZNT", "timeZoneWithName", "Europe/Berlin");
    EXPECT_EQ(first.get(), second.get()) << "the system keeps one object for a zone";
    EXPECT_EQ(host.references(first), 2);
}

TEST(Objects, ServePrograms) {
    BaseHost host;
    const Host::Outcome outcome = host.run(R"(
Dim text As NSAttributedStringZNT = NSAttributedStringZNT.attributedStringWithString("abc")
Print text.text + " " + Str(text.length)
Dim letters As NSCharacterSetZNT = NSCharacterSetZNT.letterCharacterSet
Print Str(letters.characterIsMember(65)) + " " + Str(letters.characterIsMember(49))
Print Str(letters.invertedSet.characterIsMember(49)) + " " + Str(letters.characterIsMember(-1))
Print Str(NSCharacterSetZNT.characterSetWithCharactersInString("xyz").characterIsMember(121))
Print Str(NSCharacterSetZNT.decimalDigitCharacterSet.characterIsMember(49))
Dim e As NSErrorZNT = NSErrorZNT.errorWithDomain("some.domain", -7)
Print e.domain + " " + Str(e.code) + " " + Str(e IsA NSObjectZNT)
Print NSErrorZNT.errorWithDomain("NSPOSIXErrorDomain", 2).localizedDescription
Print NSLocaleZNT.localeWithIdentifier("de_DE").localeIdentifier
Print Str(NSLocaleZNT.currentLocale Is Nil)
Dim zone As NSTimeZoneZNT = NSTimeZoneZNT.timeZoneForSecondsFromGMT(-5400)
Print zone.name + " " + Str(zone.secondsFromGMT)
Print Str(NSTimeZoneZNT.timeZoneWithName("Nowhere/Town") Is Nil)
Print Str(NSTimeZoneZNT.localTimeZone Is Nil)
)");
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(outcome.output,
              "abc 3\nTrue False\nTrue False\nTrue\nTrue\nsome.domain -7 True\n"
              "The operation couldn\u2019t be completed. No such file or directory\n"
              "de_DE\nFalse\nGMT-0130 -5400\nTrue\nFalse\n");
}

constexpr std::uint32_t tag = 0x52424346;

TEST(CoreFoundationObjects, CarryTheTagInTheirThirdWord) {
    BaseHost host;
    for (const char* const name :
         {"CFObjectZNT", "CFErrorZNT", "CFUUIDZNT", "CGColorZNT", "CGColorSpaceZNT"}) {
        const ObjectRef object = host.instance(name);
        EXPECT_EQ(field<void*>(object, 0), nullptr) << name;
        std::uint32_t found = 0;
        std::memcpy(&found, &field<REALword>(object, 2), sizeof found);
        EXPECT_EQ(found, tag) << name;
    }
}

TEST(CoreFoundationObjects, HoldOneRetain) {
    BaseHost host;
    CFUUIDRef const uuid = CFUUIDCreate(nullptr);
    {
        const ObjectRef wrapper = host.instance("CFUUIDZNT");
        field<CFTypeRef>(wrapper, 0) = CFRetain(uuid);
        EXPECT_EQ(Host::retainCount(uuid), 2);
        EXPECT_EQ(host.get<REALword>(wrapper, "TypeID"), static_cast<REALword>(CFUUIDGetTypeID()));
    }
    EXPECT_EQ(Host::retainCount(uuid), 1);
    CFRelease(uuid);
}

TEST(CoreFoundationObjects, AreOwnedByTheirWrapperAlone) {
    BaseHost host;
    ObjectRef wrapper = host.shared<ObjectRef>("CFUUIDZNT", "Create");
    EXPECT_EQ(host.references(wrapper), 1);
    EXPECT_EQ(Host::retainCount(host.handle(wrapper)), 1);
    EXPECT_EQ(Host::wrapperCount(), 0) << "not a live wrapper for others to find";
}

TEST(CoreFoundationObjects, OfAnotherTypeAreNotAsked) {
    BaseHost host;
    EXPECT_EQ(host.get<std::string>(wrap(host, "CFUUIDZNT", @"no identifier"), "Text"), "");
    EXPECT_EQ(host.get<REALword>(wrap(host, "CFErrorZNT", @"no error"), "Code"), 0);
    const ObjectRef color = wrap(host, "CGColorZNT", @"no colour");
    EXPECT_EQ(host.get<double>(color, "Alpha"), 0);
    EXPECT_EQ(host.call<double>(color, "Component", 0), 0);
}

TEST(CoreFoundationObjects, ServePrograms) {
    BaseHost host;
    const Host::Outcome outcome = host.run(R"(
Dim id As CFUUIDZNT = CFUUIDZNT.CreateWithText("68753a44-4d6f-1226-9c60-0050e4c00067")
Print id.Text
Print Str(id.Equal(CFUUIDZNT.CreateWithText(id.Text))) + " " + Str(id.Equal(CFUUIDZNT.Create))
Print Str(id.Equal(Nil)) + " " + Str(CFUUIDZNT.CreateWithText("") Is Nil) + " " + Str(id IsA CFObjectZNT)
Dim e As CFErrorZNT = CFErrorZNT.Create("some.domain", 12)
Print e.Domain + " " + Str(e.Code) + " " + Str(e.TypeID = id.TypeID)
Dim c As CGColorZNT = CGColorZNT.CreateGenericRGB(0.25, 0.5, 0.75, 0.125)
Print Str(c.Component(0)) + " " + Str(c.Component(2)) + " " + Str(c.Alpha) + " " + Str(c.NumberOfComponents)
Print Str(c.Component(4)) + " " + Str(c.Component(-1))
Print Str(c.ColorSpace.NumberOfComponents) + " " + Str(CGColorSpaceZNT.CreateDeviceCMYK.NumberOfComponents)
Print Str(CGColorSpaceZNT.CreateDeviceGray.Model) + " " + Str(CGColorSpaceZNT.CreateDeviceRGB.Model)
)");
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(outcome.output, "68753A44-4D6F-1226-9C60-0050E4C00067\nTrue False\nFalse True True\n"
                              "some.domain 12 False\n0.25 0.75 0.125 4\n0 0\n3 4\n0 1\n");
}

} // namespace
