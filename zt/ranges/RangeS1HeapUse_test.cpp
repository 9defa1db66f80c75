// No operation on angles and arcs allocates.

#include <gtest/gtest.h>
#include <platform/collections/CList.h>
#include <platform/files/CArchive.h>
#include <platform/files/CMemFile.h>
#include <sibling/RangeS1.h>
#include <tests/AllocationCount.h>
#include <zt/numerics/S1.h>
#include <zt/ranges/RangeS1.h>
#include <zt/ranges/RangeS1Family_test.h>

#include <vector>

namespace ZT {
namespace {

using namespace testing_support;

// Results go here, so that no call can be left out.
volatile double sink = 0;

template <class T>
void Keep(T result) {
    sink = static_cast<double>(result);
}

TEST(RangeS1HeapUse, CountsAnAllocation) {
    EXPECT_EQ(AllocationsIn([] { ::operator delete(::operator new(5)); }), 1u);
}

TEST(RangeS1HeapUse, AnglesDoNotAllocate) {
    EXPECT_EQ(AllocationsIn([] {
                  for (const double x : {-1e307, -7.25, -zPi, 0.0, 1.0, zPi, 1e300}) {
                      S1 point(x);
                      point = x;
                      point.Factor();
                      Keep(point == S1(1.0));
                      Keep((point + S1(1.0) - S1(2.0)).GetAngle());
                      Keep((point += S1(1.0)).GetAngle());
                      Keep((point -= S1(1.0)).GetAngle());
                      Keep(point.Translate(1.0));
                      Keep(point.IsValid());
                      Keep(point.GetSegmentPoint(S1(1.0), 0.5).GetAngle());
                      Keep(point.IsCCWSequence(S1(1.0), S1(2.0)));
                      Keep(S1::Factorize(x) + S1::FactorizeDeg(x) + S1::GetOpposite(x));
                      double a = x;
                      double b = x;
                      Keep(S1::Increment(a, 1.0));
                      S1::ToDegree(a);
                      S1::ToRadian(a);
                      S1::ToRadian(a, b);
                      Keep(S1::IsValid(x) + S1::IsValidExt(x) + S1::InRange(x));
                      Keep(S1::InRange(x, 2.0, 1.0, true) + S1::InOpenRange(x, 2.0, 1.0, true));
                      Keep(S1::Equal(x, 1.0, true));
                      Keep(S1::diff(x, 1.0, true) + S1::DiffSigned(x, 1.0) + S1::dist(x, 1.0));
                      Keep(S1::GetSegmentPoint(x, 1.0, 0.5, true));
                  }
              }),
              0u);
}

TEST(RangeS1HeapUse, InsertingAPointTakesItsNodeFromTheListsOwnPool) {
    CList<S1, S1> list;
    S1(0.0).InsertSorted(list);
    EXPECT_EQ(AllocationsIn([&] {
                  S1(1.0).InsertSorted(list);
                  S1(0.5).InsertSorted(list);
              }),
              0u);
    EXPECT_EQ(list.GetCount(), 3);
}

// Counts over all pairs of the family, with fresh copies for each call of `calls`.
template <class Calls>
std::size_t AllocationsOnAllPairs(Calls calls) {
    std::vector<RangeS1> arcs;
    for (const GridArc& member : AllArcs()) arcs.push_back(member.Arc());
    return AllocationsIn([&] {
        for (const RangeS1& a : arcs) {
            for (const RangeS1& b : arcs) {
                RangeS1 arc(a);
                RangeS1 other(b);
                calls(arc, other);
            }
        }
    });
}

TEST(RangeS1HeapUse, ArcsAgainstArcsDoNotAllocate) {
    EXPECT_EQ(AllocationsOnAllPairs([](RangeS1& arc, RangeS1& other) {
                  Keep(arc >= other);
                  Keep(arc.IsInsideOf(other));
                  Keep(arc.IsEmptyIntersection(other));
                  Keep(arc.IsComplimentary(other));
                  Keep(arc.GetRangeLocation(other, 0.01));
                  RangeS1 rest;
                  Keep(arc.GetComplimentary(rest));
                  RangeS1 shared(arc);
                  RangeS1 second(other);
                  Keep(shared.Intersect(second));
                  bool changed = false;
                  Keep(arc.Subtract(other, &changed));
              }),
              0u);
}

TEST(RangeS1HeapUse, OneArcDoesNotAllocate) {
    PW::RangeS1 sibling;
    EXPECT_EQ(AllocationsOnAllPairs([&](RangeS1& arc, RangeS1& other) {
                  double x = 0.0;
                  Keep(arc.GetClass());
                  arc.CopyToPw(&sibling);
                  Keep(arc.IsEmpty() + arc.IsFull() + arc.IsEmptyInterval() + arc.IsValid());
                  Keep(arc.IsSingular() + RangeS1::IsSingular(1.0, 2.0));
                  Keep(arc.GetA() + arc.GetDiff() + arc.GetPoint(0.25) + arc.GetRatio(1.0));
                  Keep(arc.GetAnyOutside(x));
                  Keep(arc.ToRangeS1(1.0));
                  Keep(arc.In(1.0) + arc.InOpen(1.0));
                  Keep(arc.GetPointLocation(1.0, 0.01));
                  RangeS1 copy(1.0, 2.0);
                  Keep(copy = arc);
                  copy = RangeS1(S1(1.0), S1(2.0));
                  copy.Set(1.0, 2.0);
                  copy.Copy(other);
                  copy.Update();
                  copy.SetComplimentary();
                  copy.Translate(1.0);
                  copy.SetFull();
                  copy.SetEmpty();
                  Keep(RangeS1::ByteToState(1));
              }),
              0u);
}

TEST(RangeS1HeapUse, StoringAnArcDoesNotAllocate) {
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    RangeS1 arc(0.0, 1.0);
    arc.Serialize(archive);
    EXPECT_EQ(AllocationsIn([&] { arc.Serialize(archive); }), 0u);
}

}  // namespace
}  // namespace ZT
