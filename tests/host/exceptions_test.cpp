#include "support/host.h"

namespace {

class Exceptions : public testing::Test {
protected:
    Host host{{.bare = true}};
};

TEST_F(Exceptions, CarryTheirMessageAndNumber) {
    const host::ObjectRef exception = host.create("IOException", "no disk", -36);
    EXPECT_EQ(host.get<std::string>(exception, "Message"), "no disk");
    EXPECT_EQ(host.get<int>(exception, "ErrorNumber"), -36);
}

TEST_F(Exceptions, DescendFromRuntimeException) {
    const host::Class* const root = host.runtime().findClass("RuntimeException");
    for (const char* name :
         {"NilObjectException", "OutOfBoundsException", "IllegalCastException",
          "UnsupportedOperationException", "OutOfMemoryException", "TypeMismatchException",
          "KeyNotFoundException", "IOException", "UnsupportedFormatException",
          "StackOverflowException", "InvalidArgumentException"}) {
        const host::Class* const type = host.runtime().findClass(name);
        ASSERT_TRUE(type) << name;
        EXPECT_TRUE(type->descendsFrom(*root)) << name;
    }
}

TEST_F(Exceptions, OfAnUnknownClassAreRuntimeExceptions) {
    const host::Raised raised(host.runtime().makeException("NoSuchException", "why"));
    EXPECT_STREQ(raised.what(), "RuntimeException: why");
}

TEST_F(Exceptions, AreNeverOfAClassThatIsNoException) {
    const host::Raised raised(host.runtime().makeException("MemoryBlock", "why"));
    EXPECT_EQ(raised.className(), "RuntimeException");
}

TEST_F(Exceptions, ThatArePendingAreThrownOnce) {
    host.runtime().setPending(host.runtime().makeException("IOException", "once"));
    EXPECT_THROW(host.runtime().throwPending(), host::Raised);
    EXPECT_NO_THROW(host.runtime().throwPending());
}

} // namespace
