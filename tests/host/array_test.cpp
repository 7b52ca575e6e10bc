#include "host/called_services.h"
#include "support/host.h"

#include <gmock/gmock.h>

namespace {

using namespace REALservices;
using testing::ElementsAre;

class Arrays : public testing::Test {
protected:
    REALarrayStruct* create(std::int32_t type, std::int32_t upperBound = -1) {
        return service(CreateArray)(type, upperBound);
    }
    static REALarrayStruct* raw(const host::ObjectRef& array) {
        return static_cast<REALarrayStruct*>(array.get());
    }
    template <typename Element>
    void insert(const host::ObjectRef& array, std::int32_t index, Element element) {
        using Insert = void (*)(REALarrayStruct*, std::int32_t, Element);
        reinterpret_cast<Insert>(service(ArrayInsertProc)(raw(array)))(raw(array), index, element);
    }
    template <typename Element>
    Element get(const host::ObjectRef& array, std::int32_t index) {
        using Get = Element (*)(REALarrayStruct*, std::int32_t);
        return reinterpret_cast<Get>(service(ArrayGetProc)(raw(array)))(raw(array), index);
    }
    std::vector<std::string> texts(const host::ObjectRef& array) {
        std::vector<std::string> list;
        for (const host::Value& element : host.elements(array))
            list.push_back(element.utf8());
        return list;
    }

