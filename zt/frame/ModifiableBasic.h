/// @file
/// A time stamp of the last change.

#pragma once

#include <zt/frame/ZT.h>

namespace ZT {

/// The time of an object's last change, as the system's tick count in milliseconds.
///
/// The count is 32 bits wide and begins again from 0 after about 49.7 days, so stamps
/// tell an order only within such a span. A new object counts as changed now; a copy
/// has the stamp of its source.
class ZT_API ModifiableBasic {
public:
    /// Stamped with the present time.
    ModifiableBasic();

    /// Stamps the present time.
    void SetModified();

    /// The stamp.
    uint64 GetTimeModified() const { return m_timeModified; }

protected:
    uint64 m_timeModified;
};

}  // namespace ZT
