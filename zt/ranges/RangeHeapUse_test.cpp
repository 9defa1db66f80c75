// No operation of typed ranges, grids, affine maps, list runs and interpolators allocates.

#include <gtest/gtest.h>
#include <platform/files/CArchive.h>
#include <platform/files/CMemFile.h>
#include <tests/AllocationCount.h>
#include <zt/numerics/Interpolator.h>
#include <zt/ranges/Grid1D.h>
#include <zt/ranges/Grid1DLocation.h>
#include <zt/ranges/MapAffine.h>
#include <zt/ranges/Range.h>
#include <zt/ranges/RangeInt.h>
#include <zt/ranges/RangePos.h>

#include <vector>

namespace ZT {
namespace {

using testing_support::AllocationsIn;

// Results go here, so that no call can be left out.
volatile double sink = 0;

template <class T>
void Keep(T result) {
    sink = static_cast<double>(result);
}

// Ranges of both kinds and units, in all states.
std::vector<Range> AllKinds() {
    std::vector<Range> kinds{Range(), Range(0, 1), Range(1, 0), Range(eScalarAngle)};
    for (const double hi : {1.0, -1.0, 0.25}) {
        Range arc(eScalarAngle);
        arc.Set(0.25, hi);
        kinds.push_back(arc);
        arc.ToDegrees();
        kinds.push_back(arc);
        arc.m_bExternal = true;
        kinds.push_back(arc);
        arc.SetEmpty();
        kinds.push_back(arc);
    }
    return kinds;
}

void CallOperationsOfOne(const Range& range) {
    Range copy(range);
    double x = 0.5;
    Keep(copy.GetClass());
    Keep(copy.IsEmpty() + copy.IsFull() + copy.IsValid());
    Keep(copy.In(0.5) + copy.InOpen(0.5));
    Keep(copy.GetPoint(0.5) + copy.GetRatio(0.5));
    Keep(copy.PI() + copy.MPI());
    Keep(copy.GetScalarType());
    Keep((copy < 0.5) + (copy <= 0.5) + (copy > 0.5) + (copy >= 0.5));
    Keep((copy + 0.5) + (copy - 0.5));
    Keep(copy.Include(0.75));
    Keep(copy.ToDegrees() + copy.ToRadians());
    copy.ToDeg();
    copy.ToRad();
    copy.ToDeg(x);
    Keep(copy.ToRad(x));
    copy.Set(1, 2);
    copy.SetFull();
    copy.SetFull(false);
    copy.SetEmpty();
    copy.UpdateState();
    copy.SetScalarType(eScalarReal);
    copy.AttachOuterUnknown(nullptr);
}

void CallOperationsOfTwo(const Range& range, const Range& other) {
    Range copy(range);
    Keep((copy == other) + (copy != other));
    Keep((copy >= other) + (copy <= other) + (copy < other));
    Keep(copy - other);
    copy += other;
    copy.Copy(other);
    copy = range;
}

TEST(RangeHeapUse, CountsAnAllocation) {
    EXPECT_GT(AllocationsIn([] { Keep(AllKinds().size()); }), 0u);
}

TEST(RangeHeapUse, TypedRangesDoNotAllocate) {
    const std::vector<Range> kinds = AllKinds();
    EXPECT_EQ(AllocationsIn([&] {
                  for (const Range& range : kinds) {
                      CallOperationsOfOne(range);
                      for (const Range& other : kinds) CallOperationsOfTwo(range, other);
                  }
              }),
              0u);
}

TEST(RangeHeapUse, TypedRangesDoNotAllocateInAnArchive) {
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    Range range;
    EXPECT_EQ(AllocationsIn([&] { range.Serialize(archive); }), 0u);
}

void CallOperationsOfGrid(double lo, double hi, int n) {
    Grid1D grid(lo, hi, n);
    Grid1D knots(RangeR1(lo, hi));
    RangeInt cover;
    bool onKnot = false;
    Keep(grid.GetStep() + grid.GetKnot(1) + grid.GetKnotAll(1, {-5, 20}));
    Keep(grid.GetKnotCount() + grid.GetSegmentCount());
    Keep(grid.GetSegment(3, &onKnot) + grid.GetNearestKnot(3) + grid.GetFirstKnotIn({3, 5}));
    Keep(grid.IsKnot(4) + grid.Is(lo, hi, n, 0.5));
    grid.GetCoverSet({3, 5}, cover);
    grid.GetInternalKnots({1, 9}, knots);
    Keep(grid.FindRangeAll(3, {-5, 20}, onKnot));
    Keep(grid.Align(3.5, true) + grid.Align(4.5, false));
    grid.Include(20);
    grid.Include(-20);
    double x = 3.25;
    grid.Snap(x);
    grid.SetSegmentCountEx(7, true);
    grid.SetStepSize(0.75, eFalse);
    grid.SetSegmentCount(3);
    grid.CoverRangeZeroAligned({3, 5}, 0.5, 1);
}

TEST(RangeHeapUse, GridsDoNotAllocate) {
    EXPECT_EQ(AllocationsIn([] {
                  CallOperationsOfGrid(0, 10, 5);
                  CallOperationsOfGrid(0, 10, 0);
                  Grid1DLocation a;
                  Grid1DLocation b;
                  a.Copy(b);
                  Keep((a == b) + (a != b) + a.IsSame(b));
              }),
              0u);
}

TEST(RangeHeapUse, MapsAndListRunsDoNotAllocate) {
    EXPECT_EQ(AllocationsIn([] {
                  MapAffine map;
                  map.m_ranges[0].Set(0, 10);
                  map.m_ranges[1].Set(0, 1);
                  MapAffine copy(map);
                  copy = map;
                  RangeR1 out;
                  map.Map(RangeR1(0.25, 0.5), out);
                  Keep(copy.Map(0.25) + out.m_max);
                  RangePos run;
                  run = 0;
                  run.Copy(RangePos());
                  run.CopyPair({});
                  run.Reset();
                  Keep(run.IsValid() + run.IsValidEx());
              }),
              0u);
}

TEST(RangeHeapUse, InterpolatorsDoNotAllocate) {
    EXPECT_EQ(AllocationsIn([] {
                  Interpolator f;
                  for (int i = 0; i < Interpolator::kCapacity; ++i) {
                      f.m_x[i] = i;
                      f.m_y[i] = i * i;
                  }
                  Interpolator copy;
                  copy = f;
                  double t = 0;
                  double value = 0;
                  for (int n = 0; n < Interpolator::kCapacity; ++n) Keep(copy.aitken(0.5, n));
                  Keep(f.X(1) + f.d(1) + f.Del(1, 1) + f.Delta(29, 0) + f.m() + f.H());
                  Keep(f.GetQuadric(0.5) + f.GetDerivativeAitkenOrd2(0.5));
                  Keep(f.GetExtremumParam(t) + f.GetExtremumParamAitken(t));
                  Keep(f.GetInternalMinMax({-1, 1}, value));
              }),
              0u);
}

}  // namespace
}  // namespace ZT
