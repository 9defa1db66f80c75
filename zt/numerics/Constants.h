/// @file
/// The numbers that all numeric code shares: the tolerance, the ladder of huge
/// numbers, and pi.
///
/// They are used bit for bit, in the library and in what is inlined into its
/// clients, so every one of them is checked against its bits here.

#pragma once

#include <bit>
#include <cstdint>

namespace ZT {

/// The tolerance: two doubles closer than this are the same number.
inline constexpr double zToler = 1e-10;

/// A magnitude above this is infinite for the scalar tests.
///
/// A number between `zFinite` and `zFullBound` is infinite for a scalar test and
/// finite for a range test. The gap is deliberate.
inline constexpr double zFinite = 1e306;

/// A limit of a range above this, or below its negative, is an infinite limit.
inline constexpr double zFullBound = 9e306;

/// The number that is stored for infinity, and the distance that stands for no
/// result. It is finite, so that it can be added and subtracted once.
inline constexpr double zInfinity = 1e307;

/// The library's pi: a literal of 15 digits, deliberately not the double that is
/// closest to pi.
inline constexpr double zPi = 3.14159265358979;

/// Twice `zPi`.
inline constexpr double z2Pi = 6.28318530717958;

/// Degrees in a radian: 180 divided by `zPi`.
inline constexpr double zDegPerRad = 57.29577951308238;

/// Radians in a degree: `zPi` divided by 180.
inline constexpr double zRadPerDeg = 0.017453292519943278;

/// `zPi` and the tolerance: the upper bound of an angle that counts as reduced.
inline constexpr double zPiPlus = 3.14159265368979;

/// `zPi` less the tolerance: an angle above it lies at the seam of the circle.
inline constexpr double zPiMinus = 3.14159265348979;

/// The lower limit of the full angle on the real line: the negative of `zPi`,
/// moved inwards by 1.5e-10, so that the full angle keeps clear of the seam.
inline constexpr double zFullAngleStart = -3.14159265343979;

namespace detail {

constexpr bool HasBits(double x, std::uint64_t bits) {
    return std::bit_cast<std::uint64_t>(x) == bits;
}

static_assert(HasBits(zToler, 0x3DDB7CDFD9D7BDBB));
static_assert(HasBits(zFinite, 0x7F76C8E5CA239029));
static_assert(HasBits(zFullBound, 0x7FA9A2028368022E));
static_assert(HasBits(zInfinity, 0x7FAC7B1F3CAC7433));
static_assert(HasBits(zPi, 0x400921FB54442D11));
static_assert(HasBits(z2Pi, 0x401921FB54442D11));
static_assert(HasBits(zDegPerRad, 0x404CA5DC1A63C200));
static_assert(HasBits(zRadPerDeg, 0x3F91DF46A2529D34));
static_assert(HasBits(zPiPlus, 0x400921FB54479CAD));
static_assert(HasBits(zPiMinus, 0x400921FB5440BD75));
static_assert(HasBits(zFullAngleStart, 0xC00921FB543F05A7));

}  // namespace detail

}  // namespace ZT
