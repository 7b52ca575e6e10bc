#include "tests/plugin/values/round_trips.h"

namespace {

class Wrappers : public RoundTrips {
protected:
    /// Wraps once more on hosts without the base part, which knows the live wrappers.
    static constexpr std::string_view imageProgram = R"(
        Dim image As New NSImageZNT(10, 20)
        Between image, "NSImage"
        Dim result As NSImageZNT = Back(image)
        Print result.width & " " & result.height
        Print result Is image
        Print result.Handle = image.Handle
        Dim list() As NSImageZNT = Array(image, image)
        Dim results() As Variant = Back(list)
        Print results(0) Is results(1)
    )";
};

TEST_F(Wrappers, OfImagesComeBackThemselvesWhileTheyAreAlive) {
    EXPECT_THAT(printed(imageProgram), ElementsAre("True", "10 20", "True", "True", "True"));
}

TEST_F(Wrappers, OfImagesComeBackAsOthersWithoutTheBasePart) {
    host({.withoutBase = true});
    EXPECT_THAT(printed(imageProgram), ElementsAre("True", "10 20", "False", "True", "False"));
}

TEST_F(Wrappers, OfRepresentationsComeBackWithTheirOwnClass) {
    EXPECT_THAT(printed(R"(
        Dim image As NSImageZNT = NSImageZNT.imageWithContentsOfFile(GetFolderItem(Arguments(0)))
        Dim representations() As NSImageRepZNT = image.representations
        Dim result As Variant = Back(representations(0))
        Print result IsA NSBitmapImageRepZNT
        Print NSImageRepZNT(result).Handle = representations(0).Handle
    )",
                        {PROJECT_SOURCE_DIR "/examples/photo.jpg"}),
                ElementsAre("True", "True"));
}

/// Keys are copied.
TEST_F(Wrappers, OfImagesAreOtherImagesAsKeys) {
    EXPECT_THAT(printed(R"(
        Dim image As New NSImageZNT(10, 20)
        Dim source As New Dictionary
        source.Value(image) = image
        Dim result As Dictionary = Back(source)
        Dim key As NSImageZNT = result.Key(0)
        Print key Is image
        Print key.width & " " & key.height
        Print result.Value(key) Is image
    )"),
                ElementsAre("False", "10 20", "True"));
}

TEST_F(Wrappers, OfUnchangingFoundationObjectsComeBackThemselves) {
    EXPECT_THAT(printed(R"(
        Dim zone As NSTimeZoneZNT = NSTimeZoneZNT.timeZoneWithName("Europe/Berlin")
        Check zone, "NSTimeZone"
        Check NSErrorZNT.errorWithDomain("some.domain", 7), "NSError"
        Check NSLocaleZNT.localeWithIdentifier("de_DE"), "NSLocale"
        Check NSCharacterSetZNT.decimalDigitCharacterSet, "NSCharacterSet"
        Check NSAttributedStringZNT.attributedStringWithString("Grün"), "NSAttributedString"
        Sub Check(wrapper As Object, className As String)
          Dim asKey As New Dictionary
          asKey.Value(wrapper) = 1
          Dim keys As Dictionary = Back(asKey)
          Print ValueProbe.IsKindOf(wrapper, className) & " " & (Back(wrapper) Is wrapper) & _
                " " & (keys.Key(0) Is wrapper)
        End Sub
    )"),
                ElementsAre("True True True", "True True True", "True True True", "True True True",
                            "True True True"));
}

/// Each is made in Cocoa first, so that its first wrapper is the plug-in's.
TEST_F(Wrappers, OfColoursAreWhatTheyWere) {
    EXPECT_THAT(printed(R"(
        Dim colour As CGColorZNT = CGColorZNT.CreateGenericRGB(1, 0.5, 0.25, 0.125)
        Dim result As CGColorZNT = Back(colour)
        Print result Is colour
        Print result.Handle = colour.Handle
        Print result.Component(1) & " " & result.Alpha
    )"),
                ElementsAre("False", "True", "0.5 0.125"));
}

TEST_F(Wrappers, OfColourSpacesAreWhatTheyWere) {
    EXPECT_THAT(printed(R"(
        Dim space As CGColorSpaceZNT = CGColorSpaceZNT.CreateDeviceCMYK
        Dim result As CGColorSpaceZNT = Back(space)
        Print result Is space
        Print result.Handle = space.Handle
        Print result.NumberOfComponents
    )"),
                ElementsAre("False", "True", "4"));
}

TEST_F(Wrappers, OfUUIDsAreWhatTheyWere) {
    EXPECT_THAT(printed(R"(
        Const Text = "68753A44-4D6F-1226-9C60-0050E4C00067"
        Dim uuid As CFUUIDZNT = CFUUIDZNT.CreateWithText(Text)
        Dim result As CFUUIDZNT = Back(uuid)
        Print result Is uuid
        Print result.Text
        Print uuid.Equal(result)
    )"),
                ElementsAre("False", "68753A44-4D6F-1226-9C60-0050E4C00067", "True"));
}

