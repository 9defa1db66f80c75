/// @file
/// The older sibling's interval on the real line.

#pragma once

#include <sibling/Export.h>

namespace PW {

/// An interval from a lower to an upper limit, or, with the external flag set,
/// all numbers outside of the two limits.
///
/// The limits are not ordered: a range whose lower limit lies above its upper
/// one is empty, and a new range is, with the limits 1e307 and -1e307. It takes
/// what `ZT::RangeR1::CopyToPw` hands over and gives it back unchanged.
class PW_API Range {
public:
    /// The empty range, not external.
    Range();
    /// The range between `lo` and `hi`, not external.
    Range(double lo, double hi);
    Range(const Range&) = default;
    Range& operator=(const Range&) = default;
    virtual ~Range();

    /// Stores both limits as they are and leaves the external flag. A derived
    /// class may bring them into a form of its own.
    virtual void Set(double lo, double hi);

    /// Says whether the range stands for the numbers outside of its limits. The
    /// limits stay as they are.
    void SetExternal(bool external) { m_bExternal = external; }

    /// The lower limit.
    double GetMin() const { return m_min; }
    /// The upper limit.
    double GetMax() const { return m_max; }
    /// Whether the range stands for the numbers outside of its limits.
    bool IsExternal() const { return m_bExternal; }

protected:
    double m_min;
    double m_max;
    bool m_bExternal;
};

}  // namespace PW
