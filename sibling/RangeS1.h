/// @file
/// The older sibling's arc on the circle of angles.

#pragma once

#include <sibling/Range.h>

#include <cstdint>

namespace PW {

/// An arc from its lower limit counter-clockwise to its upper one, or, with the external
/// flag set, from the upper limit to the lower one; angles in radians.
///
/// Whether the arc is the whole circle or nothing at all is a state beside the limits, and
/// nothing keeps the two in step. A new arc is empty. It takes what
/// `ZT::RangeS1::CopyToPw` hands over and gives it back unchanged.
class PW_API RangeS1 : public Range {
public:
    /// How much of the circle the arc is.
    enum EState : std::int32_t {
        eStateFull = 0,     ///< The whole circle.
        eStateEmpty = 1,    ///< Nothing, whatever the limits.
        eStatePartial = 2,  ///< What lies between the limits.
    };

    /// The empty arc, with the limits of an empty range.
    RangeS1();
    /// The arc between `lo` and `hi`, not external.
    RangeS1(double lo, double hi);
    RangeS1(const RangeS1&) = default;
    RangeS1& operator=(const RangeS1&) = default;
    ~RangeS1() override;

    /// Stores the state. The limits stay as they are.
    void SetState(EState state) { m_eState = state; }

    /// How much of the circle the arc is.
    EState GetState() const { return m_eState; }

protected:
    EState m_eState;
};

}  // namespace PW
