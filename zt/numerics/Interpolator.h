/// @file
/// Interpolation by polynomials through a few samples of a function.

#pragma once

#include <zt/frame/Export.h>
#include <zt/numerics/Constants.h>

#include <cstdint>

namespace ZT {

class RangeR1;

/// Up to thirty samples of a function, and the questions that the polynomial through them
/// answers: its value, and for the quadratic through the first three samples also the
/// derivative and the extremum.
///
/// A client writes the samples into the arrays; no operation does, and the constructors leave
/// the arrays as the memory was. Node i lies at `X(i)`: at i itself if the record is uniform,
/// and otherwise at the stored `m_x[i]`. Not every operation goes through `X`: `H`,
/// `GetExtremumParam` and `GetInternalMinMax` read the stored abscissae `m_x[0]` to `m_x[2]`
/// as well, whatever the mode, deliberately. A client of the uniform mode who calls one of
/// them stores 0, 1, 2 there.
///
/// Indices are not checked: the highest that an operation may reach is 29. Two nodes closer
/// together than the tolerance, or in descending order, give 1e307 for the quotient between
/// them, where a line does not say otherwise. No operation allocates.
class ZT_API Interpolator {
public:
    /// The number of samples that there is room for.
    static constexpr int kCapacity = 30;

    /// Whether node i lies at i, and not at `m_x[i]`.
    bool m_bUniform;
    /// The abscissae.
    double m_x[kCapacity];
    /// The samples.
    double m_y[kCapacity];
    /// The order given at construction. No operation reads it.
    std::int32_t m_nOrder;

    /// Order 2, uniform. The arrays are not cleared.
    Interpolator() : Interpolator(2, true) {}
    /// The arrays are not cleared.
    Interpolator(int order, bool bUniform) : m_bUniform(bUniform), m_nOrder(order) {}

    /// Copies the whole record, both arrays in full.
    Interpolator(const Interpolator&) = default;
    /// Copies the whole record, both arrays in full.
    Interpolator& operator=(const Interpolator&) = default;

    /// @name Differences
    /// @{

    /// The abscissa of node `i`.
    double X(int i) const { return m_bUniform ? i : m_x[i]; }

    /// The difference of the samples at node `i` and at the one after it.
    double d(int i) const { return m_y[i + 1] - m_y[i]; }

    /// The distance from node `i` to the one `k` places after it.
    double Del(int k, int i) const { return X(i + k) - X(i); }

    /// The divided difference of the order `k` from node `i` on; 1e307 if node i + k does not
    /// lie above node i by more than the tolerance, and also for a `k` below 1. A difference
    /// of lower order that is 1e307 takes part in the computation like any number.
    double Delta(int k, int i) const;

    /// @}
    /// @name Values
    /// @{

    /// The value at `t` of the polynomial through the samples 0 to `n`, for an `n` of at most
    /// 29, with the nodes at 0, 1, ..., n: the abscissae do not count, whatever the mode. An
    /// `n` below 1 gives the first sample.
    ///
    /// The value comes by repeated linear interpolation:
    ///
    ///     Interpolator square;
    ///     for (int i = 0; i < 3; ++i) square.m_y[i] = i * i;
    ///     square.aitken(1.5, 2);  // 2.25
    double aitken(double t, int n) const;

    /// The value at `t` of the quadratic through the first three samples.
    double GetQuadric(double t) const;

    /// @}
    /// @name The quadratic through the first three samples
    /// Its derivative at t is (2 * `m()` * t + `H()`) / (X(2) - X(0)). The divisors of these
    /// are not tested.
    /// @{

    /// The change of slope from the first segment to the second.
    double m() const {
        return (m_y[2] - m_y[1]) / (X(2) - X(1)) - (m_y[1] - m_y[0]) / (X(1) - X(0));
    }

    /// The linear coefficient. The factors are the stored abscissae in both modes.
    double H() const;

    /// The derivative at `t`.
    double GetDerivativeAitkenOrd2(double t) const { return (2 * m() * t + H()) / (X(2) - X(0)); }

    /// Where the quadratic has its extremum, from its Newton form. False if it is a straight
    /// line, and then `t` is the stored `m_x[0]`. The place is computed from the stored
    /// abscissae in both modes.
    bool GetExtremumParam(double& t) const;

    /// Where the quadratic has its extremum, from `m` and `H`. False if it is a straight line,
    /// and then, unlike with `GetExtremumParam`, `t` stays as it is.
    bool GetExtremumParamAitken(double& t) const;

    /// The value of the quadratic at its extremum if that lies inside of `r`, away from both
    /// limits. Otherwise false, and `value` stays as it is. False also for a straight line, and
    /// if the segment that the extremum counts to is descending or not longer than the tolerance.
    ///
    /// An extremum before the first node counts to the segment between the first two nodes. One
    /// at or after the first node counts to the segment after the second node, deliberately. With
    /// uneven nodes the value then comes from a place that is computed with the length of that
    /// segment.
    bool GetInternalMinMax(const RangeR1& r, double& value) const;

    /// @}

private:
    // The slope at node i of a chain of parabola arcs that starts flat: 0 below node 1, and
    // 1e307 where node i + 1 does not lie above node i by more than the tolerance.
    double Z(int i) const;

    bool IsStraight() const;
    double ExtremumFromCoefficients() const { return H() * -0.5 / m(); }
};

}  // namespace ZT
