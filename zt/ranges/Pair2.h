/// @file
/// Two values of two types.

#pragma once

namespace ZT {

/// A first and a second value, such as an index and what was found there.
template <class T1, class T2>
struct Pair2 {
    T1 m_first{};
    T2 m_second{};
};

}  // namespace ZT
