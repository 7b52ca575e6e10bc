#include "cocoa/codecs/output.h"
#include "support.h"

#include <gmock/gmock.h>

namespace codecs_test {
namespace {

using testing::ElementsAre;

TEST(Output, KeepsWhatIsAppended) {
    Output output;
    ByteVector expected;
    for (unsigned i = 0; i < 300; ++i) {
        const ByteVector part = noise(i, i);
        ASSERT_TRUE(output.append(part.data(), part.size()));
        append(expected, part);
    }
    const Encoded encoded = output.take();
    EXPECT_EQ(copy(encoded), expected);
    EXPECT_EQ(output.size(), 0U);
}

TEST(Output, FillsAGapWithZeros) {
    Output output;
    const ByteVector part{7, 8};
    ASSERT_TRUE(output.write_at(3, part.data(), part.size()));
    EXPECT_THAT(copy(output.take()), ElementsAre(0, 0, 0, 7, 8));
}

TEST(Output, WritesOverWhatIsThere) {
    Output output;
    const ByteVector first{1, 2, 3, 4};
    const ByteVector second{9, 9};
    ASSERT_TRUE(output.append(first.data(), first.size()));
    ASSERT_TRUE(output.write_at(1, second.data(), second.size()));
    EXPECT_THAT(copy(output.take()), ElementsAre(1, 9, 9, 4));
}

TEST(Output, RefusesSizesThatNoMemoryHas) {
    Output output;
    const std::uint8_t byte = 1;
    EXPECT_FALSE(output.write_at(SIZE_MAX - 1, &byte, 1));
    EXPECT_FALSE(output.write_at(SIZE_MAX, &byte, 1));
    EXPECT_TRUE(output.append(&byte, 1));
}

} // namespace
} // namespace codecs_test
