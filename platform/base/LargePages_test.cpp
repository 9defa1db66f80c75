#include <gtest/gtest.h>

#include <platform/base/LargePages.h>

#include <algorithm>
#include <cstddef>
#include <vector>

TEST(LargePages, LeaveTheBytesOfTheBlock) {
    std::vector<unsigned char> block((std::size_t{6} << 20) + 3, 0xA5);
    for (const std::size_t bytes : {std::size_t{0}, std::size_t{5}, block.size()}) {
        PreferLargePages(block.data(), bytes);
        PreferLargePages(block.data() + 1, bytes / 2);
        EXPECT_TRUE(std::all_of(block.begin(), block.end(), [](int byte) { return byte == 0xA5; }));
    }
    block.assign(block.size(), 0x5A);
    EXPECT_EQ(block.back(), 0x5A);
    PreferLargePages(nullptr, 0);
}
