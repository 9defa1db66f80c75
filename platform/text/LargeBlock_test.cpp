#include <gtest/gtest.h>
#include <platform/text/CString.h>
#include <platform/text/LargeBlock.h>

#include <cstdint>
#include <cstring>
#include <limits>

TEST(LargeBlock, IsWritableToItsLastByte) {
    const std::size_t bytes = kLargeBlockBytes + 1;
    auto* block = static_cast<unsigned char*>(AllocateLargeBlock(bytes));
    ASSERT_NE(block, nullptr);
    std::memset(block, 0xA5, bytes);
    EXPECT_EQ(block[bytes - 1], 0xA5);
    FreeLargeBlock(block);
}

TEST(LargeBlock, IsNullForASizeThatOverflows) {
    EXPECT_EQ(AllocateLargeBlock(std::numeric_limits<std::size_t>::max() - 1), nullptr);
}

TEST(LargeBlock, TextKeepsItsBytesWhenItGrowsPastTheLimit) {
    CString text('a', static_cast<int>(kLargeBlockBytes) - 8);
    for (int i = 0; i < 32; ++i) text.AppendChar('b');
    EXPECT_EQ(text.GetLength(), static_cast<int>(kLargeBlockBytes) + 24);
    EXPECT_EQ(text.Find('b'), static_cast<int>(kLargeBlockBytes) - 8);
    CString copy = text;
    text.Empty();
    text.FreeExtra();
    EXPECT_EQ(copy.ReverseFind('a'), static_cast<int>(kLargeBlockBytes) - 9);
}
