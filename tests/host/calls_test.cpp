#include "host/registered_class.h"
#include "support/host.h"

#include <gmock/gmock.h>

#include <limits>

namespace {

using namespace REALservices;
using REALtables::method;
using REALtables::property;
using REALtables::shared_method;
using testing::ElementsAre;

template <typename Value>
Value echo(Value value) {
    return value;
}

REALstringStruct* echoString(REALstringStruct* value) {
    service(LockString)(value);
    return value;
}

template <typename Object>
Object* echoObject(Object* value) {
    service(LockObject)(value);
    return value;
}

/// Each argument at its own place, so that a shifted one shows.
double weigh(std::int32_t a, double b, float c, std::int64_t d, bool e, std::uint64_t f, double g,
             REALword h, float i, std::int64_t j) {
    return a + b * 10 + static_cast<double>(c) * 100 + static_cast<double>(d) * 1e3 +
           (e ? 1e4 : 0) + static_cast<double>(f) * 1e5 + g * 1e6 + static_cast<double>(h) * 1e7 +
           static_cast<double>(i) * 1e8 + static_cast<double>(j) * 1e9;
}

bool isNegative(std::int32_t value) { return value < 0; }
float half(double value) { return static_cast<float>(value / 2); }
REALword count = 0;
void increment() { ++count; }
void setNumbers(std::int32_t* number, double* real, REALstringStruct** text) {
    *number += 1;
    *real *= 2;
    *text = service(BuildString)("new", 3);
}

REALword lastParameter = 0;
REALobjectStruct* lastObject = nullptr;
double storedValue = 0;
double readValue(REALobjectStruct* object, REALword parameter) {
    lastObject = object;
    lastParameter = parameter;
    return storedValue;
}
void writeValue(REALobjectStruct* object, REALword parameter, double value) {
    lastObject = object;
    lastParameter = parameter;
    storedValue = value;
}
REALstringStruct* self(REALobjectStruct* object, REALstringStruct* text) {
    lastObject = object;
    return echoString(text);
}
REALobjectStruct* readKey(REALobjectStruct* object, REALstringStruct* key) {
    return service(StringToVariant)(key);
}
std::string lastKey;
void writeKey(REALobjectStruct* object, REALstringStruct* key, REALobjectStruct* value) {
    lastKey = host::StringRef::retain(key).utf8() + "=" +
              host::unboxed(host::ObjectRef::retain(value)).utf8();
}

REALobjectStruct* releasedObject() {
    REALobjectStruct* const block = service(NewMemoryBlock)(1);
    service(UnlockObject)(block);
    return block;
}
REALfolderItemStruct* wrongObject() {
    return static_cast<REALfolderItemStruct*>(
        static_cast<REALobjectStruct*>(service(NewMemoryBlock)(1)));
}
REALstringStruct* strangeString() {
    static REALstringStruct stranger{};
    return &stranger;
}
std::int32_t raiseAndReturn() {
    REALobjectStruct* const exception = service(NewInstance)("IOException");
    service(RaiseException)(exception);
    service(UnlockObject)(exception);
    return 7;
}
REALarrayStruct* words() {
    REALarrayStruct* const array = service(CreateArray)(REALarrayOfObjects, -1);
    auto* const insert = reinterpret_cast<REALarrayInsertObject>(service(ArrayInsertProc)(array));
    for (std::int32_t i = 0; i < 2; ++i) {
        REALobjectStruct* const block = service(NewMemoryBlock)(i);
        insert(array, i, block);
        service(UnlockObject)(block);
    }
    return array;
}

class Calls : public testing::Test {
protected:
    Calls() { tables.registerAs(); }

    template <typename Value>
    void expectEchoes(const char* method, const std::vector<Value>& values) {
        for (const Value& value : values) {
            const host::Value result = host.shared("Calls", method, value);
            ASSERT_TRUE(result.get<Value>()) << method;
            EXPECT_EQ(*result.get<Value>(), value) << method;
        }
    }

