#include "support.h"

namespace {

class CFNumberTest : public InPool {};
using Number = cocoa::Retained<CFNumberRef>;

template <typename Value>
Number number(CFNumberType type, Value value) {
    return Number::adopt(CFNumberCreate(nullptr, type, &value));
}

TEST_F(CFNumberTest, IsAnNSNumberOfTheRequestedType) {
    const Number made = number(kCFNumberSInt32Type, SInt32{-7});
    NSNumber* const bridged = (NSNumber*)made.get();
    EXPECT_EQ([bridged intValue], -7);
    EXPECT_STREQ([bridged objCType], "i");
    EXPECT_EQ(CFGetTypeID(made.get()), CFNumberGetTypeID());
    EXPECT_EQ(CFGetRetainCount(made.get()), 1);
}

TEST_F(CFNumberTest, TellsTheFixedSizeTypeItIsKeptIn) {
    EXPECT_EQ(CFNumberGetType(number(kCFNumberCharType, char{1}).get()), kCFNumberSInt8Type);
    EXPECT_EQ(CFNumberGetType(number(kCFNumberShortType, short{1}).get()), kCFNumberSInt16Type);
    EXPECT_EQ(CFNumberGetType(number(kCFNumberIntType, 1).get()), kCFNumberSInt32Type);
    EXPECT_EQ(CFNumberGetType(number(kCFNumberLongType, 1L).get()),
              sizeof(long) == 8 ? kCFNumberSInt64Type : kCFNumberSInt32Type);
    EXPECT_EQ(CFNumberGetType(number(kCFNumberLongLongType, 1LL).get()), kCFNumberSInt64Type);
    EXPECT_EQ(CFNumberGetType(number(kCFNumberFloatType, 1.0F).get()), kCFNumberFloat32Type);
    EXPECT_EQ(CFNumberGetType(number(kCFNumberCGFloatType, CGFloat{1}).get()),
              sizeof(CGFloat) == 8 ? kCFNumberFloat64Type : kCFNumberFloat32Type);
    EXPECT_EQ(CFNumberGetByteSize(number(kCFNumberShortType, short{1}).get()), 2);
    EXPECT_EQ(CFNumberGetByteSize(number(kCFNumberDoubleType, 1.0).get()), 8);
    EXPECT_TRUE(CFNumberIsFloatType(number(kCFNumberDoubleType, 1.0).get()));
    EXPECT_FALSE(CFNumberIsFloatType(number(kCFNumberSInt64Type, SInt64{1}).get()));
}

TEST_F(CFNumberTest, SaysWhenAConversionLosesSomething) {
    const Number big = number(kCFNumberSInt64Type, SInt64{5000000000});
    SInt32 narrow = 0;
    EXPECT_FALSE(CFNumberGetValue(big.get(), kCFNumberSInt32Type, &narrow));
    EXPECT_EQ(narrow, 705032704);
    double wide = 0;
    EXPECT_TRUE(CFNumberGetValue(big.get(), kCFNumberDoubleType, &wide));
    EXPECT_EQ(wide, 5e9);
    SInt8 small = 0;
    EXPECT_TRUE(
        CFNumberGetValue(number(kCFNumberDoubleType, -3.0).get(), kCFNumberSInt8Type, &small));
    EXPECT_EQ(small, -3);
    int cut = 0;
    EXPECT_FALSE(CFNumberGetValue(number(kCFNumberDoubleType, 2.5).get(), kCFNumberIntType, &cut));
    EXPECT_EQ(cut, 2);
}

TEST_F(CFNumberTest, IsNullForAnUnknownTypeOrNoValue) {
    const int value = 1;
    EXPECT_EQ(CFNumberCreate(nullptr, 99, &value), nullptr);
    EXPECT_EQ(CFNumberCreate(nullptr, kCFNumberIntType, nullptr), nullptr);
}

TEST_F(CFNumberTest, IsComparedByValue) {
    const Number five = number(kCFNumberIntType, 5);
    const Number alsoFive = number(kCFNumberDoubleType, 5.0);
    EXPECT_EQ(CFNumberCompare(five.get(), alsoFive.get(), nullptr), kCFCompareEqualTo);
    EXPECT_TRUE(CFEqual(five.get(), alsoFive.get()));
    EXPECT_EQ(CFHash(five.get()), CFHash(alsoFive.get()));
    EXPECT_EQ(CFNumberCompare(five.get(), number(kCFNumberIntType, 6).get(), nullptr),
              kCFCompareLessThan);
}

TEST_F(CFNumberTest, BooleansAreATypeOfTheirOwn) {
    EXPECT_EQ(CFGetTypeID(kCFBooleanTrue), CFBooleanGetTypeID());
    EXPECT_NE(CFBooleanGetTypeID(), CFNumberGetTypeID());
    EXPECT_EQ(CFGetTypeID([NSNumber numberWithChar:1]), CFNumberGetTypeID());
    EXPECT_TRUE(CFBooleanGetValue(kCFBooleanTrue));
    EXPECT_FALSE(CFBooleanGetValue(kCFBooleanFalse));
}

TEST_F(CFNumberTest, DatesAreFoundationsDates) {
    const auto date = cocoa::Retained<CFDateRef>::adopt(CFDateCreate(nullptr, 86400));
    EXPECT_EQ([(NSDate*)date.get() timeIntervalSince1970], 978307200.0 + 86400);
    EXPECT_EQ(CFDateGetAbsoluteTime(date.get()), 86400);
    EXPECT_EQ(CFGetTypeID(date.get()), CFDateGetTypeID());
    const auto later = cocoa::Retained<CFDateRef>::adopt(CFDateCreate(nullptr, 86410));
    EXPECT_EQ(CFDateCompare(date.get(), later.get(), nullptr), kCFCompareLessThan);
    EXPECT_EQ(CFDateGetTimeIntervalSinceDate(date.get(), later.get()), -10);
    EXPECT_NEAR(CFAbsoluteTimeGetCurrent(), static_cast<double>(time(nullptr)) - 978307200, 5);
}

} // namespace
