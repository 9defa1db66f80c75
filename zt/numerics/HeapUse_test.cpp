// No operation on cyclic integers, on integer ranges and on ranges with open ends allocates.
// The program's operator new counts.

#include <gtest/gtest.h>
#include <tests/CountingNew.h>
#include <zt/numerics/CyclSegment.h>
#include <zt/numerics/IndexAlg.h>
#include <zt/numerics/ZGroup.h>
#include <zt/ranges/RangeEx.h>
#include <zt/ranges/RangeInt.h>
#include <zt/ranges/RangeZGroup.h>

namespace ZT {
namespace {

// Results go here, so that no call can be left out.
volatile double sink = 0;

template <class T>
void Keep(T result) {
    sink = static_cast<double>(result);
}

using testing_support::AllocationsIn;

// Every pair of a family meets the operations, each as a copy.
template <class Kind, std::size_t kCount, class Calls>
std::size_t AllocationsOnPairs(const Kind (&kinds)[kCount], Calls calls) {
    return AllocationsIn([&] {
        for (const Kind& a : kinds) {
            for (const Kind& b : kinds) {
                Kind first(a);
                Kind second(b);
                calls(first, second);
            }
        }
    });
}

TEST(HeapUse, CountsAnAllocation) {
    EXPECT_EQ(AllocationsIn([] { ::operator delete(::operator new(5)); }), 1u);
    EXPECT_EQ(AllocationsIn([] { ::operator delete(::operator new(5, std::nothrow)); }), 1u);
    // In the library too.
    IndexAlg::Array indices;
    EXPECT_GT(AllocationsIn([&] { Keep(IndexAlg::CountUnique(indices)); }), 0u);
}

TEST(HeapUse, CyclicIntegersDoNotAllocate) {
    const ZGroup kinds[] = {ZGroup(1), ZGroup(2, 1), ZGroup(5, 4), ZGroup(5, 3)};
    EXPECT_EQ(AllocationsOnPairs(kinds,
                                 [](ZGroup& g, ZGroup& h) {
                                     Keep(g == h);
                                     Keep(g != h);
                                     Keep(g == 3);
                                     Keep(g != 3);
                                     Keep(g + 1);
                                     Keep(g - 1);
                                     Keep(g + h);
                                     Keep(g - h);
                                     Keep(g * h);
                                     if (h != 0) Keep(g / h);
                                     g += 1;
                                     g -= 1;
                                     g += h;
                                     g -= h;
                                     Keep(++g);
                                     Keep(--g);
                                     Keep(g++);
                                     Keep(g--);
                                     Keep(g.IsNextAfter(h));
                                     Keep(g.IsNextTo(h));
                                     Keep(g.InRange(g, h));
                                     Keep(g.InRange(3, 2));
                                     Keep(g.InRangeNoOverflow(3, 1));
                                     Keep(g.IsBeforeIncremental(5, 0));
                                     Keep(g.IsValid());
                                     Keep(g = h);
                                     Keep(g = 7);
                                     g.Set(7, 8);
                                     g.SetRank(3);
                                     g.Factor();
                                 }),
              0u);
}

TEST(HeapUse, PlainCyclicIndicesDoNotAllocate) {
    EXPECT_EQ(AllocationsIn([] {
                  int v = 3;
                  unsigned char small = 3;
                  Keep(ZGroup::Factorize(5, -1));
                  Keep(ZGroup::F(-1));
                  ZGroup::Increment(5, v);
                  ZGroup::Decrement(5, v);
                  ZGroup::Increment(5, small, true);
                  Keep(ZGroup::GetIncrement(5, v, false));
                  Keep(ZGroup::GetMin(5, 4, 0));
                  Keep(ZGroup::IsNext(5, 4, 0));
                  Keep(ZGroup::IsNextAfter(5, 4, 0));
              }),
              0u);
}

TEST(HeapUse, RunsOfACyclicGroupDoNotAllocate) {
    CyclSegment kinds[] = {CyclSegment(5), CyclSegment(5), CyclSegment(5)};
    kinds[1].Set(3, 1);
    kinds[2].SetFull();
    EXPECT_EQ(AllocationsOnPairs(kinds,
                                 [](CyclSegment& run, CyclSegment& other) {
                                     ZGroup walker(5, 3);
                                     Keep(run.Contains(walker));
                                     ++walker;
                                     Keep(run.Contains(walker));
                                     Keep(run.IsEmpty());
                                     Keep(run.IsFull());
                                     Keep(run.IsValid());
                                     run = other;
                                     run.SetEmpty(true);
                                     run.SetEmpty(false);
                                     run.SetFull();
                                     run.Set(-1, 7);
                                     run.Set(walker, ZGroup(5, 1));
                                     run.SetA(8);
                                     run.SetB(9);
                                     run.SetRank(4);
                                     run.Factor();
                                     run.Reset();
                                 }),
              0u);
}

TEST(HeapUse, RunsWithAStateDoNotAllocate) {
    RangeZGroup kinds[] = {RangeZGroup(5), RangeZGroup(5, 3, 1), RangeZGroup(5, 1, 3),
                           RangeZGroup(5)};
    kinds[3].SetEmpty();
    EXPECT_EQ(AllocationsOnPairs(kinds,
                                 [](RangeZGroup& run, RangeZGroup& other) {
                                     ZGroup end;
                                     Keep(run == other);
                                     Keep(run != other);
                                     Keep(run.GetRank() + run.GetCount() + run.Get(1));
                                     Keep(run.IsEmpty());
                                     Keep(run.IsFull());
                                     Keep(run.IsValid());
                                     Keep(run.In(4));
                                     run.GetEnd(1, end);
                                     run.GetComplimentary(other);
                                     run.MoveEnd(0, 1);
                                     run.MoveEnd(1, 1);
                                     run += 3;
                                     run -= 3;
                                     run.Factor();
                                     run.SwapEnds();
                                     Keep((run = other).GetRank());
                                     run.Copy(other);
                                     run.Set(1, 2);
                                     run.Set(4, 1, 2);
                                     run.SetFull();
                                     run.SetEmpty();
                                     run.SetRank(6);
                                 }),
              0u);
}

TEST(HeapUse, IntegerRangesDoNotAllocate) {
    const RangeInt kinds[] = {{0, 10}, {3, 4}, {4, 4}, {2, 1}, {}, {-5, 20}};
    EXPECT_EQ(AllocationsOnPairs(kinds,
                                 [](RangeInt& range, RangeInt& other) {
                                     RangeR1 real;
                                     RangeInt out(0, 2);
                                     Keep(range == other);
                                     Keep(range != other);
                                     Keep(range[0] + range[1]);
                                     Keep(range.GetCount() + range.GetLength());
                                     Keep(range.Is(0, 10));
                                     Keep(range.IsEmpty());
                                     Keep(range.IsSingleton());
                                     Keep(range.IsIn(3));
                                     Keep(RangeInt::ToRange(5, 1, 3));
                                     range.CopyTo(real);
                                     range.Uncover(other, out);
                                     Keep(RangeInt(range).Intersect(other));
                                     Keep(RangeInt(range).Subtract(other));
                                     range.SetLimitKeepLength(1, 7);
                                     range.Copy(real);
                                     range.Copy(other);
                                     range.Set(1, 2);
                                     range.Reset();
                                 }),
              0u);
}

TEST(HeapUse, RangesWithOpenEndsDoNotAllocate) {
    const RangeEx kinds[] = {{0, 10, true, true}, {3, 4, false, true}, {10, 12, false, false},
                             {3, 3, true, false}, {4, 3, true, true},  {}};
    EXPECT_EQ(AllocationsOnPairs(kinds,
                                 [](RangeEx& range, RangeEx& other) {
                                     bool startChanged = false;
                                     Keep(range.In(3.0, zToler));
                                     Keep(range.IsEmpty());
                                     Keep(range.IsSingleton());
                                     Keep(range.IsInsideOf(other));
                                     Keep(range.IsIn(other));
                                     Keep(range.IsEmptyIntersection(other));
                                     Keep(RangeEx(range).Intersect(other));
                                     Keep(RangeEx(range).Unite(other));
                                     RangeEx taken(other);
                                     Keep(RangeEx(range).Subtract(taken, &startChanged));
                                     range.Include(11.0);
                                     Keep(range = other);
                                     Keep(range.Copy(other));
                                     const bool ends[] = {true, false};
                                     range = RangeEx(0.0, 1.0, ends);
                                 }),
              0u);
}

}  // namespace
}  // namespace ZT
