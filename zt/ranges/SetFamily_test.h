/// @file
/// Sets of intervals in tests: how they are made, taken apart and printed.

#pragma once

#include <tests/RangeMatchers.h>
#include <zt/ranges/SetR1.h>

#include <initializer_list>
#include <ostream>
#include <vector>

namespace ZT {

/// Prints a set for a failing test.
inline void PrintTo(const SetR1& set, std::ostream* os) {
    *os << '{';
    for (const RangeR1& member : set) PrintTo(member, os);
    *os << '}';
}

/// Prints a set for a failing law.
inline void showValue(const SetR1& set, std::ostream& os) {
    PrintTo(set, &os);
}

}  // namespace ZT

namespace testing_support {

/// A set with these members, in this order.
template <class Set = ZT::SetR1>
Set SetOf(std::initializer_list<ZT::RangeR1> members) {
    Set set;
    for (const ZT::RangeR1& member : members) set.Add(member);
    return set;
}

/// The members of a set.
inline std::vector<ZT::RangeR1> All(const ZT::SetR1& set) {
    return {set.begin(), set.end()};
}

/// Whether two ranges are the same to the bit, flags included.
inline bool SameRange(const ZT::RangeR1& a, const ZT::RangeR1& b) {
    return SameDouble(a.m_min, b.m_min) && SameDouble(a.m_max, b.m_max) &&
           a.m_bExternal == b.m_bExternal;
}

/// Matches a set with exactly these members, to the bit and with their flags.
MATCHER_P(IsSet, expected, (negation ? "is not " : "is ") + testing::PrintToString(expected)) {
    if (arg.GetSize() != expected.GetSize()) return false;
    for (INT_PTR i = 0; i < arg.GetSize(); ++i) {
        if (!SameRange(arg[i], expected[i])) return false;
    }
    return true;
}

/// The same with the members written out.
inline auto Is(std::initializer_list<ZT::RangeR1> members) {
    return IsSet(SetOf(members));
}

}  // namespace testing_support