    Host host{{.bare = true}};
};

TEST_F(Arrays, StartWithNeutralElementsUpToTheirBound) {
    const auto empty = host::ObjectRef::adopt(create(REALarrayOfStrings));
    EXPECT_EQ(service(ArrayUBound)(raw(empty)), -1);
    const auto three = host::ObjectRef::adopt(create(REALarrayOfStrings, 2));
    EXPECT_EQ(service(ArrayUBound)(raw(three)), 2);
    EXPECT_THAT(texts(three), ElementsAre("", "", ""));
}

TEST_F(Arrays, TakeStringsAtAnIndexAndOneBehindTheLast) {
    const auto array = host::ObjectRef::adopt(create(REALarrayOfStrings));
    const host::StringRef b = host.text("b");
    insert(array, 0, b.get());
    insert(array, 1, host.text("c").get());
    insert(array, 0, host.text("a").get());
    insert(array, 3, static_cast<REALstringStruct*>(nullptr));
    EXPECT_THAT(texts(array), ElementsAre("a", "b", "c", ""));
    EXPECT_EQ(host.references(b), 2) << "the array holds a reference of its own";
    const auto read = host::StringRef::adopt(get<REALstringStruct*>(array, 1));
    EXPECT_EQ(read.get(), b.get());
}

TEST_F(Arrays, RefuseIndexesOutside) {
    const auto array = host::ObjectRef::adopt(create(REALarrayOfStrings));
    insert(array, 1, host.text("x").get());
    insert(array, -1, host.text("x").get());
    EXPECT_EQ(get<REALstringStruct*>(array, 0), nullptr);
    auto reports = host.takeReports();
    reports.pop_back(); // the array itself is alive
    EXPECT_THAT(reports,
                ElementsAre("the array's insert procedure: argument 2: index 1 in an array of 0 "
                            "elements",
                            "the array's insert procedure: argument 2: index -1 in an array of 0 "
                            "elements",
                            "the array's get procedure: argument 2: index 0 in an array up to -1"));
}

TEST_F(Arrays, OfObjectsTakeObjectsAndVariants) {
    const auto array = host::ObjectRef::adopt(create(REALarrayOfObjects));
    const host::ObjectRef block = host.memoryBlock("x");
    const auto number = host::ObjectRef::adopt(service(Int32ToVariant)(7));
    insert(array, 0, block.get());
    insert(array, 1, number.get());
    insert(array, 2, static_cast<REALobjectStruct*>(nullptr));
    const auto elements = host.elements(array);
    EXPECT_EQ(elements[0].object(), block.get());
    EXPECT_EQ(elements[1].toInt64(), 7);
    EXPECT_EQ(elements[1].kind(), host::Kind::Int32);
    EXPECT_TRUE(elements[2].isNil());
    const auto read = host::ObjectRef::adopt(get<REALobjectStruct*>(array, 0));
    EXPECT_EQ(read, block);
}

TEST_F(Arrays, OfNumbersTakeAndGiveTheirElementsUnboxed) {
    const host::ObjectRef doubles = host.arrayOf(host::Kind::Double, {1.5, -2});
    insert(doubles, 2, 3.25);
    EXPECT_EQ(get<double>(doubles, 1), -2);
    EXPECT_EQ(get<double>(doubles, 2), 3.25);
    const host::ObjectRef singles = host.arrayOf(host::Kind::Single, {0.5F});
    EXPECT_EQ(get<float>(singles, 0), 0.5F);
    const host::ObjectRef wide = host.arrayOf(host::Kind::Int64, {INT64_MIN});
    EXPECT_EQ(get<std::int64_t>(wide, 0), INT64_MIN);
    const host::ObjectRef small = host.arrayOf(host::Kind::Int32, {-7});
    EXPECT_EQ(get<std::int32_t>(small, 0), -7);
    const host::ObjectRef flags = host.arrayOf(host::Kind::Boolean, {false, true});
    EXPECT_TRUE(get<bool>(flags, 1));
}

TEST_F(Arrays, OfUnsignedNumbersPassThemAs64Bits) {
    const host::ObjectRef unsignedWords = host.arrayOf(host::Kind::UInt32, {UINT32_MAX});
    EXPECT_EQ(host::varType(unsignedWords), 0x1003);
    EXPECT_EQ(get<std::int64_t>(unsignedWords, 0), UINT32_MAX);
    insert(unsignedWords, 1, std::int64_t{3000000000});
    EXPECT_EQ(*host.elements(unsignedWords)[1].get<std::uint32_t>(), 3000000000);
    const host::ObjectRef wide = host.arrayOf(host::Kind::UInt64, {UINT64_MAX});
    EXPECT_EQ(get<std::int64_t>(wide, 0), -1);
}

TEST_F(Arrays, OfAmountsAndColoursPassTheirBits) {
    const host::ObjectRef amounts = host.arrayOf(host::Kind::Currency, {host::Currency{-12345}});
    EXPECT_EQ(host::varType(amounts), 0x1006);
    EXPECT_EQ(get<std::int64_t>(amounts, 0), -12345);
    insert(amounts, 1, std::int64_t{20000});
    EXPECT_EQ(host.elements(amounts)[1].toDouble(), 2);
    const host::ObjectRef colours = host.arrayOf(host::Kind::Color, {host::Color{0x123456}});
    EXPECT_EQ(host::varType(colours), 0x1010);
    EXPECT_EQ(get<std::uint32_t>(colours, 0), 0x123456U);
    insert(colours, 1, std::uint32_t{0xFF654321});
    EXPECT_EQ(host.elements(colours)[1].get<host::Color>()->rgb, 0x654321U);
}

TEST_F(Arrays, OfDatesPassTheObjects) {
    const host::ObjectRef date = host.create("Date", 2000, 2, 29);
    const host::ObjectRef dates = host.arrayOf(host::Type::object("Date"));
    EXPECT_EQ(host::varType(dates), 0x1007);
    insert(dates, 0, date.get());
    EXPECT_EQ(host.references(date), 2);
    EXPECT_EQ(host::ObjectRef::adopt(get<REALobjectStruct*>(dates, 0)), date);
    insert(dates, 1, host.memoryBlock("x").get());
    EXPECT_EQ(host.elements(dates).size(), 1u);
    EXPECT_EQ(host.takeReports().front(),
              "the array's insert procedure: argument 3: MemoryBlock where Date is expected");
}

TEST(ArraysOfOlderHosts, CarryTheirElementGetter) {
    Host host{{.version = 2012.2, .bare = true}};
    const host::ObjectRef words = host.arrayOf(host::Kind::String, {"a", "b"});
    auto* const array = static_cast<REALarrayStruct*>(words.get());
    ASSERT_NE(array->elementGetter, nullptr);
    EXPECT_EQ(array->elementGetter, service(ArrayGetProc)(array));
    auto* const get = reinterpret_cast<REALarrayGet<REALstringStruct*>>(array->elementGetter);
    EXPECT_EQ(host::StringRef::adopt(get(array, 1)).utf8(), "b");
}

TEST(ArraysOfOlderHosts, MayCarryNoGetter) {
    Host host{{.version = 2013.9, .bare = true}};
    const host::ObjectRef words = host.arrayOf(host::Kind::String, {"a"});
    EXPECT_EQ(static_cast<REALarrayStruct*>(words.get())->elementGetter, nullptr);
}

TEST(ArraysOfNewerHosts, ReportTheUseOfWhatStandsInTheGettersPlace) {
    Host host{{.version = 2014.1, .bare = true}};
    const host::ObjectRef numbers = host.arrayOf(host::Kind::Int32, {7});
    auto* const array = static_cast<REALarrayStruct*>(numbers.get());
    auto* const get = reinterpret_cast<REALarrayGet<std::int32_t>>(array->elementGetter);
    EXPECT_EQ(get(array, 0), 0);
    EXPECT_EQ(host.takeReports().front(),
              "the array's own getter: arrays carry none on hosts newer than 2013.9");
}

TEST_F(Arrays, OfUnknownElementsOrImpossibleBoundsAreRefused) {
    EXPECT_EQ(create(99), nullptr);
    EXPECT_EQ(create(REALarrayOfStrings, -2), nullptr);
    EXPECT_EQ(create(REALarrayOfStrings, INT32_MAX), nullptr);
    EXPECT_EQ(host.takeReports().size(), 3u);
}

TEST_F(Arrays, AreNotMistakenForOtherObjects) {
    const host::ObjectRef block = host.memoryBlock("x");
    EXPECT_EQ(service(ArrayUBound)(raw(block)), -1);
    EXPECT_EQ(host.takeReports().front(),
              "RuntimeUBound: argument 1: MemoryBlock where Array is expected");
}

} // namespace
