// Tables of rows: copies, the sibling's buffer, comparing and joining.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <sibling/BufferBase.h>
#include <zt/memory/Rows_test.hpp>

#include <algorithm>
#include <cstring>
#include <string>
#include <type_traits>

namespace ZT {
namespace {

// Deep and shallow copies.

TEST(BufferCopy, TakesTheRowsFromTheFirstOneOn) {
    Rows source(2, "aabbcc");
    for (uint64 first = 0; first < 3; ++first) {
        Rows target(3, "xyz");
        target.AllocateEx(1);
        target.Copy(source, first);
        EXPECT_THAT(target, HasFields(2, 3u - first, 0u));
        EXPECT_EQ(TextOf(target), std::string("aabbcc").substr(2 * first));
        EXPECT_NE(target.m_pData, source.m_pData);
    }
    EXPECT_EQ(TextOf(source), "aabbcc");
}

TEST(BufferCopy, FromBehindTheLastRowDoesNothing) {
    const Rows source(2, "aabbccddee");
    const Rows none(2, "");
    Rows target(3, "xyz");
    target.m_nAllocated = 3;
    for (const uint64 first : {uint64{5}, uint64{6}, uint64{1} << 32, (uint64{1} << 32) + 1}) {
        target.Copy(source, first);
        target.Copy(none, first);
        EXPECT_THAT(target, HasFields(3, 1u, 3u));
        EXPECT_EQ(TextOf(target), "xyz");
    }
}

TEST(BufferCopy, OfAnEmptyBufferEmptiesAndTakesTheRowSize) {
    const Rows source(7, "");
    Rows target(3, "xyz");
    target.m_nAllocated = 3;
    target.Copy(source, 0);
    EXPECT_THAT(target, HasFields(7, 0u, 0u));
    EXPECT_EQ(target.m_pData, nullptr);
    target.Copy(BufferBase(), 0);
    EXPECT_THAT(target, HasFields(0, 0u, 0u));
}

TEST(BufferCopy, OfABufferWithoutABlockHasNoneEither) {
    Rows source(2, "aabb");
    source.DestroyNoCount();
    Rows target(3, "xyz");
    target.Copy(source, 1);
    EXPECT_THAT(target, HasFields(2, 1u, 0u));
    EXPECT_EQ(target.m_pData, nullptr);
}

TEST(BufferCopy, OfItselfDropsTheRowsBefore) {
    Rows rows(2, "aabbcc");
    rows.Copy(rows, 1);
    EXPECT_EQ(TextOf(rows), "bbcc");
    rows.Copy(rows, 0);
    EXPECT_EQ(TextOf(rows), "bbcc");
}

TEST(BufferCopyShallow, NamesTheBlockOfTheSource) {
    Rows source(2, "aabb");
    source.m_nAllocated = 4;
    BufferBase target;
    target.m_nAllocated = 77;
    target.CopyShallow(source, false);
    EXPECT_THAT(target, HasFields(2, 2u, 77u));
    EXPECT_EQ(target.m_pData, source.m_pData);
    EXPECT_THAT(source, HasFields(2, 2u, 4u));
    target.Construct();
}

TEST(BufferCopyShallow, CanTakeTheBlockAway) {
    Rows source(2, "aabb");
    source.m_nAllocated = 4;
    unsigned char* const block = source.m_pData;
    BufferBase target;
    target.m_nAllocated = 77;
    target.CopyShallow(source, true);
    EXPECT_THAT(target, HasFields(2, 2u, 77u));
    EXPECT_EQ(target.m_pData, block);
    EXPECT_THAT(source, HasFields(2, 0u, 4u));
    EXPECT_EQ(source.m_pData, nullptr);
}

TEST(BufferCopyShallow, TheEmptiedSourceStillSeemsToHaveItsRoom) {
    Rows source(2, "aabb");
    source.AllocateEx(2);
    BufferBase target;
    target.CopyShallow(source, true);
    EXPECT_THAT(source, HasFields(2, 0u, 4u));
    EXPECT_EQ(source.AddNewRow(), nullptr);
    EXPECT_THAT(source, HasFields(2, 1u, 4u));
    EXPECT_EQ(source.m_pData, nullptr);
}

TEST(BufferCopyShallow, DoesNotFreeWhatWasThere) {
    Rows source(2, "aabb");
    Rows target(1, "x");
    unsigned char* const block = target.m_pData;
    target.CopyShallow(source, true);
    EXPECT_EQ(*block, 'x');
    delete[] block;
}

// The sibling's buffer.

TEST(SiblingBufferConversion, TakesTheRowsIntoABlockOfItsOwn) {
    PW::BufferBase source;
    source.SetRowSize(3);
    source.SetCount(2);
    std::memcpy(source.GetRow(0), "aaabbb", 6);
    const BufferBase made(source);
    EXPECT_THAT(made, HasFields(3, 2u, 0u));
    EXPECT_EQ(TextOf(made), "aaabbb");
    EXPECT_NE(made.m_pData, source.GetRow(0));
    EXPECT_EQ(std::memcmp(source.GetRow(0), "aaabbb", 6), 0);
}

TEST(SiblingBufferConversion, NoBytesGiveNoRows) {
    PW::BufferBase source;
    source.SetRowSize(3);
    const BufferBase none(source);
    EXPECT_THAT(none, HasFields(3, 0u, 0u));
    EXPECT_EQ(none.m_pData, nullptr);
    source.SetCount(2);
    source.SetRowSize(0);
    const BufferBase sizeless(source);
    EXPECT_THAT(sizeless, HasFields(0, 0u, 0u));
    EXPECT_EQ(sizeless.m_pData, nullptr);
}

TEST(SiblingBufferConversion, WithoutABlockThereIsNoneHereEither) {
    PW::BufferBase source;
    source.SetRowSize(3);
    source.SetCount(2);
    source.DestroyNoCount();
    const BufferBase made(source);
    EXPECT_THAT(made, HasFields(3, 2u, 0u));
    EXPECT_EQ(made.m_pData, nullptr);
}

// The sibling's buffer as one of ours.
void ExpectCopied(const BufferBase& source, const PW::BufferBase& target) {
    EXPECT_EQ(target.GetRowSize(), source.GetRowSize());
    EXPECT_EQ(target.GetCount(), source.GetCount());
    EXPECT_EQ(target.GetRow(0) == nullptr, TextOf(source).empty());
    if (!target.GetRow(0)) return;
    EXPECT_NE(target.GetRow(0), source.m_pData);
    const auto* const bytes = reinterpret_cast<const char*>(target.GetRow(0));
    EXPECT_EQ(std::string(bytes, std::size_t{target.GetRowSize()} * target.GetCount()),
              TextOf(source));
}

TEST(SiblingBufferConversion, CopyToMakesAnEqualCopyOverWhateverWasThere) {
    Rows rows(2, "aabbcc");
    Rows none(5, "");
    Rows blockless(2, "aabb");
    blockless.DestroyNoCount();
    BufferBase sizeless;
    sizeless.m_nCount = 3;
    const BufferBase* const sources[] = {&rows, &none, &blockless, &sizeless};
    for (const BufferBase* const source : sources) {
        for (const int rowSize : {0, 2, 7}) {
            for (const ulong count : {0u, 2u, 3u, 9u}) {
                PW::BufferBase target;
                target.SetRowSize(static_cast<unsigned char>(rowSize));
                target.SetCount(count);
                source->CopyTo(target);
                ExpectCopied(*source, target);
                source->CopyTo(target);
                ExpectCopied(*source, target);
                target.DestroyNoCount();
                source->CopyTo(target);
                ExpectCopied(*source, target);
            }
        }
    }
}

// Comparing.

TEST(BufferIsSame, WantsEqualRowSizesCountsAndBytes) {
    const Rows rows(2, "aabb");
    EXPECT_TRUE(rows.IsSame(rows));
    EXPECT_TRUE(rows.IsSame(Rows(2, "aabb")));
    EXPECT_FALSE(rows.IsSame(Rows(2, "aabc")));
    EXPECT_FALSE(rows.IsSame(Rows(2, "xabb")));
    EXPECT_FALSE(rows.IsSame(Rows(2, "aa")));
    EXPECT_FALSE(rows.IsSame(Rows(4, "aabb")));
    EXPECT_FALSE(rows.IsSame(Rows(1, "aabb")));
    EXPECT_TRUE(Rows(3, "").IsSame(Rows(3, "")));
    EXPECT_FALSE(Rows(3, "").IsSame(Rows(4, "")));
}

TEST(BufferIsSame, ABlockThatIsMissingIsNoneThatIsThere) {
    const Rows rows(2, "aabb");
    Rows blockless(2, "aabb");
    blockless.DestroyNoCount();
    Rows another(2, "ccdd");
    another.DestroyNoCount();
    EXPECT_FALSE(rows.IsSame(blockless));
    EXPECT_FALSE(blockless.IsSame(rows));
    EXPECT_TRUE(blockless.IsSame(another));
}

TEST(BufferCoincidence, OnePairOfRowsTellsOfAll) {
    const Rows a(4, "sameaaaabbbbcccc");
    const Rows b(4, "sameddddeeee");
    EXPECT_EQ(a.GetCountCoinsidingRows(b, 0), 3u);
    EXPECT_EQ(b.GetCountCoinsidingRows(a, 0), 3u);
    EXPECT_TRUE(a.IsOverlapping(b));
    EXPECT_TRUE(b.IsOverlapping(a));
    EXPECT_TRUE((std::is_same_v<decltype(a.GetCountCoinsidingRows(b, 0)), uint64>));
}

TEST(BufferCoincidence, CountsFromTheRowThatIsCompared) {
    const Rows a(2, "aaxxccddee");
    const Rows b(2, "bbxxyyzz");
    EXPECT_EQ(a.GetCountCoinsidingRows(b, 0), 0u);
    EXPECT_EQ(a.GetCountCoinsidingRows(b, 1), 3u);
    EXPECT_EQ(a.GetCountCoinsidingRows(b, 2), 0u);
    EXPECT_EQ(a.GetCountCoinsidingRows(b, 4), 0u);
    EXPECT_EQ(a.GetCountCoinsidingRows(a, 4), 1u);
    EXPECT_EQ(a.GetCountCoinsidingRows(a, 5), 0u);
    EXPECT_EQ(a.GetCountCoinsidingRows(a, uint64{1} << 32), 0u);
    EXPECT_FALSE(a.IsOverlapping(b));
}

TEST(BufferCoincidence, WantsEqualRowSizes) {
    const Rows a(2, "aaaa");
    EXPECT_EQ(a.GetCountCoinsidingRows(Rows(4, "aaaa"), 0), 0u);
    EXPECT_EQ(a.GetCountCoinsidingRows(Rows(1, "aaaa"), 0), 0u);
    EXPECT_EQ(a.GetCountCoinsidingRows(Rows(2, ""), 0), 0u);
}

TEST(BufferCoincidence, RowsWithoutBytesDifferFromOthers) {
    const Rows a(2, "aabb");
    Rows blockless(2, "aabb");
    blockless.DestroyNoCount();
    EXPECT_EQ(a.GetCountCoinsidingRows(blockless, 0), 0u);
    EXPECT_EQ(blockless.GetCountCoinsidingRows(a, 0), 0u);
}

TEST(BufferCoincidence, RowsWithoutASizeAreEqual) {
    BufferBase a, b;
    a.m_nCount = 5;
    b.m_nCount = 3;
    EXPECT_EQ(a.GetCountCoinsidingRows(b, 1), 2u);
    EXPECT_TRUE(a.IsOverlapping(b));
}

// Joining.

TEST(BufferMerge, AppendsAllRowsAndGivesTheFirstOfThem) {
    Rows a(2, "aabb");
    a.m_nAllocated = 4;
    const Rows b(2, "ccddee");
    EXPECT_EQ(a.Merge(b), 2u);
    EXPECT_THAT(a, HasFields(2, 5u, 0u));
    EXPECT_EQ(TextOf(a), "aabbccddee");
    EXPECT_EQ(TextOf(b), "ccddee");
}

TEST(BufferMerge, OfNoRowsChangesNothing) {
    Rows a(2, "aabb");
    a.m_nAllocated = 4;
    EXPECT_EQ(a.Merge(Rows(2, "")), 2u);
    EXPECT_EQ(a.Merge(Rows(9, "")), 2u);
    EXPECT_THAT(a, HasFields(2, 2u, 4u));
    BufferBase none;
    EXPECT_EQ(none.Merge(Rows(9, "")), 0u);
    EXPECT_EQ(none.GetRowSize(), 0);
}

TEST(BufferMerge, GivesARowSizeWhereThereIsNone) {
    BufferBase none;
    EXPECT_EQ(none.Merge(Rows(3, "abcdef")), 0u);
    EXPECT_THAT(none, HasFields(3, 2u, 0u));
    EXPECT_EQ(TextOf(none), "abcdef");
}

TEST(BufferMerge, OfOtherRowSizesChangesNothing) {
    Rows a(2, "aabb");
    a.m_nAllocated = 4;
    EXPECT_EQ(a.Merge(Rows(3, "abcdef")), 0u);
    EXPECT_THAT(a, HasFields(2, 2u, 4u));
    EXPECT_EQ(TextOf(a), "aabb");
}

TEST(BufferMerge, DoublesABufferThatIsMergedWithItself) {
    Rows a(2, "aabb");
    EXPECT_EQ(a.Merge(a), 2u);
    EXPECT_EQ(TextOf(a), "aabbaabb");
}

TEST(BufferMerge, RowsWithoutBytesAreAppendedAsZero) {
    Rows a(2, "aa");
    Rows blockless(2, "bbcc");
    blockless.DestroyNoCount();
    EXPECT_EQ(a.Merge(blockless), 1u);
    EXPECT_EQ(TextOf(a), std::string("aa\0\0\0\0", 6));
    EXPECT_EQ(blockless.Merge(a), 2u);
    EXPECT_EQ(blockless.GetCount(), 5u);
    EXPECT_EQ(TextOf(blockless), std::string("\0\0\0\0aa\0\0\0\0", 10));
}

TEST(BufferUnite, AppendsWhatLiesPastTheShorterCount) {
    Rows a(4, "sameaaaa");
    a.m_nAllocated = 8;
    EXPECT_EQ(a.Unite(Rows(4, "sameddddeeeeffff")), 2u);
    EXPECT_THAT(a, HasFields(4, 4u, 0u));
    EXPECT_EQ(TextOf(a), "sameaaaaeeeeffff");
}

TEST(BufferUnite, WithAShorterOrEqualBufferAppendsNothing) {
    Rows a(4, "sameaaaabbbb");
    a.m_nAllocated = 12;
    EXPECT_EQ(a.Unite(Rows(4, "samedddd")), 2u);
    EXPECT_EQ(a.Unite(Rows(4, "sameddddeeee")), 3u);
    EXPECT_EQ(a.Unite(a), 3u);
    EXPECT_THAT(a, HasFields(4, 3u, 12u));
    EXPECT_EQ(TextOf(a), "sameaaaabbbb");
}

TEST(BufferUnite, AppendsAllWhereNothingCoincides) {
    Rows a(4, "aaaabbbb");
    EXPECT_EQ(a.Unite(Rows(4, "bbbbcccc")), 0u);
    EXPECT_EQ(TextOf(a), "aaaabbbbbbbbcccc");
    EXPECT_EQ(a.Unite(Rows(3, "abc")), 0u);
    EXPECT_EQ(TextOf(a), "aaaabbbbbbbbcccc");
    BufferBase none;
    EXPECT_EQ(none.Unite(a), 0u);
    EXPECT_EQ(TextOf(none), "aaaabbbbbbbbcccc");
    EXPECT_EQ(none.GetRowSize(), 4);
    EXPECT_EQ(none.Unite(Rows(4, "")), 0u);
    EXPECT_EQ(none.GetCount(), 4u);
}

TEST(BufferUnite, BuffersWithoutBlocksCoincideAsFarAsBothGo) {
    Rows a(2, "aabb");
    Rows b(2, "ccddee");
    a.DestroyNoCount();
    b.DestroyNoCount();
    EXPECT_EQ(a.GetCountCoinsidingRows(b, 0), 2u);
    EXPECT_EQ(a.Unite(b), 2u);
    EXPECT_THAT(a, HasFields(2, 3u, 0u));
    EXPECT_EQ(TextOf(a), std::string(6, '\0'));
}

// Laws.

TEST(BufferLaws, CopyMergeRemoveAndTheSiblingAgreeWithText) {
    EXPECT_TRUE(rc::check([](std::string left, std::string right) {
        const auto rowSize = *rc::gen::inRange<unsigned char>(1, 9);
        left.resize(left.size() / rowSize * rowSize);
        right.resize(right.size() / rowSize * rowSize);
        Rows a(rowSize, left);
        const Rows b(rowSize, right);
        RC_ASSERT(a.Merge(b) == left.size() / rowSize);
        RC_ASSERT(TextOf(a) == left + right);
        BufferBase copy;
        copy.Copy(a, 0);
        RC_ASSERT(copy.IsSame(a));
        PW::BufferBase sibling;
        a.CopyTo(sibling);
        RC_ASSERT(BufferBase(sibling).IsSame(a));
        BufferBase grown;
        grown.SetRowSize(rowSize);
        for (ulong i = 0; i < a.GetCount(); ++i)
            std::memcpy(grown.AddNewRow(), a.GetRow(i), rowSize);
        RC_ASSERT(TextOf(grown) == left + right);
        std::string text = left + right;
        while (grown.GetCount() != 0) {
            const ulong row = *rc::gen::inRange<ulong>(0, grown.GetCount());
            grown.RemoveRow(row);
            text.erase(std::size_t{rowSize} * row, rowSize);
            RC_ASSERT(TextOf(grown) == text);
        }
    }));
}

}  // namespace
}  // namespace ZT
