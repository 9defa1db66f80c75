/// @file
/// Calls whose exceptions end with them.

#pragma once

#include <platform/object/CException.h>

namespace ZT {

/// Runs `work`. Whether it ended without raising anything; whatever it raises is ended here, an
/// exception of the platform by its `Delete`.
template <class Work>
bool EndsWell(Work work) {
    try {
        work();
        return true;
    } catch (CException* exception) {
        exception->Delete();
    } catch (...) {
    }
    return false;
}

}  // namespace ZT
