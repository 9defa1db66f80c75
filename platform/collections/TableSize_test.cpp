#include <platform/collections/TableSize.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>

namespace {

using Collections::TableSize;

bool IsPrime(UINT number) {
    for (UINT i = 2; std::uint64_t{i} * i <= number; ++i) {
        if (number % i == 0) return false;
    }
    return number > 1;
}

TEST(TableSize, BucketIsTheRemainder) {
    EXPECT_TRUE(rc::check([](UINT buckets, UINT hash) {
        RC_PRE(buckets > 0U);
        RC_ASSERT(TableSize(buckets).BucketOf(hash) == hash % buckets);
    }));
    for (UINT buckets : {1U, 2U, 3U, 16U, 17U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) {
        for (UINT hash :
             {0U, 1U, 16U, 17U, 18U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFEU, 0xFFFFFFFFU}) {
            EXPECT_EQ(TableSize(buckets).BucketOf(hash), hash % buckets) << buckets << ' ' << hash;
        }
    }
}

TEST(TableSize, GrowsByPrimesThatAboutDouble) {
    TableSize size;
    EXPECT_EQ(size.Buckets(), 17U);
    for (int step = 0; step < 27; ++step) {
        const TableSize next = size.Grown();
        EXPECT_TRUE(IsPrime(next.Buckets())) << next.Buckets();
        EXPECT_GT(next.Buckets(), size.Buckets() / 10 * 19);
        EXPECT_LT(next.Buckets() / 5, size.Buckets() / 2);
        size = next;
    }
    EXPECT_EQ(size.Grown().Buckets(), size.Buckets());
}

TEST(TableSize, ASizeOutsideTheRowGrowsIntoIt) {
    EXPECT_EQ(TableSize(1).Grown().Buckets(), 17U);
    EXPECT_EQ(TableSize(100).Grown().Buckets(), 163U);
}

}  // namespace
