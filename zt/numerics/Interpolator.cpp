#include <zt/numerics/Interpolator.h>
#include <zt/ranges/RangeR1.h>

#include <emmintrin.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <type_traits>

namespace ZT {

static_assert(std::is_trivially_copyable_v<Interpolator>);

namespace {

// The quotient by a distance of nodes, which is infinite if they are not apart and in order.
double Divided(double numerator, double distance) {
    return distance > zToler ? numerator / distance : zInfinity;
}

double Blend(double r, double a, double b) {
    return (1 - r) * a + r * b;
}

__m128d Blend(__m128d r, __m128d a, __m128d b) {
    return _mm_add_pd(_mm_mul_pd(_mm_sub_pd(_mm_set1_pd(1.0), r), a), _mm_mul_pd(r, b));
}

double Aitken(const double* y, double t, int n) {
    double w[Interpolator::kCapacity];
    std::copy_n(y, n + 1, w);
    for (int j = 1; j <= n; ++j) {
        for (int i = 0; i <= n - j; ++i) w[i] = Blend((t - i) / j, w[i], w[i + 1]);
    }
    return w[0];
}

// Blends the first `count` numbers of a row with their neighbours, two at once, each by the same
// operations as above. The last pair of an odd count carries a number that no later row reads.
template <class Ratio>
void BlendRow(double* w, const double* fromNode, int count, Ratio ratio) {
    __m128d pair = _mm_load_pd(w);
    for (int i = 0; i < count; i += 2) {
        const __m128d nextPair = _mm_load_pd(w + i + 2);
        const __m128d r = ratio(_mm_load_pd(fromNode + i));
        _mm_store_pd(w + i, Blend(r, pair, _mm_shuffle_pd(pair, nextPair, 1)));
        pair = nextPair;
    }
}

double AitkenByPairs(const double* y, double t, int n) {
    alignas(16) double w[Interpolator::kCapacity + 2] = {};
    alignas(16) double fromNode[Interpolator::kCapacity + 2] = {};
    std::copy_n(y, n + 1, w);
    for (int i = 0; i <= n; ++i) fromNode[i] = t - i;
    for (int j = 1; j <= n; ++j) {
        const int count = n - j + 1;
        if (std::has_single_bit(static_cast<unsigned>(j))) {
            // To multiply by the reciprocal of a power of two gives the quotient to the bit.
            const __m128d reciprocal = _mm_set1_pd(1.0 / j);
            BlendRow(w, fromNode, count, [=](__m128d x) { return _mm_mul_pd(x, reciprocal); });
        } else {
            const __m128d span = _mm_set1_pd(j);
            BlendRow(w, fromNode, count, [=](__m128d x) { return _mm_div_pd(x, span); });
        }
    }
    return w[0];
}

}  // namespace

double Interpolator::Delta(int k, int i) const {
    if (k < 1) return zInfinity;
    // The differences of one order after the other, over all nodes that take part.
    double differences[kCapacity];
    for (int j = 0; j < k; ++j) differences[j] = Divided(d(i + j), Del(1, i + j));
    for (int order = 2; order <= k; ++order) {
        for (int j = 0; j <= k - order; ++j) {
            differences[j] = Divided(differences[j + 1] - differences[j], Del(order, i + j));
        }
    }
    return differences[0];
}

double Interpolator::Z(int i) const {
    if (i < 1) return 0;
    const double w = Del(1, i);
    return w > zToler ? 2 * d(i) / w - Z(i - 1) : zInfinity;
}

double Interpolator::H() const {
    // The factors are the stored abscissae also in uniform mode, deliberately.
    const auto& x = m_x;
    const auto& y = m_y;
    const double w1 = X(1) - X(0);
    const double w2 = X(2) - X(1);
    return (y[1] * x[2] - y[2] * x[1]) / w2 + x[2] * (y[1] - y[0]) / w1 -
           x[0] * (y[2] - y[1]) / w2 + (y[1] * x[0] - y[0] * x[1]) / w1;
}

double Interpolator::aitken(double t, int n) const {
    constexpr int kFirstWorthPairing = 8;
    if (n < 1) return m_y[0];
    return n < kFirstWorthPairing ? Aitken(m_y, t, n) : AitkenByPairs(m_y, t, n);
}

double Interpolator::GetQuadric(double t) const {
    const double e = t - X(0);
    const double linear = Delta(1, 0) * e + m_y[0];
    return (t - X(1)) * e * Delta(2, 0) + linear;
}

bool Interpolator::IsStraight() const {
    return zToler > std::fabs(m());
}

bool Interpolator::GetExtremumParam(double& t) const {
    const double curvature = Delta(2, 0);
    if (zToler > std::fabs(curvature)) {
        t = m_x[0];
        return false;
    }
    // The stored abscissae also in uniform mode, deliberately.
    t = (m_x[1] + m_x[0] - Delta(1, 0) / curvature) * 0.5;
    return true;
}

bool Interpolator::GetExtremumParamAitken(double& t) const {
    if (IsStraight()) return false;
    t = ExtremumFromCoefficients();
    return true;
}

bool Interpolator::GetInternalMinMax(const RangeR1& r, double& value) const {
    if (IsStraight()) return false;
    const double t = ExtremumFromCoefficients();
    if (!r.InOpen(t, zToler)) return false;
    // Against the first node and not the second, deliberately.
    const int k = m_x[0] > t ? 0 : 1;
    const double w = Del(1, k);
    if (!(w > zToler)) return false;
    value = aitken(k + (t - m_x[k]) / w, 2);
    return true;
}

}  // namespace ZT
