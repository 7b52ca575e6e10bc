#include "host/called_services.h"
#include "support/host.h"

#include <gmock/gmock.h>

#include <unistd.h>

namespace {

using namespace REALservices;

class MembersByName : public testing::Test {
protected:
    template <typename Function>
    Function* global(const char* declaration) {
        return reinterpret_cast<Function*>(service(LoadGlobalMethod)(nullptr, declaration));
    }
    template <typename Function>
    Function* method(const host::ObjectRef& object, const char* declaration) {
        return reinterpret_cast<Function*>(service(LoadObjectMethod)(object.get(), declaration));
    }

    Host host{{.bare = true}};
};

TEST_F(MembersByName, ReadNumbersOfAnyWidth) {
    const host::ObjectRef exception = host.create("IOException", "why", -36);
    std::int32_t number = 0;
    EXPECT_EQ(service(GetPropValueInt32)(exception.get(), "errornumber", &number), 1);
    EXPECT_EQ(number, -36);
    std::int64_t wide = 0;
    EXPECT_EQ(service(GetPropValueInt64)(exception.get(), "ErrorNumber", &wide), 1);
    EXPECT_EQ(wide, -36);
}

TEST_F(MembersByName, ReadTextWithAReferenceForTheCaller) {
    const host::StringRef message = host.text("why");
    const host::ObjectRef exception = host.create("IOException", message);
    REALstringStruct* text = nullptr;
    ASSERT_EQ(service(GetPropValueString)(exception.get(), "Message", &text), 1);
    EXPECT_EQ(text, message.get());
    EXPECT_EQ(host.references(message), 3);
    service(UnlockString)(text);
}

TEST_F(MembersByName, ReadObjectsWithAReferenceForTheCaller) {
    const host::ObjectRef item = host.folderItem("/usr/lib");
    REALobjectStruct* parent = nullptr;
    ASSERT_EQ(service(GetPropValueObject)(item.get(), "Parent", &parent), 1);
    EXPECT_EQ(host.path(host::ObjectRef::adopt(parent)), "/usr");
}

TEST_F(MembersByName, ReadBooleans) {
    const host::ObjectRef item = host.folderItem("/");
    std::uint8_t flag = 0;
    EXPECT_EQ(service(GetPropValueUInt8)(item.get(), "Exists", &flag), 1);
    EXPECT_EQ(flag, 1);
}

TEST_F(MembersByName, LeaveTheResultAloneWhereThereIsNoSuchProperty) {
    const host::ObjectRef exception = host.create("IOException", "why");
    std::int32_t number = 77;
    EXPECT_EQ(service(GetPropValueInt32)(exception.get(), "Width", &number), 0);
    EXPECT_EQ(service(GetPropValueInt32)(exception.get(), "Message", &number), 0)
        << "a String is not read as a number";
    EXPECT_EQ(number, 77);
    std::uint8_t flag = 7;
    EXPECT_EQ(service(GetPropValueUInt8)(exception.get(), "ErrorNumber", &flag), 0);
    EXPECT_EQ(flag, 7);
}

TEST_F(MembersByName, WriteNumbersAndText) {
    const host::ObjectRef exception = host.create("IOException");
    EXPECT_EQ(service(SetPropValueInt32)(exception.get(), "ErrorNumber", -43), 1);
    EXPECT_EQ(service(SetPropValueString)(exception.get(), "Message", host.text("gone").get()), 1);
    EXPECT_EQ(host.get<int>(exception, "ErrorNumber"), -43);
    EXPECT_EQ(host.get<std::string>(exception, "Message"), "gone");
    EXPECT_EQ(service(SetPropValueString)(exception.get(), "Message", nullptr), 1);
    EXPECT_EQ(host.get<std::string>(exception, "Message"), "");
}

TEST_F(MembersByName, DoNotWriteWhatIsReadOnlyMissingOrOfAnotherType) {
    const host::ObjectRef item = host.folderItem("/");
    EXPECT_EQ(service(SetPropValueInt32)(item.get(), "Length", 3), 0);
    EXPECT_EQ(service(SetPropValueInt32)(item.get(), "Width", 3), 0);
    const host::ObjectRef exception = host.create("IOException");
    EXPECT_EQ(service(SetPropValueInt32)(exception.get(), "Message", 3), 0);
}

TEST_F(MembersByName, LeaveAnExceptionPendingThatTheAccessRaised) {
    const host::ObjectRef block = host.memoryBlock("x");
    EXPECT_EQ(service(SetPropValueInt32)(block.get(), "Size", -1), 0);
    EXPECT_EQ(host::Raised(host.runtime().takePending()).className(), "OutOfBoundsException");
}

TEST_F(MembersByName, LoadFunctions) {
    auto* const lenB = global<REALword(REALstringStruct*)>("LenB( s as string ) as integer");
    ASSERT_NE(lenB, nullptr);
    EXPECT_EQ(lenB(host.text("é").get()), 2);
    EXPECT_EQ(lenB(nullptr), 0);
    auto* const varType =
        global<std::int32_t(REALobjectStruct*)>("VarType(value As Variant) As Int32");
    ASSERT_NE(varType, nullptr);
    const auto number = host::ObjectRef::adopt(service(DoubleToVariant)(1.5));
    EXPECT_EQ(varType(number.get()), 5);
    EXPECT_EQ(varType(nullptr), 0);
    EXPECT_EQ(varType(host.memoryBlock("x").get()), 9);
}

TEST_F(MembersByName, LoadTheSameFunctionForTheSameDeclaration) {
    EXPECT_EQ(global<void>("LenB( s as string ) as integer"),
              global<void>("lenb(other As String) As Integer"));
}

TEST_F(MembersByName, AreNotLoadedWithOtherTypes) {
    EXPECT_EQ(global<void>("LenB(s As Integer) As Integer"), nullptr);
    EXPECT_EQ(global<void>("LenB(s As String) As Double"), nullptr);
    EXPECT_EQ(global<void>("LenB() As Integer"), nullptr);
    EXPECT_EQ(global<void>("NoSuchFunction() As Integer"), nullptr);
}

TEST_F(MembersByName, AreNotLoadedByWhatIsNoDeclaration) {
    EXPECT_EQ(global<void>("LenB(s As"), nullptr);
    EXPECT_THAT(host.takeReports(), testing::ElementsAre("REALLoadGlobalMethod: argument 2: "
                                                         "\"LenB(s As\" is no declaration"));
}

TEST_F(MembersByName, LoadMethodsOfObjects) {
    const host::ObjectRef top = host.folderItem("/usr");
    using TrueItem = REALobjectStruct*(REALobjectStruct*, REALword);
    auto* const trueItem = method<TrueItem>(top, "TrueItem(Index as integer) as Folderitem");
    ASSERT_NE(trueItem, nullptr);
    const auto first = host::ObjectRef::adopt(trueItem(top.get(), 1));
    EXPECT_EQ(host.path(host.get<host::ObjectRef>(first, "Parent")), "/usr");
    EXPECT_EQ(method<void>(host.memoryBlock("x"), "TrueItem(Index as integer) as Folderitem"),
              nullptr);
}

TEST_F(MembersByName, LoadSettersApartFromGetters) {
    const host::ObjectRef block = host.memoryBlock("abcd");
    auto* const set = method<void(REALobjectStruct*, REALword, double)>(
        host.create("MemoryBlock", 8), "DoubleValue(offset As Integer, Assigns value As Double)");
    auto* const get = method<double(REALobjectStruct*, REALword)>(
        block, "DoubleValue(offset As Integer) As Double");
    ASSERT_TRUE(set && get);
    const host::ObjectRef wide = host.create("MemoryBlock", 8);
    set(wide.get(), 0, 2.5);
    EXPECT_EQ(get(wide.get(), 0), 2.5);
}

TEST_F(MembersByName, GiveTheNeutralValueAndLeaveTheirExceptionPending) {
    const host::ObjectRef block = host.memoryBlock("");
    auto* const get = method<double(REALobjectStruct*, REALword)>(
        block, "DoubleValue(offset As Integer) As Double");
    EXPECT_EQ(get(block.get(), 0), 0);
    EXPECT_EQ(host::Raised(host.runtime().takePending()).className(), "OutOfBoundsException");
}

TEST_F(MembersByName, CheckTheObjectsThatTheyAreGiven) {
    auto* const lenB = global<REALword(REALstringStruct*)>("LenB(s As String) As Integer");
    host::StringRef text = host.text("abc");
    REALstringStruct* const stale = text.get();
    text = {};
    EXPECT_EQ(lenB(stale), 0);
    EXPECT_THAT(
        host.takeReports(),
        testing::ElementsAre("LenB: s is String already released where String is declared"));
}

} // namespace
