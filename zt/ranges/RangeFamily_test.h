/// @file
/// Typed ranges in tests: how a failing test prints them, and short ways to make them.

#pragma once

#include <tests/RangeMatchers.h>
#include <zt/ranges/Range.h>

#include <ostream>
#include <string>

namespace ZT {

/// Prints a range for a failing test.
inline void PrintTo(const Range& r, std::ostream* os) {
    const char* const states[] = {"full", "empty", "partial"};
    PrintTo(static_cast<const RangeR1&>(r), os);
    *os << ' ' << states[r.m_eState] << ", type " << r.m_eScalarType
        << (r.m_bDegrees ? ", degrees" : ", radians");
}

/// Prints a range for a failing law.
inline void showValue(const Range& r, std::ostream& os) {
    PrintTo(r, &os);
}

}  // namespace ZT

namespace testing_support {

inline constexpr auto kFull = ZT::RangeS1::eStateFull;
inline constexpr auto kEmpty = ZT::RangeS1::eStateEmpty;
inline constexpr auto kPartial = ZT::RangeS1::eStatePartial;

/// A range whose fields are stored as they are.
inline ZT::Range RawRange(ZT::EScalarType type, double lo, double hi,
                          ZT::RangeS1::EState state = kPartial, bool degrees = false) {
    ZT::Range range(type);
    range.m_min = lo;
    range.m_max = hi;
    range.m_eState = state;
    range.m_bDegrees = degrees;
    return range;
}

/// An angular range in radians with these limits.
inline ZT::Range Radians(double lo, double hi, ZT::RangeS1::EState state = kPartial) {
    return RawRange(ZT::eScalarAngle, lo, hi, state);
}

/// An angular range in degrees with these limits.
inline ZT::Range Degrees(double lo, double hi, ZT::RangeS1::EState state = kPartial) {
    return RawRange(ZT::eScalarAngle, lo, hi, state, true);
}

/// The same range with its external flag set.
inline ZT::Range Outside(ZT::Range range) {
    range.m_bExternal = true;
    return range;
}

/// Matches a range with exactly these limits and this state.
MATCHER_P3(IsRange, lo, hi, state,
           "has the limits " + InFull(lo) + " and " + InFull(hi) + ", state " +
               std::to_string(state)) {
    return SameDouble(arg.m_min, lo) && SameDouble(arg.m_max, hi) && arg.m_eState == state;
}

}  // namespace testing_support