    ClassTables tables{
        {.name = "Calls", .instanceDataSize = 16},
        {property("Value", "Double", readValue, writeValue),
         property("ReadOnly", "Double", readValue), REALtables::field("Handle", "Integer", 8)},
        {method("Self(text As String) As String", self),
         method("Key(name As String) As Variant", readKey, writeKey)},
        {
            shared_method("EchoInteger(value As Integer) As Integer", echo<REALword>),
            shared_method("EchoInt32(value As Int32) As Int32", echo<std::int32_t>),
            shared_method("EchoUInt32(value As UInt32) As UInt32", echo<std::uint32_t>),
            shared_method("EchoInt64(value As Int64) As Int64", echo<std::int64_t>),
            shared_method("EchoUInt64(value As UInt64) As UInt64", echo<std::uint64_t>),
            shared_method("EchoSingle(value As Single) As Single", echo<float>),
            shared_method("EchoDouble(value As Double) As Double", echo<double>),
            shared_method("EchoBoolean(value As Boolean) As Boolean", echo<bool>),
            shared_method("EchoColor(value As Color) As Color", echo<std::uint32_t>),
            shared_method("EchoCurrency(value As Currency) As Currency", echo<std::int64_t>),
            shared_method("EchoPtr(value As Ptr) As Ptr", echo<void*>),
            shared_method("EchoString(value As String) As String", echoString),
            shared_method("EchoVariant(value As Variant) As Variant", echoObject<REALobjectStruct>),
            shared_method("EchoBlock(value As MemoryBlock) As MemoryBlock",
                          echoObject<REALmemoryBlockStruct>),
            shared_method("EchoArray(value() As String) As String()", echoObject<REALarrayStruct>),
            shared_method("Weigh(a As Int32, b As Double, c As Single, d As Int64, e As Boolean, "
                          "f As UInt64, g As Double, h As Integer, i As Single, j As Int64) As "
                          "Double",
                          weigh),
            shared_method("IsNegative(value As Int32) As Boolean", isNegative),
            shared_method("Half(value As Double) As Single", half),
            shared_method("Increment", increment),
            shared_method(
                "SetNumbers(ByRef number As Int32, ByRef real As Double, ByRef text As String)",
                setNumbers),
            shared_method("Released() As Object", releasedObject),
            shared_method("Wrong() As FolderItem", wrongObject),
            shared_method("Strange() As String", strangeString),
            shared_method("RaiseAndReturn() As Int32", raiseAndReturn),
            shared_method("Words() As MemoryBlock()", words),
            shared_method("WordsAsItems() As FolderItem()", words),
        }};
    Host host{{.bare = true}};
};

template <typename Number>
std::vector<Number> extremes() {
    using Limits = std::numeric_limits<Number>;
    return {Limits::lowest(), Limits::max(), static_cast<Number>(-1), 0, 1};
}

TEST_F(Calls, PassAndReturnEveryKindOfInteger) {
    expectEchoes("EchoInteger", extremes<REALword>());
    expectEchoes("EchoInt32", extremes<std::int32_t>());
    expectEchoes("EchoUInt32", extremes<std::uint32_t>());
    expectEchoes("EchoInt64", extremes<std::int64_t>());
    expectEchoes("EchoUInt64", extremes<std::uint64_t>());
}

TEST_F(Calls, PassAndReturnEveryKindOfFloatingPointNumber) {
    expectEchoes("EchoSingle", extremes<float>());
    expectEchoes("EchoDouble", extremes<double>());
}

TEST_F(Calls, PassAndReturnBooleansColoursAmountsAndPointers) {
    expectEchoes<bool>("EchoBoolean", {true, false});
    expectEchoes<host::Color>("EchoColor", {{0xFFFFFF}, {0x010203}});
    expectEchoes<host::Currency>("EchoCurrency", {{INT64_MIN}, {15000}});
    expectEchoes<void*>("EchoPtr", {&count, nullptr});
}

TEST_F(Calls, PassManyArgumentsEachAtItsPlace) {
    EXPECT_EQ(host.shared<double>("Calls", "Weigh", 1, 2.0, 3.0F, std::int64_t{4}, true,
                                  std::uint64_t{6}, 7.0, 8, 9.0F, std::int64_t{2}),
              2987614321.0);
}

TEST_F(Calls, ReturnNarrowResultsWhole) {
    EXPECT_TRUE(host.shared<bool>("Calls", "IsNegative", -1));
    EXPECT_FALSE(host.shared<bool>("Calls", "IsNegative", 256));
    EXPECT_EQ(host.shared<float>("Calls", "Half", 0.5), 0.25F);
}

TEST_F(Calls, WithoutAResultGiveNothing) {
    count = 0;
    EXPECT_TRUE(host.shared("Calls", "Increment").isNothing());
    EXPECT_EQ(count, 1);
}

TEST_F(Calls, ConvertArgumentsToTheirDeclaredTypes) {
    EXPECT_EQ(host.shared<double>("Calls", "EchoDouble", 3), 3);
    EXPECT_EQ(host.shared<int>("Calls", "EchoInt32", 2.9), 2);
}

TEST_F(Calls, KeepTheReferencesOfStringsRight) {
    const host::StringRef text = host.text("abc");
    {
        const host::Value result = host.shared("Calls", "EchoString", text);
        EXPECT_EQ(result.string(), text.get());
        EXPECT_EQ(host.references(text), 2);
    }
    EXPECT_EQ(host.references(text), 1);
    EXPECT_EQ(host.shared<std::string>("Calls", "EchoString", ""), "");
}

TEST_F(Calls, KeepTheReferencesOfObjectsRight) {
    const host::ObjectRef block = host.memoryBlock("abc");
    {
        const host::Value result = host.shared("Calls", "EchoBlock", block);
        EXPECT_EQ(result.object(), block.get());
        EXPECT_EQ(host.references(block), 2);
    }
    EXPECT_EQ(host.references(block), 1);
    EXPECT_TRUE(host.shared("Calls", "EchoBlock", nullptr).isNil());
}

TEST_F(Calls, BoxVariantsOnTheWayInAndUnboxThemOnTheWayOut) {
    EXPECT_EQ(*host.shared("Calls", "EchoVariant", 42).get<std::int32_t>(), 42);
    EXPECT_EQ(host.shared("Calls", "EchoVariant", "text").utf8(), "text");
    EXPECT_TRUE(host.shared("Calls", "EchoVariant", nullptr).isNil());
    const host::ObjectRef block = host.memoryBlock("abc");
    EXPECT_EQ(host.shared("Calls", "EchoVariant", block).object(), block.get());
}

TEST_F(Calls, PassAndReturnArrays) {
    const host::ObjectRef list = host.arrayOf(host::Kind::String, {"a", "b"});
    EXPECT_EQ(host.shared("Calls", "EchoArray", list).object(), list.get());
}

TEST_F(Calls, GiveArraysOfObjectsTheDeclaredElementType) {
    const host::Value list = host.shared("Calls", "Words");
    EXPECT_EQ(list.type().name(), "MemoryBlock()");
    EXPECT_EQ(host.elements(list).size(), 2u);
}

TEST_F(Calls, RefuseArraysWithElementsOfAnotherClass) {
    EXPECT_TRUE(host.shared("Calls", "WordsAsItems").isNil());
    EXPECT_THAT(
        host.takeReports(),
        ElementsAre("Calls.WordsAsItems: the result is Array where FolderItem() is declared"));
}

TEST_F(Calls, GiveChangedByRefArgumentsBack) {
    const host::Method& method =
        *host.runtime().findClass("Calls")->findSharedMethods("SetNumbers").front();
    std::vector<host::Value> arguments{1, 1.5, "old"};
    host.runtime().call(method, nullptr, arguments);
    EXPECT_EQ(arguments[0].toInt64(), 2);
    EXPECT_EQ(arguments[1].toDouble(), 3);
    EXPECT_EQ(arguments[2].utf8(), "new");
}

TEST_F(Calls, OfMethodsPassTheObjectFirst) {
    const host::ObjectRef object = host.create("Calls");
    EXPECT_EQ(host.call<std::string>(object, "Self", "abc"), "abc");
    EXPECT_EQ(lastObject, object.get());
}

TEST_F(Calls, OfAccessorsPassTheObjectAndTheParameter) {
    ClassTables second{{.name = "Second"},
                       {{nullptr,
                         "Value",
                         "Double",
                         REALpropertyFlags,
                         reinterpret_cast<void*>(readValue),
                         reinterpret_cast<void*>(writeValue),
                         5,
                         {}}}};
    second.registerAs();
    const host::ObjectRef object = host.create("Second");
    host.set(object, "Value", 2.5);
    EXPECT_EQ(lastParameter, 5);
    EXPECT_EQ(lastObject, object.get());
    lastParameter = 0;
    EXPECT_EQ(host.get<double>(object, "value"), 2.5);
    EXPECT_EQ(lastParameter, 5);
}

TEST_F(Calls, OfReadOnlyPropertiesDoNotWrite) {
    const host::ObjectRef object = host.create("Calls");
    const host::Property& readOnly = *host.runtime().findClass("Calls")->findProperty("ReadOnly");
    EXPECT_THROW(host.runtime().set(readOnly, object.get(), 1.0), host::CallError);
}

TEST_F(Calls, OfFieldsReadAndWriteTheInstanceDataItself) {
    const host::ObjectRef object = host.create("Calls");
    auto* const data = static_cast<char*>(REALfirstClassData(object.get()));
    host.set(object, "Handle", 77);
    REALword stored = 0;
    std::memcpy(&stored, data + 8, sizeof stored);
    EXPECT_EQ(stored, 77);
    stored = -5;
    std::memcpy(data + 8, &stored, sizeof stored);
    EXPECT_EQ(host.get<REALword>(object, "Handle"), -5);
}

TEST_F(Calls, OfAssignmentsPassTheValueLast) {
    const host::ObjectRef object = host.create("Calls");
    host.assign(object, "Key", "name", 7);
    EXPECT_EQ(lastKey, "name=7");
    EXPECT_EQ(host.call<std::string>(object, "Key", "name"), "name");
}

TEST_F(Calls, LeaveTheRaisedExceptionForTheCallerAndReturnTheResult) {
    EXPECT_EQ(host.shared<int>("Calls", "RaiseAndReturn"), 7);
    EXPECT_EQ(host.raised(), "IOException: ");
    const host::Method& method =
        *host.runtime().findClass("Calls")->findSharedMethods("RaiseAndReturn").front();
    EXPECT_THROW(host.runtime().call(method, nullptr), host::Raised);
}

TEST_F(Calls, ThatReturnWhatTheyMayNotAreReportedAndGiveNil) {
    EXPECT_TRUE(host.shared("Calls", "Released").isNil());
    EXPECT_TRUE(host.shared("Calls", "Wrong").isNil());
    EXPECT_EQ(host.shared<std::string>("Calls", "Strange"), "");
    EXPECT_THAT(
        host.takeReports(),
        ElementsAre("Calls.Released: the result is MemoryBlock already released where Object is "
                    "declared",
                    "Calls.Wrong: the result is MemoryBlock where FolderItem is declared",
                    "Calls.Strange: the result is neither an object nor a string of this host "
                    "where String is declared"));
}

TEST_F(Calls, OnNilRaise) {
    const host::Class& type = *host.runtime().findClass("Calls");
    EXPECT_THROW(host.runtime().call(*type.findMethods("Self").front(), nullptr, {"x"}),
                 host::Raised);
    EXPECT_THROW(host.runtime().get(*type.findProperty("Value"), nullptr), host::Raised);
    EXPECT_THROW(host.runtime().set(*type.findProperty("Value"), nullptr, 1), host::Raised);
}

TEST_F(Calls, WithAnObjectOfAnotherClassRaise) {
    const host::Method& method =
        *host.runtime().findClass("Calls")->findSharedMethods("EchoBlock").front();
    try {
        host.runtime().call(method, nullptr, {host.folderItem("/")});
        FAIL() << "nothing was raised";
    } catch (const host::Raised& raised) {
        EXPECT_STREQ(raised.what(), "TypeMismatchException: Argument 1 of EchoBlock must be "
                                    "MemoryBlock, but is FolderItem.");
    }
}

} // namespace
