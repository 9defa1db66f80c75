/// @file
/// Two values of one type.

#pragma once

namespace ZT {

/// A first and a last value of one type, such as the two ends of a run.
template <class T>
struct ZTPair {
    T m_first{};
    T m_last{};
};

}  // namespace ZT
