/// @file
/// Calls of virtual operations by their place in the table, for the tests of the order.

#pragma once

#include <cstddef>

/// Places in the table of every class derived from `CObject`; the destructor takes two.
enum CObjectSlot : std::size_t {
    kSlotGetRuntimeClass = 0,
    kSlotDestructor = 1,
    kSlotDeletingDestructor = 2,
    kSlotSerialize = 3,
    kSlotAssertValid = 4,
    kSlotDump = 5,
    kSlotFirstOwn = 6,
};

/// Calls the operation at `slot` of the object's table. References are passed as pointers.
template <class Result, class... Arguments>
Result CallSlot(void* object, std::size_t slot, Arguments... arguments) {
    using Operation = Result (*)(void*, Arguments...);
    void** const table = *static_cast<void***>(object);
    return reinterpret_cast<Operation>(table[slot])(object, arguments...);
}
