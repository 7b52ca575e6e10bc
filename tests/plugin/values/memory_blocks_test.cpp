#include "tests/plugin/values/round_trips.h"

namespace {

class MemoryBlocks : public RoundTrips {};

TEST_F(MemoryBlocks, WithoutBytesAreNothing) {
    EXPECT_THAT(printed(R"(
        Print Back(New MemoryBlock(0)) Is Nil
    )"),
                ElementsAre("True"));
}

TEST_F(MemoryBlocks, OfOneByteComeBackAsACopy) {
    EXPECT_THAT(printed(R"(
        Dim block As New MemoryBlock(1)
        block.Byte(0) = 200
        Between block, "NSData"
        Dim result As MemoryBlock = Back(block)
        Print result.Size & " " & result.Byte(0)
        Print result Is block
    )"),
                ElementsAre("True", "1 200", "False"));
}

TEST_F(MemoryBlocks, KeepEveryValueOfAByte) {
    EXPECT_THAT(printed(R"(
        Dim block As New MemoryBlock(256)
        For i As Integer = 0 To 255
          block.Byte(i) = 255 - i
        Next
        Dim result As MemoryBlock = Back(block)
        Dim different As Integer
        For i As Integer = 0 To 255
          If result.Byte(i) <> 255 - i Then different = different + 1
        Next
        Print result.Size & " " & different
    )"),
                ElementsAre("256 0"));
}

/// Each thousandth place holds its own number.
TEST_F(MemoryBlocks, Of64MegabytesComeBackWhole) {
    EXPECT_THAT(printed(R"(
        Const Size = 67108864
        Dim block As New MemoryBlock(Size)
        For place As Integer = 0 To Size - 4 Step 4004
          block.Long(place) = place
        Next
        block.Byte(Size - 1) = 77
        Dim result As MemoryBlock = Back(block)
        Dim different As Integer
        For place As Integer = 0 To Size - 4 Step 4004
          If result.Long(place) <> place Then different = different + 1
        Next
        Print result.Size & " " & different & " " & result.Byte(Size - 1)
    )"),
                ElementsAre("67108864 0 77"));
}

} // namespace