/// Both are one kind of object in Cocoa, and Foundation's classes are tested first.
TEST_F(Wrappers, OfCoreFoundationErrorsComeBackAsFoundationErrors) {
    EXPECT_THAT(printed(R"(
        Dim result As NSErrorZNT = Back(CFErrorZNT.Create("some.domain", 5))
        Print result.domain & " " & result.code
    )"),
                ElementsAre("some.domain 5"));
}

/// As Core Foundation has it: these objects cannot be copied as keys must be.
TEST_F(Wrappers, OfCoreFoundationObjectsAreNoKeys) {
    EXPECT_THAT(printed(R"(
        Dim source As New Dictionary
        source.Value(CGColorSpaceZNT.CreateDeviceRGB) = 1
        Try
          Print Back(source) Is Nil
        Catch e As RuntimeException
          Print Left(e.Message, 26)
        End Try
    )"),
                ElementsAre("NSInvalidArgumentException"));
}

TEST_F(Wrappers, OfGeometryComeBackAsCopies) {
    EXPECT_THAT(printed(R"(
        Dim size As NSSizeZNT = Back(New NSSizeZNT(3, 4.5))
        Print size.width & " " & size.height
        Dim point As NSPointZNT = Back(New NSPointZNT(-1, 0.25))
        Print point.x & " " & point.y
        Dim rect As NSRectZNT = Back(New NSRectZNT(1, 2, 3, 4))
        Print rect.x & " " & rect.y & " " & rect.width & " " & rect.height
        Dim range As NSRangeZNT = Back(New NSRangeZNT(5, 4294967295))
        Print range.location & " " & range.length
        Print Back(size) Is size
        For Each value As Variant In Array(size, point, rect, range)
          Between value, "NSValue"
        Next
    )"),
                ElementsAre("3 4.5", "-1 0.25", "1 2 3 4", "5 4294967295", "False", "True", "True",
                            "True", "True"));
}

TEST_F(Wrappers, OfGeometryKeepTheExtremesOfSingle) {
    EXPECT_THAT(printed(R"(
        Dim most As Single = 3.4028234663852886e38
        Dim least As Single = 1.401298464324817e-45
        Dim size As NSSizeZNT = Back(New NSSizeZNT(most, least))
        Print size.width = most And size.height = least
        Dim infinite As Double = 1.7976931348623157e308
        infinite = infinite * 10
        Dim point As NSPointZNT = Back(New NSPointZNT(-infinite, infinite - infinite))
        Print point.x & " " & point.y
    )"),
                ElementsAre("True", "-INF NaN"));
}

TEST_F(Wrappers, OfTimesComeBackAsCopies) {
    EXPECT_THAT(printed(R"(
        Dim time As QTKitTimeZNT = Back(New QTKitTimeZNT(-9223372036854775807, 600, 1))
        Print time.timeValue & " " & time.timeScale & " " & time.flags
        Dim span As QTKitTimeRangeZNT = Back(New QTKitTimeRangeZNT(time, New QTKitTimeZNT(5, 2, 3)))
        Print span.time.timeValue & " " & span.duration.timeValue & " " & span.duration.flags
        Dim moment As CMTimeZNT = Back(New CMTimeZNT(9223372036854775807, -600, 4294967295, -1))
        Print moment.value & " " & moment.timescale & " " & moment.flags & " " & moment.epoch
        Dim range As CMTimeRangeZNT = Back(New CMTimeRangeZNT(moment, New CMTimeZNT(1, 2, 3, 4)))
        Print range.start.epoch & " " & range.duration.epoch
        Dim mapping As New CMTimeMappingZNT(range, New CMTimeRangeZNT(New CMTimeZNT(5, 6, 7, 8)))
        mapping = Back(mapping)
        Print mapping.source.duration.value & " " & mapping.target.start.epoch
    )"),
                ElementsAre("-9223372036854775807 600 1", "-9223372036854775807 5 3",
                            "9223372036854775807 -600 4294967295 -1", "-1 4", "1 8"));
}

TEST_F(Wrappers, OfTheProgramsOwnObjectsGiveTheObjectsThemselves) {
    EXPECT_THAT(printed(R"(
        Dim own As New RuntimeException("mine")
        Between own, "ZNTREALobjectWrapper"
        Print Back(own) Is own
        Dim source As New Dictionary
        source.Value("value") = own
        source.Value(own) = "key"
        Dim result As Dictionary = Back(source)
        Print result.Value("value") Is own
        Print result.Value(own)
        Dim list() As RuntimeException = Array(own)
        Dim results() As Variant = Back(list)
        Print results(0) Is own
    )"),
                ElementsAre("True", "True", "True", "key", "True"));
}

TEST_F(Wrappers, OfTheProgramsOwnObjectsNeedTheBasePart) {
    host({.withoutBase = true});
    EXPECT_THAT(printed(R"(
        Dim own As New RuntimeException("mine")
        Print Back(own) Is Nil
        Dim source As New Dictionary
        source.Value("value") = own
        Dim result As Dictionary = Back(source)
        Print result.Count & " " & (result.Value("value") Is Nil)
    )"),
                ElementsAre("True", "1 True"));
}

} // namespace
