#include <sibling/Range.h>

namespace PW {

namespace {

constexpr double kInfinity = 1e307;

}  // namespace

Range::Range() : Range(kInfinity, -kInfinity) {}

Range::Range(double lo, double hi) : m_min(lo), m_max(hi), m_bExternal(false) {}

Range::~Range() = default;

void Range::Set(double lo, double hi) {
    m_min = lo;
    m_max = hi;
}

}  // namespace PW
