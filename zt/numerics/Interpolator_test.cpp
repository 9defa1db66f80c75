// Interpolation by polynomials through a few samples.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <tests/ExactNumbers.h>
#include <zt/numerics/Interpolator.h>
#include <zt/ranges/RangeR1.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <type_traits>
#include <utility>
#include <vector>

namespace ZT {

// The way to the private operation: an explicit instantiation may name it.
double Slope(const Interpolator& f, int i);

template <auto Member>
struct PrivateSlope {
    friend double Slope(const Interpolator& f, int i) { return (f.*Member)(i); }
};
template struct PrivateSlope<&Interpolator::Z>;

namespace {

using testing_support::Is;
using testing_support::SameDouble;

constexpr int kLast = Interpolator::kCapacity - 1;
const double kAboveToler = std::nextafter(zToler, 1.0);

Interpolator Samples(bool uniform, std::initializer_list<double> x,
                     std::initializer_list<double> y) {
    Interpolator f(2, uniform);
    std::fill(std::begin(f.m_x), std::end(f.m_x), 0.0);
    std::fill(std::begin(f.m_y), std::end(f.m_y), 0.0);
    std::copy(x.begin(), x.end(), f.m_x);
    std::copy(y.begin(), y.end(), f.m_y);
    return f;
}

Interpolator Uniform(std::initializer_list<double> y) {
    return Samples(true, {0, 1, 2}, y);
}

Interpolator Uneven(std::initializer_list<double> x, std::initializer_list<double> y) {
    return Samples(false, x, y);
}

// The record.

TEST(Interpolator, FieldsFollowTheTableInOrder) {
    EXPECT_EQ(offsetof(Interpolator, m_bUniform), 0u);
    EXPECT_EQ(offsetof(Interpolator, m_x), 8u);
    EXPECT_EQ(offsetof(Interpolator, m_y), 8u + 30 * 8);
    EXPECT_EQ(offsetof(Interpolator, m_nOrder), 8u + 60 * 8);
    EXPECT_EQ(sizeof(Interpolator), 8u + 60 * 8 + 8);
    EXPECT_EQ(sizeof(Interpolator::m_nOrder), 4u);
    EXPECT_FALSE(std::is_polymorphic_v<Interpolator>);
}

TEST(Interpolator, NewOneIsUniformAndOfOrderTwo) {
    const Interpolator f;
    EXPECT_TRUE(f.m_bUniform);
    EXPECT_EQ(f.m_nOrder, 2);
}

TEST(Interpolator, ConstructorStoresOrderAndMode) {
    const Interpolator f(7, false);
    EXPECT_FALSE(f.m_bUniform);
    EXPECT_EQ(f.m_nOrder, 7);
    EXPECT_TRUE(Interpolator(0, true).m_bUniform);
}

TEST(Interpolator, AssignmentCopiesBothArraysInFull) {
    Interpolator f(5, false);
    for (int i = 0; i <= kLast; ++i) {
        f.m_x[i] = i + 0.5;
        f.m_y[i] = -i;
    }
    Interpolator copy;
    copy = f;
    EXPECT_EQ(copy.m_nOrder, 5);
    EXPECT_FALSE(copy.m_bUniform);
    EXPECT_TRUE(std::equal(std::begin(f.m_x), std::end(f.m_x), copy.m_x));
    EXPECT_TRUE(std::equal(std::begin(f.m_y), std::end(f.m_y), copy.m_y));
}

TEST(Interpolator, OrderIsReadByNoOperation) {
    Interpolator f = Uniform({0, 1, 4});
    f.m_nOrder = 0;
    EXPECT_THAT(f.GetQuadric(1.5), Is(2.25));
    EXPECT_THAT(f.aitken(1.5, 2), Is(2.25));
}

// Differences.

TEST(Interpolator, AbscissaIsTheIndexInUniformModeAndTheStoredOneOtherwise) {
    Interpolator f = Samples(true, {5, 7, 11}, {});
    EXPECT_THAT(f.X(2), Is(2.0));
    EXPECT_THAT(f.X(29), Is(29.0));
    f.m_bUniform = false;
    EXPECT_THAT(f.X(2), Is(11.0));
}

TEST(Interpolator, DifferencesOfSamplesAndOfAbscissae) {
    const Interpolator f = Uneven({5, 7, 11}, {1, 4, 16});
    EXPECT_THAT(f.d(0), Is(3.0));
    EXPECT_THAT(f.d(1), Is(12.0));
    EXPECT_THAT(f.Del(1, 1), Is(4.0));
    EXPECT_THAT(f.Del(2, 0), Is(6.0));
    EXPECT_THAT(Uniform({}).Del(2, 3), Is(2.0));
}

TEST(Interpolator, DividedDifferencesOfASquare) {
    const Interpolator f = Uneven({1, 2, 4, 8}, {1, 4, 16, 64});
    EXPECT_THAT(f.Delta(1, 0), Is(3.0));
    EXPECT_THAT(f.Delta(1, 1), Is(6.0));
    EXPECT_THAT(f.Delta(1, 2), Is(12.0));
    EXPECT_THAT(f.Delta(2, 0), Is(1.0));
    EXPECT_THAT(f.Delta(2, 1), Is(1.0));
    EXPECT_THAT(f.Delta(3, 0), Is(0.0));
}

TEST(Interpolator, DividedDifferenceOverEqualOrDescendingAbscissaeIsInfinite) {
    EXPECT_THAT(Uneven({2, 2}, {0, 1}).Delta(1, 0), Is(1e307));
    EXPECT_THAT(Uneven({2, 1}, {0, 1}).Delta(1, 0), Is(1e307));
    EXPECT_THAT(Uneven({0, zToler}, {0, 1}).Delta(1, 0), Is(1e307));
    EXPECT_THAT(Uneven({0, kAboveToler}, {0, 1}).Delta(1, 0), Is(1.0 / kAboveToler));
    EXPECT_THAT(Uneven({1, 2, 1}, {0, 1, 2}).Delta(2, 0), Is(1e307));
}

TEST(Interpolator, InfiniteDifferenceOfLowerOrderIsSubtractedLikeAnyNumber) {
    EXPECT_THAT(Uneven({0, 0, 1}, {0, 1, 3}).Delta(2, 0), Is(-1e307));
    EXPECT_THAT(Uneven({0, 1, 1}, {0, 1, 3}).Delta(2, 0), Is(1e307));
    EXPECT_THAT(Uneven({0, 2, 1}, {0, 1, 3}).Delta(2, 0), Is(1e307 - 0.5));
}

TEST(Interpolator, DividedDifferenceOfOrderZeroIsInfinite) {
    EXPECT_THAT(Uniform({1, 2, 3}).Delta(0, 1), Is(1e307));
    EXPECT_THAT(Uniform({1, 2, 3}).Delta(-1, 1), Is(1e307));
}

double DeltaByItsDefinition(const Interpolator& f, int k, int i) {
    const double w = f.X(i + k) - f.X(i);
    if (!(w > 1e-10)) return 1e307;
    const double numerator =
        k == 1 ? f.d(i) : DeltaByItsDefinition(f, k - 1, i + 1) - DeltaByItsDefinition(f, k - 1, i);
    return numerator / w;
}

TEST(Interpolator, DividedDifferenceFollowsItsDefinitionToTheBit) {
    EXPECT_TRUE(rc::check([] {
        Interpolator f(2, *rc::gen::arbitrary<bool>());
        for (double& x : f.m_x) x = *rc::gen::inRange(0, 40) / 3.0;
        for (double& y : f.m_y) y = *rc::gen::inRange(-1000, 1000) / 7.0;
        if (*rc::gen::arbitrary<bool>()) std::sort(std::begin(f.m_x), std::end(f.m_x));
        const int k = *rc::gen::inRange(1, 11);
        const int i = *rc::gen::inRange(0, 30 - k);
        RC_ASSERT(SameDouble(f.Delta(k, i), DeltaByItsDefinition(f, k, i)));
    }));
}

TEST(Interpolator, DividedDifferenceReachesTheLastNode) {
    Interpolator f;
    for (int i = 0; i <= kLast; ++i) f.m_y[i] = i;
    EXPECT_THAT(f.Delta(1, 28), Is(1.0));
    EXPECT_THAT(f.Delta(29, 0), Is(0.0));
}

// The chain of parabola arcs.

TEST(Interpolator, SlopeOfTheArcsAlternates) {
    const Interpolator f = Uniform({0, 1, 4, 9});
    EXPECT_THAT(Slope(f, 0), Is(0.0));
    EXPECT_THAT(Slope(f, -5), Is(0.0));
    EXPECT_THAT(Slope(f, 1), Is(6.0));
    EXPECT_THAT(Slope(f, 2), Is(4.0));
}

TEST(Interpolator, SlopeIsInfiniteWhereTheNextNodeIsNotAbove) {
    const Interpolator f = Uneven({0, 1, 1, 2}, {0, 1, 3, 4});
    EXPECT_THAT(Slope(f, 1), Is(1e307));
    EXPECT_THAT(Slope(f, 2), Is(2.0 - 1e307));
    EXPECT_THAT(Slope(Uneven({0, 0, zToler}, {0, 1, 3}), 1), Is(1e307));
}

TEST(Interpolator, SlopeDividesByTheDistance) {
    EXPECT_THAT(Slope(Uneven({0, 1, 5}, {0, 1, 3}), 1), Is(1.0));
}

// The coefficients.

TEST(Interpolator, CoefficientsOfTheUniformSquare) {
    const Interpolator f = Uniform({0, 1, 4});
    EXPECT_THAT(f.m(), Is(2.0));
    EXPECT_THAT(f.H(), Is(0.0));
    EXPECT_THAT(f.GetDerivativeAitkenOrd2(1), Is(2.0));
}

TEST(Interpolator, CoefficientsOnUnevenNodes) {
    const Interpolator square = Uneven({1, 2, 4}, {1, 4, 16});
    EXPECT_THAT(square.m(), Is(3.0));
    EXPECT_THAT(square.H(), Is(0.0));
    EXPECT_THAT(square.GetDerivativeAitkenOrd2(5), Is(10.0));
    // t * t - t
    const Interpolator other = Uneven({1, 2, 4}, {0, 2, 12});
    EXPECT_THAT(other.m(), Is(3.0));
    EXPECT_THAT(other.H(), Is(-3.0));
    EXPECT_THAT(other.GetDerivativeAitkenOrd2(3), Is(5.0));
}

TEST(Interpolator, LinearCoefficientMixesStoredFactorsWithUniformDivisors) {
    const Interpolator f = Samples(true, {1, 2, 4}, {1, 4, 16});
    EXPECT_THAT(f.m(), Is(9.0));
    // (4 * 4 - 16 * 2) / 1 + 4 * 3 / 1 - 1 * 12 / 1 + (4 * 1 - 1 * 2) / 1
    EXPECT_THAT(f.H(), Is(-14.0));
}

TEST(Interpolator, DivisorsOfTheCoefficientsAreNotTested) {
    const Interpolator f = Uneven({1, 1, 2}, {0, 1, 1});
    EXPECT_TRUE(std::isinf(f.m()));
    EXPECT_FALSE(std::isfinite(f.H()));
    EXPECT_FALSE(std::isfinite(Uneven({1, 2, 1}, {0, 1, 1}).GetDerivativeAitkenOrd2(1)));
}

TEST(Interpolator, CoefficientsTakeTheirTermsFromLeftToRight) {
    EXPECT_TRUE(rc::check([] {
        Interpolator f(2, *rc::gen::arbitrary<bool>());
        for (int i = 0; i < 3; ++i) {
            f.m_x[i] = *rc::gen::inRange(-1000, 1000) / 7.0;
            f.m_y[i] = *rc::gen::inRange(-1000, 1000) / 3.0;
        }
        const double x0 = f.m_x[0], x1 = f.m_x[1], x2 = f.m_x[2];
        const double y0 = f.m_y[0], y1 = f.m_y[1], y2 = f.m_y[2];
        const double w1 = f.X(1) - f.X(0);
        const double w2 = f.X(2) - f.X(1);
        const double first = (y1 * x2 - y2 * x1) / w2;
        const double second = (x2 * (y1 - y0)) / w1;
        const double third = (x0 * (y2 - y1)) / w2;
        const double fourth = (y1 * x0 - y0 * x1) / w1;
        const double h = ((first + second) - third) + fourth;
        const double m = (y2 - y1) / w2 - (y1 - y0) / w1;
        RC_ASSERT(SameDouble(f.H(), h));
        RC_ASSERT(SameDouble(f.m(), m));
        RC_ASSERT(
            SameDouble(f.GetDerivativeAitkenOrd2(0.3), (2 * m * 0.3 + h) / (f.X(2) - f.X(0))));
    }));
}

// Repeated linear interpolation.

double TriangularLoop(const double* y, double t, int n) {
    double w[30];
    std::copy(y, y + n + 1, w);
    for (int j = 1; j <= n; ++j) {
        for (int i = 0; i <= n - j; ++i) {
            const double r = (t - i) / j;
            w[i] = (1 - r) * w[i] + r * w[i + 1];
        }
    }
    return w[0];
}

TEST(Interpolator, AitkenOfTheSquare) {
    const Interpolator f = Uniform({0, 1, 4});
    EXPECT_THAT(f.aitken(1.5, 2), Is(2.25));
    EXPECT_THAT(f.aitken(-1, 2), Is(1.0));
}

TEST(Interpolator, AitkenOfOneSampleIsThatSample) {
    const Interpolator f = Uniform({7, 1, 4});
    for (const double t : {-1e300, 0.0, 0.5, 29.0}) {
        EXPECT_THAT(f.aitken(t, 0), Is(7.0));
        EXPECT_THAT(f.aitken(t, -1), Is(7.0));
    }
}

TEST(Interpolator, AitkenDoesNotReadTheAbscissae) {
    EXPECT_THAT(Uneven({5, 5, 1}, {0, 1, 4}).aitken(1.5, 2), Is(2.25));
}

TEST(Interpolator, AitkenIsTheTriangularLoopToTheBit) {
    EXPECT_TRUE(rc::check([] {
        Interpolator f;
        const double scale = *rc::gen::element(1.0, 1e-5, 1e150, 1e-300);
        for (double& y : f.m_y) y = *rc::gen::inRange(-1000000, 1000000) / 7.0 * scale;
        const double t = *rc::gen::inRange(-60000, 60000) / 999.0;
        for (int n = 0; n <= kLast; ++n) {
            RC_ASSERT(SameDouble(f.aitken(t, n), TriangularLoop(f.m_y, t, n)));
        }
    }));
}

TEST(Interpolator, AitkenIsTheTriangularLoopToTheBitOnAnyNumbers) {
    EXPECT_TRUE(rc::check([] {
        const auto y = *rc::gen::container<std::vector<double>>(30, rc::gen::arbitrary<double>());
        Interpolator f;
        std::copy(y.begin(), y.end(), f.m_y);
        const double t = *rc::gen::arbitrary<double>();
        for (int n = 0; n <= kLast; ++n) {
            RC_ASSERT(SameDouble(f.aitken(t, n), TriangularLoop(f.m_y, t, n)));
        }
    }));
}

TEST(Interpolator, AitkenAtANodeIsItsSample) {
    Interpolator f;
    for (int i = 0; i <= kLast; ++i) f.m_y[i] = i % 5;
    for (int n = 0; n <= 12; ++n) {
        for (int i = 0; i <= n; ++i) EXPECT_NEAR(f.aitken(i, n), i % 5, 1e-9) << i << " of " << n;
    }
}

// The quadratic.

TEST(Interpolator, QuadricGoesThroughTheFirstThreeSamples) {
    EXPECT_THAT(Uniform({0, 1, 4}).GetQuadric(1.5), Is(2.25));
    const Interpolator square = Uneven({1, 2, 4}, {1, 4, 16});
    EXPECT_THAT(square.GetQuadric(3), Is(9.0));
    EXPECT_THAT(square.GetQuadric(1), Is(1.0));
    EXPECT_THAT(square.GetQuadric(4), Is(16.0));
}

TEST(Interpolator, QuadricDoesNotReadTheStoredAbscissaeInUniformMode) {
    EXPECT_THAT(Samples(true, {10, 20, 40}, {0, 1, 4}).GetQuadric(1.5), Is(2.25));
}

TEST(Interpolator, QuadricTakesItsProductFromLeftToRight) {
    EXPECT_TRUE(rc::check([] {
        Interpolator f(2, false);
        for (int i = 0; i < 3; ++i) {
            f.m_x[i] = *rc::gen::inRange(-100, 100) / 7.0;
            f.m_y[i] = *rc::gen::inRange(-100, 100) / 3.0;
        }
        const double t = *rc::gen::inRange(-100, 100) / 9.0;
        const double e = t - f.m_x[0];
        const double w1 = f.m_x[1] - f.m_x[0];
        const double w2 = f.m_x[2] - f.m_x[1];
        const double w = f.m_x[2] - f.m_x[0];
        const double s = w1 > 1e-10 ? (f.m_y[1] - f.m_y[0]) / w1 : 1e307;
        const double s1 = w2 > 1e-10 ? (f.m_y[2] - f.m_y[1]) / w2 : 1e307;
        const double c = w > 1e-10 ? (s1 - s) / w : 1e307;
        const double expected = (((t - f.m_x[1]) * e) * c) + (s * e + f.m_y[0]);
        RC_ASSERT(SameDouble(f.GetQuadric(t), expected));
    }));
}

TEST(Interpolator, QuadricOverEqualAbscissaeHasInfiniteSlopeOrCurvature) {
    // Infinite slope: from the first node to the second.
    EXPECT_THAT(Uneven({0, 0, 1}, {0, 0, 0}).GetQuadric(0.5), Is(1e307 * 0.5 - 1e307 * 0.25));
    // Infinite curvature: from the first node to the third.
    EXPECT_THAT(Uneven({0, 1, 0}, {3, 4, 0}).GetQuadric(0.5), Is(-2.5e306));
}

// The extremum.

TEST(Interpolator, ExtremumOfTheSquareIsAtZero) {
    const Interpolator f = Uniform({0, 1, 4});
    double t = 5;
    EXPECT_TRUE(f.GetExtremumParamAitken(t));
    EXPECT_EQ(t, 0.0);
    t = 5;
    EXPECT_TRUE(f.GetExtremumParam(t));
    EXPECT_EQ(t, 0.0);
}

TEST(Interpolator, ExtremumOnUnevenNodes) {
    // (t - 3) squared
    const Interpolator f = Uneven({1, 2, 5}, {4, 1, 4});
    double t = 0;
    EXPECT_TRUE(f.GetExtremumParamAitken(t));
    EXPECT_THAT(t, Is(3.0));
    t = 0;
    EXPECT_TRUE(f.GetExtremumParam(t));
    EXPECT_THAT(t, Is(3.0));
}

TEST(Interpolator, ExtremumOfAStraightLineIsTheStoredFirstNodeOrStays) {
    const Interpolator f = Samples(true, {7, 1, 2}, {0, 1, 2});
    double t = 5;
    EXPECT_FALSE(f.GetExtremumParam(t));
    EXPECT_THAT(t, Is(7.0));
    t = 5;
    EXPECT_FALSE(f.GetExtremumParamAitken(t));
    EXPECT_THAT(t, Is(5.0));
}

TEST(Interpolator, CurvatureBelowTheToleranceIsAStraightLine) {
    double t = 5;
    // A change of slope of twice the second sample, which is a curvature of that sample.
    const Interpolator below = Uniform({0, -4e-11, 0});
    EXPECT_FALSE(below.GetExtremumParamAitken(t));
    EXPECT_FALSE(below.GetExtremumParam(t));
    const Interpolator between = Uniform({0, -8e-11, 0});
    EXPECT_TRUE(between.GetExtremumParamAitken(t));
    EXPECT_FALSE(between.GetExtremumParam(t));
    const Interpolator above = Uniform({0, -2e-10, 0});
    EXPECT_TRUE(above.GetExtremumParamAitken(t));
    EXPECT_TRUE(above.GetExtremumParam(t));
}

TEST(Interpolator, ChangeOfSlopeOfExactlyTheToleranceIsNoStraightLine) {
    double t = 5;
    EXPECT_TRUE(Uniform({0, 0, zToler}).GetExtremumParamAitken(t));
    EXPECT_FALSE(Uniform({0, 0, std::nextafter(zToler, 0.0)}).GetExtremumParamAitken(t));
    EXPECT_FALSE(Uniform({0, 0, -std::nextafter(zToler, 0.0)}).GetExtremumParamAitken(t));
}

TEST(Interpolator, CurvatureOfExactlyTheToleranceIsNoStraightLine) {
    double t = 5;
    EXPECT_TRUE(Uniform({0, 0, 2e-10}).GetExtremumParam(t));
    EXPECT_THAT(t, Is(0.5));
    t = 5;
    EXPECT_FALSE(Uniform({0, 0, std::nextafter(2e-10, 0.0)}).GetExtremumParam(t));
    EXPECT_THAT(t, Is(0.0));
}

TEST(Interpolator, ExtremumParamComputesFromStoredAbscissaeInUniformModeToo) {
    const Interpolator f = Samples(true, {1, 2, 4}, {1, 4, 16});
    double t = 0;
    EXPECT_TRUE(f.GetExtremumParam(t));
    EXPECT_THAT(t, Is((2.0 + 1.0 - 3.0 / 4.5) * 0.5));
}

TEST(Interpolator, ExtremumParamOverEqualAbscissaeUsesTheInfiniteNumber) {
    double t = 5;
    // Infinite curvature, so that the slope has no weight.
    EXPECT_TRUE(Uneven({0, 1, 0}, {0, 1, 5}).GetExtremumParam(t));
    EXPECT_THAT(t, Is(0.5));
    // Infinite slope, which makes the curvature as large.
    EXPECT_TRUE(Uneven({0, 0, 1}, {0, 0, 0}).GetExtremumParam(t));
    EXPECT_THAT(t, Is(0.5));
}

struct InternalMinMax : testing::Test {
    static std::pair<bool, double> In(const Interpolator& f, const RangeR1& r) {
        double value = 77;
        const bool found = f.GetInternalMinMax(r, value);
        return {found, value};
    }
    static constexpr std::pair<bool, double> kNone{false, 77};
    static std::pair<bool, double> Found(double value) { return {true, value}; }
};

TEST_F(InternalMinMax, ValueOfTheSquareIsZero) {
    EXPECT_EQ(In(Uniform({0, 1, 4}), {-1, 1}), Found(0));
}

TEST_F(InternalMinMax, ExtremumAtALimitIsNotInside) {
    const Interpolator f = Uniform({0, 1, 4});
    EXPECT_EQ(In(f, {0, 1}), kNone);
    EXPECT_EQ(In(f, {-1, 5e-11}), kNone);
    EXPECT_EQ(In(f, {-1, 2e-10}), Found(0));
    EXPECT_EQ(In(f, {0.5, 1}), kNone);
}

TEST_F(InternalMinMax, StraightLineHasNone) {
    EXPECT_EQ(In(Uniform({0, 1, 2}), {-10, 10}), kNone);
}

TEST_F(InternalMinMax, ChangeOfSlopeBelowTheToleranceHasNone) {
    EXPECT_EQ(In(Uniform({0, 0, 5e-11}), {0, 1}), kNone);
}

TEST_F(InternalMinMax, ExtremumBetweenTheNodes) {
    EXPECT_EQ(In(Uniform({4, 1, 4}), {0, 2}), Found(1));
}

TEST_F(InternalMinMax, ExtremumBeforeTheFirstNodeCountsFromTheFirstSegment) {
    // (t + 1) squared
    EXPECT_EQ(In(Uniform({1, 4, 9}), {-3, 0}), Found(0));
    // The same on uneven nodes: the place is that of -1 in units of the first segment.
    EXPECT_EQ(In(Uneven({0, 2, 3}, {1, 9, 16}), {-3, 0}),
              Found(Uniform({1, 9, 16}).aitken(-0.5, 2)));
}

TEST_F(InternalMinMax, ExtremumInTheFirstSegmentCountsFromTheSecond) {
    // (t - 0.5) squared: with the first segment, the place would be 0.5, and the value -0.5.
    EXPECT_EQ(In(Uneven({0, 1, 3}, {0.25, 0.25, 6.25}), {0, 1}), Found(-0.3125));
}

TEST_F(InternalMinMax, ExtremumAtTheFirstNodeCountsFromTheSecondSegment) {
    // t squared: the place is 1 + (0 - 1) / 2.
    EXPECT_EQ(In(Uneven({0, 1, 3}, {0, 1, 9}), {-1, 1}), Found(-0.375));
}

TEST_F(InternalMinMax, SegmentThatIsNotInOrderHasNone) {
    // (t - 0.5) squared
    EXPECT_EQ(In(Uneven({0, 2, 1}, {0.25, 2.25, 0.25}), {0, 1}), kNone);
    EXPECT_EQ(In(Uneven({0, 1, 1 + 5e-11}, {0, 1, 0}), {0, 1}), kNone);
}

TEST_F(InternalMinMax, PlaceIsMeasuredFromTheStoredAbscissaeInUniformModeToo) {
    EXPECT_EQ(In(Samples(true, {10, 11, 12}, {0, 1, 4}), {9, 11}), Found(0));
    EXPECT_EQ(In(Samples(true, {10, 11, 12}, {0, 1, 4}), {-1, 1}), kNone);
}

TEST_F(InternalMinMax, LengthOfTheSegmentIsThatOfTheModeAndNotOfTheStoredAbscissae) {
    // m is 2 and H is 8, so that the extremum is at -2, where the polynomial through 1, 4, 9 is 1.
    EXPECT_EQ(In(Samples(true, {0, 2, 4}, {1, 4, 9}), {-3, 0}), Found(1));
}

TEST_F(InternalMinMax, FlagOfTheRangeDoesNotCount) {
    RangeR1 hole(-1, 1);
    hole.SetExternal(true);
    EXPECT_EQ(In(Uniform({0, 1, 4}), hole), Found(0));
}

}  // namespace
}  // namespace ZT
