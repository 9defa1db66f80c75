/// @file
/// Real intervals in tests: what they match and how a failing test prints them.

#pragma once

#include <gmock/gmock.h>
#include <tests/ExactNumbers.h>
#include <zt/ranges/RangeR1.h>

#include <ostream>
#include <string>

namespace ZT {

/// Prints a range for a failing test.
inline void PrintTo(const RangeR1& r, std::ostream* os) {
    *os << (r.m_bExternal ? "all but " : "") << '[' << testing_support::InFull(r.m_min) << ", "
        << testing_support::InFull(r.m_max) << ']';
}

/// Prints a range for a failing law.
inline void showValue(const RangeR1& r, std::ostream& os) {
    PrintTo(r, &os);
}

}  // namespace ZT

namespace testing_support {

/// Matches a range with exactly these limits, whatever its flag.
MATCHER_P2(HasLimits, lo, hi,
           std::string(negation ? "has not" : "has") + " the limits " + InFull(lo) + " and " +
               InFull(hi)) {
    *result_listener << "which has " << InFull(arg.m_min) << " and " << InFull(arg.m_max);
    return SameDouble(arg.m_min, lo) && SameDouble(arg.m_max, hi);
}

/// A range with its external flag.
inline ZT::RangeR1 External(double lo, double hi) {
    ZT::RangeR1 range(lo, hi);
    range.m_bExternal = true;
    return range;
}

}  // namespace testing_support
