// No operation on doubles and real intervals allocates. The program's operator new counts.

#include <gtest/gtest.h>
#include <tests/CountingNew.h>
#include <zt/numerics/DoubleZT.h>
#include <zt/numerics/ScalarFunctions.h>
#include <zt/numerics/SolveNl.h>
#include <zt/ranges/RangeR1.h>

#include <platform/files/CArchive.h>
#include <platform/files/CMemFile.h>
#include <sibling/Range.h>

namespace ZT {
namespace {

// Results go here, so that no call can be left out.
volatile double sink = 0;

template <class T>
void Keep(T result) {
    sink = static_cast<double>(result);
}

using testing_support::AllocationsIn;

// Plain, reversed, empty, full, external and singleton ranges, met by each operation.
template <class Calls>
std::size_t AllocationsOnAllKinds(Calls calls) {
    return AllocationsIn([&] {
        RangeR1 kinds[] = {{0.0, 10.0}, {3.0, 4.0}, {4.0, 3.0}, {}, {-1e307, 1e307}, {5.0, 5.0}};
        for (const RangeR1& a : kinds) {
            for (const RangeR1& b : kinds) {
                RangeR1 range(a);
                RangeR1 other(b);
                calls(range, other);
                range.SetExternal(true);
                calls(range, other);
            }
        }
    });
}

TEST(HeapUse, CountsAnAllocation) {
    EXPECT_EQ(AllocationsIn([] { ::operator delete(::operator new(5)); }), 1u);
    // In the library too: a text of this length does not fit into the string itself.
    EXPECT_GT(AllocationsIn([] { DoubleZT::ToString(1e100); }), 0u);
}

TEST(HeapUse, ScalarFunctionsDoNotAllocate) {
    EXPECT_EQ(AllocationsIn([] {
                  double v[3] = {3.0, 4.0, 12.0};
                  const double w[3] = {1.0, 4.0, 12.0};
                  const double knots[4] = {0.0, 1.0, 2.0, 4.0};
                  const bool flag = true;
                  double a = 1.0;
                  double b = 2.0;
                  for (const double x : {-1e307, -7.25, 0.0, 1e-11, 2.5, 1e300}) {
                      Keep(zEqual(x, 1.0));
                      Keep(zSign(x));
                      Keep(zGetRangeLocn(x, 0.0, 1.0));
                      Keep(matrIsValidVar(flag));
                      Keep(zRound(x));
                      Keep(zStickyFloor(x));
                      Keep(zFactorN(x, 0.5));
                      Keep(zCeil(x, 0.5));
                      Keep(zFloor(x, 0.5));
                      Keep(zModulod(x, 0.5));
                      Keep(zModulod(x, 0.5, 0.25));
                      Keep(zTo02Pi(x));
                      zShrinkRange(a, b, x);
                      Keep(zFindSegment(x, knots, 0, 3));
                      Keep(zFindNearest(x, knots, 0, 3));
                      Keep(hxCopy3d(v, w));
                      Keep(hxNormalize(v));
                      zMemSet(v, 3, x);
                      Keep(DoubleZT::IsEqual(x, 1.0, 0.5));
                      Keep(DoubleZT::IsEqualPercent(x, 1.0, 0.5));
                      Keep(DoubleZT::IsZero(x, 0.5));
                      Keep(DoubleZT::IsFinite(x));
                      Keep(DoubleZT::IsNaN(x));
                      Keep(DoubleZT::IsNegative(x, true, true, 0.5));
                      Keep(DoubleZT::IsRatio(x, 0.5));
                      Keep(DoubleZT::Round(x));
                      Keep(DoubleZT::Round(x, 2));
                      Keep(DoubleZT::Ceil(x, 0.5));
                  }
                  const auto f = [](double x) { return x * x - 2; };
                  const auto df = [](double x) { return 2 * x; };
                  const auto d2f = [](double) { return 2.0; };
                  Keep(SolveNl(f, df, d2f, 0, 0, 2.0));
              }),
              0u);
}

TEST(HeapUse, MakingComparingAndTestingRangesDoesNotAllocate) {
    PW::Range sibling;
    EXPECT_EQ(AllocationsOnAllKinds([&](RangeR1& range, RangeR1& other) {
                  double lo = 0;
                  double hi = 0;
                  Keep(range.GetClass());
                  range.CopyToPw(&sibling);
                  range.Get(lo, hi);
                  Keep(range.GetLimit(1) + range.GetEnd(true));
                  Keep(range.FindLimit(1.0, 0.5) + range.FindSameLimit(other));
                  Keep(range == other);
                  Keep(range != other);
                  Keep(range >= other);
                  Keep(range <= other);
                  Keep(range.IsSame(other, 0.5));
                  Keep(range.Is(0.0, 1e307, 0.5));
                  Keep(range.IsAfter(other));
                  Keep(range.IsAfterClosed(other));
                  Keep(range.IsEmpty());
                  Keep(range.IsEmptyInterval());
                  Keep(range.IsFull());
                  Keep(range.IsUnlimited());
                  Keep(range.IsUnlimited(true));
                  Keep(range.IsValid());
                  Keep(range.IsSingleton());
                  Keep(range.IsSingleton2(0.5));
                  Keep(range.IsSingleton(1.0, 0.5));
                  Keep(range.In(1.0, 0.5));
                  Keep(RangeR1::In(1.0, lo, hi, 0.5));
                  Keep(RangeR1::InNoToler(1.0, lo, hi));
                  Keep(range.InOpen(1.0, 0.5));
                  Keep(RangeR1::IsIn(1.0, lo, hi));
                  Keep(RangeR1::IsIn(1.0, lo, hi, true, false));
                  Keep(range.IsInSemiOpen(1.0));
                  Keep(range.IsEnd(1.0));
                  Keep(range.IsNearLimit(1.0, 0.5));
                  Keep(range.IsApproaching(1.0, 0.5));
                  Keep(range.GetPointLocation(1.0, 0.5));
                  Keep(range.IsIn(other));
                  Keep(range.IsInsideOf(other));
                  for (const bool strict : {false, true}) {
                      Keep(range.IsIntersection(other, strict));
                      Keep(range.IsEmptyIntersection(other, strict));
                  }
                  Keep(RangeR1(range).Intersect(other));
                  RangeR1 copy(range);
                  Keep(copy.Copy(other));
                  Keep(copy = range);
                  copy.Reset();
                  copy.Invalidate();
                  copy.SetEmpty();
                  copy.SetFull(true);
                  copy.SetFull(false);
                  copy.SetFullAngle();
                  copy.Set(0.0, 1.0);
                  copy.SetUnordered(1.0, 0.0);
                  Keep(copy.SetEx(0.0, 1.0));
                  copy.SetExternal(true);
                  Keep(copy.IsExternal());
              }),
              0u);
}

TEST(HeapUse, MeasuringAndCuttingRangesDoesNotAllocate) {
    EXPECT_EQ(AllocationsOnAllKinds([](RangeR1& range, RangeR1& other) {
                  double x = 1.0;
                  bool onKnot = false;
                  int index = 0;
                  Keep(range.GetLength() + range.GetSize() + range.GetCenter());
                  Keep(range.GetPoint(0.5) + RangeR1::GetPoint(0.5, 0.0, 1.0));
                  Keep(range.GetPoint(1, 4));
                  Keep(range.GetRatio(1.0) + RangeR1::GetRatio(0.5, 0.0, 1.0));
                  Keep(range.ToUnitRange(x));
                  Keep(range.GetDiff(0.25, 0.5) + range.GetOverlap(other));
                  Keep(range.GetCoverSegmCount(0.5));
                  Keep(range.GetNearestEnd(1.0) + range.GetBestMatch(1.0));
                  Keep(range.ToRange(1.0) + RangeR1::ToRange(0.0, 1.0, 2.0));
                  Keep(range.GetDist(1.0, &x));
                  Keep(range.GetDist(other, true));
                  Keep(range.GetMaxDist(1.0, &x));
                  Keep(range.GetMaxDist(other));
                  Keep(range.GetScale(other, 1.0));
                  Keep(range.GetArcSingilarSamplingPt(1, 4, true));
                  Keep(range.GetSegment(1.0, 4, &onKnot));
                  Keep(range.GetSegm(1.0, 4, &onKnot));
                  Keep(range.GetNext(1.0, 4, &onKnot, &index));
                  Keep(range.GetUpper(1.0, 4, &onKnot));
                  Keep(range.Map(1.0, other));
                  RangeR1 copy(range);
                  range.GetSegment(1, 4, copy);
                  range.Map(copy, other);
                  copy.Combine(range, other, 0.5);
                  copy.Align(0.5, 0.25);
                  copy.Setup(0.5, index);
                  copy.Setup(0.5, index, &x);
              }),
              0u);
}

TEST(HeapUse, ChangingRangesDoesNotAllocate) {
    EXPECT_EQ(AllocationsOnAllKinds([](RangeR1& range, RangeR1& other) {
                  double x = 1.0;
                  RangeR1 copy(range);
                  RangeR1 argument(other);
                  Keep(copy.Subtract(argument));
                  copy.Include(1.0);
                  Keep(copy.Include(other));
                  Keep(copy.Unite(other));
                  copy += other;
                  copy.Translate(1.0);
                  copy.Swap();
                  copy.Expand(1.0);
                  copy.Spread(1.0);
                  copy.Scale(1.0);
                  copy.Inflate(1.0);
                  copy.Inflate(1.0, 2.0);
                  copy.Inflate2(1.0, 0.5);
                  copy *= -1.0;
                  copy.ToDegrees();
                  copy.ToRadians();
                  Keep(copy.SetCenter(1.0));
                  copy.SetLength(1.0);
                  copy.SetLengthKeepCenter(1.0);
                  copy.SetLengthKeepLimit(1.0, 1);
                  copy.SetLimitKeepLength(1, 1.0);
                  copy.SetMaxKeepLength(1.0);
                  copy.SetMinKeepLength(1.0);
                  copy.AddMargin(other, 1.0);
                  copy.AdjustCentral(other);
                  copy.Center(other);
                  Keep(copy.MakeSymmetric());
                  Keep(copy.MakeValid());
                  copy.MakeValid(1.0);
                  Keep(copy.MoveAwayFrom(other));
                  range.Snap(x, 0.5);
                  range.Snap(copy, 0.5);
                  Keep(copy.Invert());
              }),
              0u);
}

TEST(HeapUse, StoringAndLoadingARangeDoesNotAllocate) {
    CMemFile file;
    RangeR1 range(0.0, 1.0);
    {
        CArchive archive(&file, CArchive::store);
        range.Serialize(archive);
        EXPECT_EQ(AllocationsIn([&] { range.Serialize(archive); }), 0u);
    }
    file.SeekToBegin();
    CArchive archive(&file, CArchive::load);
    range.Serialize(archive);
    EXPECT_EQ(AllocationsIn([&] { range.Serialize(archive); }), 0u);
}

}  // namespace
}  // namespace ZT
